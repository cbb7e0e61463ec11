// What the kit has found, and the one page that tells it.
#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>

namespace acceptance {

enum class Verdict {
  Right,        ///< as it must be
  Wrong,        ///< not so: counts as a failure
  NotAnswered,  ///< only a real Windows could have answered, or a person, and neither was there
  Fact,         ///< neither right nor wrong
};

struct Finding {
  std::string what;
  Verdict verdict = Verdict::Fact;
  std::string words;  ///< UTF-8, of any number of lines
};

class Report {
 public:
  /// What is added from here on belongs below this heading.
  void Begin(const std::string& heading);
  void Add(Finding finding);
  void Check(const std::string& what, bool right, const std::string& words = {}) {
    Add({what, right ? Verdict::Right : Verdict::Wrong, words});
  }

  std::size_t Count(Verdict verdict) const;
  /// One HTML file without anything beside it: the summary, what is wrong, then everything in the order in which it was
  /// found. False when it cannot be written.
  bool Write(const std::filesystem::path& file) const;

 private:
  struct Section {
    std::string heading;
    std::vector<Finding> findings;
  };
  std::vector<Section> sections_;
};

}  // namespace acceptance
