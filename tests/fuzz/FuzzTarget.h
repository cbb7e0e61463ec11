// What a fuzz target is: a function that takes any bytes and ends the process when a rule does not hold for them.
//
// Built with libFuzzer it is called with inputs that try to reach every branch; built with Replay.cpp, with the files
// of seeds/ and found/.
#pragma once

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

namespace fs = std::filesystem;

/// The name by which libFuzzer finds a target. Always 0.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace fuzz {

/// Ends the process, which makes the input a finding, unless `holds`.
inline void Require(bool holds, const char* rule) {
  if (holds) return;
  std::fprintf(stderr, "RULE BROKEN: %s\n", rule);
  std::abort();
}

/// What stands before and behind the first `separator` of an input; without one, everything stands before it.
inline std::pair<std::string, std::string> SplitAt(const std::uint8_t* data, std::size_t size, char separator) {
  const std::uint8_t* const end = data + size;
  const std::uint8_t* const at = std::find(data, end, separator);
  return {{data, at}, {at == end ? end : at + 1, end}};
}

/// For a target that works on files: makes an empty folder the current one, with room above it in which nothing may
/// ever appear. Removes it at the end.
class Scratch {
 public:
  Scratch() {
    std::string name = fs::temp_directory_path() / "fuzz.XXXXXX";
    Require(mkdtemp(name.data()) != nullptr, "a temporary folder can be made");
    root_ = name;
    fs::create_directories(root_ / "1/2/work");
    fs::current_path(root_ / "1/2/work");
  }
  ~Scratch() {
    std::error_code ignored;
    fs::remove_all(root_, ignored);
  }

  static void RequireNothingAbove() {
    for (const char* above : {"..", "../..", "../../.."}) {
      Require(std::distance(fs::directory_iterator(above), {}) == 1, "nothing is written above");
    }
  }

 private:
  fs::path root_;
};

}  // namespace fuzz
