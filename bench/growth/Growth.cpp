// Time per item of the loops over files, rows and lines, at a tenth and at all of
// what a large site has. Native, on an imaginary workstation: what is measured is
// the program's own work, not a disk's.

#include <chrono>
#include <cstdio>
#include <functional>
#include <string>

#include "app/Application.h"
#include "backup/FileOperations.h"
#include "backup/JobDefinitions.h"
#include "fakes/FakeHost.h"
#include "maintenance/RecentImages.h"
#include "maintenance/Retention.h"

namespace {

struct Station {
  Station() {
    host.disk.AddDrive('C', "", fakes::kUnlimited);
    host.disk.MakeFolders("C:\\Staging");
    application.state.StagingFolder = "C:\\Staging\\";
    application.state.StartupDirectory = "C:\\";
  }

  fakes::FakeHost host;
  app::Application application{host.Contracts(), host.toolkit};
};

using Action = std::function<void()>;

/// 25 folders of each client, of which 20 stay.
Action Retention(Station& station, int folders) {
  for (int i = 0; i < folders; ++i) {
    station.host.disk.MakeFolders("C:\\ClientLog\\Maintenance_PC" + std::to_string(i / 25) + "_" +
                                  std::to_string(120315093000 + i % 25));
  }
  return [&] { maintenance::PruneClientLogBackups(station.application, "C:\\ClientLog\\"); };
}

Action Images(Station& station, int rows) {
  station.host.qx32.pathTable["Image"] = "C:\\Image";
  fakes::StudyAnswer answer;
  for (int i = 0; i < rows; ++i) {
    const std::string path = "C:\\Image\\" + std::to_string(i / 64) + "\\" + std::to_string(i) + ".ddo";
    station.host.disk.Write(path, "image");
    answer.rows.push_back({path, ""});
  }
  station.host.Told().studies["SELECT RIGHT(URL"] = answer;
  return [&] { maintenance::CopyRecentImages(station.application, "C:\\Staging\\"); };
}

Action JobList(Station& station, int items) {
  std::string line = "Folder=";
  for (int i = 0; i < items; ++i) line += "Data\\Folder" + std::to_string(i) + ";";
  station.host.WriteLines("C:\\BackupList.ini", {"[PATIENT_BACKUP]", line});
  return [&] {
    backup::JobDefinitions definitions;
    definitions.Load(station.application, "C:\\", backup::kJobDefinitionFile, "PATIENT_BACKUP");
    definitions.Items(backup::JobKey::Folder, "PATIENT_BACKUP");
  };
}

Action EmptyStaging(Station& station, int files) {
  for (int i = 0; i < files; ++i) station.host.disk.Write("C:\\Staging\\" + std::to_string(i), "x");
  return [&] { backup::EmptyFolder(station.application, "C:\\Staging\\"); };
}

double MicrosecondsPerItem(Action (*prepare)(Station&, int), int items) {
  Station station;
  const Action action = prepare(station, items);
  const auto start = std::chrono::steady_clock::now();
  action();
  const std::chrono::duration<double, std::micro> taken = std::chrono::steady_clock::now() - start;
  return taken.count() / items;
}

}  // namespace

int main() {
  const struct {
    const char* what;
    Action (*prepare)(Station&, int);
    int items;
  } loops[] = {{"client-log folders", Retention, 8000},
               {"image rows", Images, 100000},
               {"items of a job list", JobList, 10000},
               {"files in staging", EmptyStaging, 20000}};
  std::printf("%-22s %10s %12s %12s %7s\n", "loop", "items", "us at 1/10", "us at all", "ratio");
  for (const auto& loop : loops) {
    MicrosecondsPerItem(loop.prepare, loop.items / 10);  // warms up
    const double tenth = MicrosecondsPerItem(loop.prepare, loop.items / 10);
    const double all = MicrosecondsPerItem(loop.prepare, loop.items);
    std::printf("%-22s %10d %12.2f %12.2f %7.2f\n", loop.what, loop.items, tenth, all, all / tenth);
  }
}
