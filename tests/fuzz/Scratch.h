// A folder for a target that works on files, with room above it in which nothing may ever appear.
#pragma once

#include <filesystem>
#include <iterator>

#include "FuzzTarget.h"

namespace fuzz {

class Scratch {
 public:
  Scratch() {
    std::string name = (std::filesystem::temp_directory_path() / "fuzz.XXXXXX").string();
    Require(mkdtemp(name.data()) != nullptr, "a temporary folder can be made");
    root_ = name;
    std::filesystem::create_directories(Work());
  }
  Scratch(const Scratch&) = delete;
  Scratch& operator=(const Scratch&) = delete;
  ~Scratch() {
    std::error_code ignored;
    std::filesystem::remove_all(root_, ignored);
  }

  std::filesystem::path Work() const { return root_ / "1" / "2" / "work"; }

  void RequireNothingAbove() const {
    for (std::filesystem::path folder = Work().parent_path();; folder = folder.parent_path()) {
      Require(std::distance(std::filesystem::directory_iterator(folder), {}) == 1, "nothing is written above");
      if (folder == root_) return;
    }
  }

 private:
  std::filesystem::path root_;
};

}  // namespace fuzz
