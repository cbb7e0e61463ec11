// Examines a host system and prints what the program would miss on it. Stands in the folder that the program is
// to live in: libraries and archiver are looked for there, as the program does.
//
//   QXHostCheck
//
// The exit code is the number of lines that say "MISSING", 100 at most.
#include <algorithm>
#include <cstdio>

#include "host-check/Checks.h"
#include "windows/adapters/WindowsHost.h"
#include "windows/toolkit/Win32Toolkit.h"

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

namespace {

/// The host's components but for those by which the program's own rules would show or log a failure.
class QuietComponents : public windows::ComComponentFactory {
 public:
  std::unique_ptr<host::MessageDialog> CreateMessageDialog() override { return nullptr; }
  std::unique_ptr<host::LogWriter> CreateLogWriter() override { return nullptr; }
};

host::Host Quiet(host::Host host, QuietComponents& components) {
  return {host.qx32,  host.qx32lib, host.qxNetDB,   components, host.catalogue, host.compactor,
          host.files, host.drives,  host.processes, host.shell, host.clock,     host.messageLoop};
}

}  // namespace

int main() {
  windows::WindowsHost host;
  QuietComponents components;
  windows::Win32Toolkit toolkit(host.Loop());
  app::Application application(Quiet(host.Contracts(), components), toolkit);

  hostcheck::Report report;
  hostcheck::CheckLibraries(report);
  hostcheck::CheckSettings(report, application);
  hostcheck::CheckComponents(report);
  hostcheck::CheckCatalogue(report, application);
  hostcheck::CheckDatabases(report, application);
  hostcheck::CheckJobs(report, application);
  hostcheck::CheckPrograms(report, application);
  hostcheck::CheckRights(report, application);
  hostcheck::CheckSurroundings(report, application);
  application.host.catalogue.Abandon();
  std::printf("%d missing\n", report.Missing());
  return std::min(report.Missing(), 100);
}
