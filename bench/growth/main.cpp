// Time per item of the loops over files, rows and lines, at a tenth and at all of
// what a large site has. Native, on an imaginary workstation: what is measured is
// the program's own work, not a disk's.
//
//   bench_growth [PERCENT]     of the full sizes
//
// Prints a name and microseconds a line.

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <functional>
#include <limits>
#include <string>
#include <vector>

#include "growth/InstantHost.h"
#include "jobs/ClientLogs.h"
#include "jobs/JobDefinitions.h"
#include "jobs/RecentImages.h"

namespace {

struct Station {
  bench::InstantHost host;
  app::Application application{host.Contracts(), host.rest.toolkit};
  work::Tools tools = work::ToolsOf(application);
};

using Action = std::function<void()>;

Action JobList(Station& station, int items) {
  std::string line = "Folder=";
  for (int i = 0; i < items; ++i) line += "Data\\Folder" + std::to_string(i) + ";";
  station.host.rest.disk.AddDrive('C', "", fakes::kUnlimited);
  station.host.rest.WriteLines("C:\\BackupList.ini", {"[PATIENT_BACKUP]", line});
  return [&] {
    jobs::JobDefinitions definitions;
    const auto loaded = definitions.Load(station.tools, "C:\\", jobs::kJobDefinitionFile, "PATIENT_BACKUP");
    if (loaded.IsDone()) definitions.Items(jobs::JobKey::Folder, "PATIENT_BACKUP");
  };
}

/// 25 folders of each client, of which 20 stay: the names are of one length, so that none begins another client's.
std::string ClientFolder(int number) {
  return "Maintenance_PC" + std::to_string(100 + number / 25) + "_" + std::to_string(120315093000 + number % 25);
}

Action Retention(Station& station, int folders) {
  for (int i = 0; i < folders; ++i) station.host.files.entries.push_back({ClientFolder(i), true, 0});
  return
      [&] { static_cast<void>(jobs::PruneClientLogBackups(station.tools, station.host.rest.qx32, "C:\\ClientLog\\")); };
}

/// The sorting that is part of it, whose way the rules lay down.
Action Sorting(Station& /*station*/, int folders) {
  std::vector<std::string> names;
  for (int i = 0; i < folders; ++i) names.push_back(ClientFolder(i));
  return [names]() mutable { jobs::SortDescending(names, names.size()); };
}

Action Images(Station& station, int rows) {
  station.host.rest.qx32.pathTable["Image"] = "C:\\Image";
  station.host.components.rows = rows;
  return [&] {
    jobs::CopyRecentImages(station.tools, station.application.paths, station.host.components, "C:\\Staging\\", 7);
  };
}

Action Messages(Station& station, int messages) {
  return [&station, messages] {
    for (int id = 60000; id < 60000 + messages; ++id) station.application.messages.GetMessageText(app::MessageId{id});
  };
}

/// Processor time, the least of several runs: what other programs do in the meantime does not count.
double MicrosecondsPerItem(Action (*prepare)(Station&, int), int items, int runs) {
  double least = std::numeric_limits<double>::max();
  for (int run = 0; run < runs; ++run) {
    Station station;
    const Action action = prepare(station, items);
    const std::clock_t start = std::clock();
    action();
    least = std::min(least, 1e6 * static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC / items);
  }
  return least;
}

}  // namespace

int main(int argc, char** argv) {
  const int percent = argc > 1 ? std::atoi(argv[1]) : 100;
  const struct {
    const char* what;
    Action (*prepare)(Station&, int);
    int items;
  } loops[] = {{"list", JobList, 10000},
               {"clients", Retention, 8000},
               {"sorting", Sorting, 8000},
               {"images", Images, 100000},
               {"messages", Messages, 5000}};
  for (const auto& loop : loops) {
    std::printf("growth.%s.tenth %.4f\n", loop.what,
                MicrosecondsPerItem(loop.prepare, loop.items * percent / 1000, 30));
    std::printf("growth.%s.all %.4f\n", loop.what, MicrosecondsPerItem(loop.prepare, loop.items * percent / 100, 5));
  }
}
