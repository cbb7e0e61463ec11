// What the program does with many files, by its Windows adapters, on real ones: time per item.
//
//   bench_files staging FOLDER     empties FOLDER as the program empties its staging folder
//   bench_files clients FOLDER     deletes all but the newest 20 of each client's log folders in FOLDER
//
// Prints microseconds per entry of FOLDER. What is in FOLDER is deleted!

#include <chrono>
#include <cstdio>
#include <string>
#include <vector>

#include "fakes/FakeHost.h"
#include "jobs/ClientLogs.h"
#include "windows/adapters/Win32Desktop.h"
#include "windows/adapters/Win32FileSystem.h"
#include "work/FileOperations.h"
#include "work/WorkFolder.h"

namespace {

/// Real files, served messages; the rest is the tests' imaginary workstation.
struct Station {
  fakes::FakeHost rest;
  windows::Win32MessageLoop loop;
  windows::Win32FileSystem files{&loop};

  host::Host Contracts() {
    const host::Host all = rest.Contracts();
    return {all.qx32, all.qx32lib, all.qxNetDB,   all.components, all.catalogue, all.compactor,
            files,    all.drives,  all.processes, all.shell,      all.clock,     loop};
  }
};

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) return 2;
  const std::string folder = argv[2];
  Station station;
  app::Application application{station.Contracts(), station.rest.toolkit};
  const work::Tools tools = work::ToolsOf(application);
  std::vector<host::FolderEntry> entries;
  if (!station.files.List(folder, "*", entries).IsDone()) return 1;
  const auto start = std::chrono::steady_clock::now();
  if (std::string(argv[1]) == "staging") {
    if (!work::EmptyFolder(tools, folder, work::kArchiveFolderName).IsDone()) return 1;
  } else if (!jobs::PruneClientLogBackups(tools, application.host.qx32, folder).IsDone()) {
    return 1;
  }
  const std::chrono::duration<double, std::micro> taken = std::chrono::steady_clock::now() - start;
  std::printf("%.3f\n", taken.count() / static_cast<double>(entries.size()));
}
