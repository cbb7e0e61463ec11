// Examines a host system and prints what the program would miss on it. Stands in the folder that the program is
// to live in: libraries and archiver are looked for there, as the program does.
#include <cstdio>
#include <optional>
#include <string>

#include "host-check/Checks.h"
#include "windows/adapters/WindowsHost.h"
#include "windows/toolkit/Win32Toolkit.h"

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

// As monitoring programs understand them.
constexpr int kNothingMissing = 0;
constexpr int kMissing = 2;
constexpr int kWrongCall = 3;

constexpr char kHelp[] =
    "QXHostCheck [--all | --json | --help]\n"
    "\n"
    "Examines this host system and prints what QXBackupUtility would miss on it, and what is worth a look.\n"
    "Changes nothing. Run it in the folder of the host's programs.\n"
    "\n"
    "  --all    also prints what is in order\n"
    "  --json   prints everything for other programs\n"
    "  --help   prints this, and examines nothing\n"
    "\n"
    "Exit code: 0 nothing is missing, 2 something is, 3 wrong call.\n";

enum class Wanted { Findings, Everything, Json, Help };

/// Nothing for a call that is wrong.
std::optional<Wanted> WantedBy(int count, char** arguments) {
  if (count == 1) return Wanted::Findings;
  const std::string option = count == 2 ? arguments[1] : "";
  if (option == "--all") return Wanted::Everything;
  if (option == "--json") return Wanted::Json;
  if (option == "--help" || option == "/?") return Wanted::Help;
  return std::nullopt;
}

hostcheck::Report Examine() {
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
  return report;
}

}  // namespace

int main(int count, char** arguments) {
  const std::optional<Wanted> wanted = WantedBy(count, arguments);
  if (!wanted || *wanted == Wanted::Help) {
    std::fputs(kHelp, wanted ? stdout : stderr);
    return wanted ? kNothingMissing : kWrongCall;
  }
  const hostcheck::Report report = Examine();
  std::fputs((*wanted == Wanted::Json ? report.Json() : report.Text(*wanted == Wanted::Everything)).c_str(), stdout);
  return report.Count(hostcheck::Verdict::Missing) == 0 ? kNothingMissing : kMissing;
}
