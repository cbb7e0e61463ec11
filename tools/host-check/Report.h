// What the check has found: one line for each thing that it looked for, and how they are printed.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace hostcheck {

/// The worst first: in this order they are printed.
enum class Verdict {
  Missing,  ///< the program cannot do without
  Note,     ///< may be as it is, but is worth a look
  Ok
};

class Report {
 public:
  /// Ok where it is there, else Missing. `purpose` says what it is for.
  void Require(bool there, const std::string& subject, const std::string& purpose) {
    lines_.push_back({there ? Verdict::Ok : Verdict::Missing, subject, purpose});
  }
  /// Ok where it is there, else Note.
  void Expect(bool there, const std::string& subject, const std::string& purpose) {
    lines_.push_back({there ? Verdict::Ok : Verdict::Note, subject, purpose});
  }

  std::size_t Count(Verdict verdict) const;

  /// What is missing, then what is worth a look, with `all` what is in order, too; the numbers of them come last.
  std::string Text(bool all) const;
  /// Everything as one JSON object in ASCII.
  std::string Json() const;

 private:
  struct Line {
    Verdict verdict;
    std::string subject;
    std::string purpose;
  };

  std::vector<Line> lines_;
};

}  // namespace hostcheck
