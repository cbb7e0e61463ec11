// What the check prints.
#include "host-check/Report.h"

#include <cstdio>

namespace hostcheck {
namespace {

void Print(const char* verdict, const std::string& subject, const std::string& purpose) {
  std::printf("%-8s %s - %s\n", verdict, subject.c_str(), purpose.c_str());
}

}  // namespace

void Report::Require(bool there, const std::string& subject, const std::string& purpose) {
  Print(there ? "ok" : "MISSING", subject, purpose);
  if (!there) ++missing_;
}

void Report::Expect(bool there, const std::string& subject, const std::string& purpose) {
  Print(there ? "ok" : "note", subject, purpose);
}

}  // namespace hostcheck
