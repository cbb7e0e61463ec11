// What the check prints: one line for each thing that it looked for.
#pragma once

#include <string>

namespace hostcheck {

class Report {
 public:
  /// "ok", or "MISSING" for what the program cannot do without. `purpose` says what it is for.
  void Require(bool there, const std::string& subject, const std::string& purpose);
  /// "ok", or "note" for what may be as it is, but is worth a look.
  void Expect(bool there, const std::string& subject, const std::string& purpose);

  /// How many lines said "MISSING".
  int Missing() const { return missing_; }

 private:
  int missing_ = 0;
};

}  // namespace hostcheck
