// Client logs, their retention, and the personal-information filter.
#include <algorithm>

#include "maintenance/ClientLogs.h"
#include "maintenance/Collectors.h"
#include "maintenance/MaintenanceSection.h"
#include "maintenance/PersonalInfo.h"
#include "maintenance/Retention.h"
#include "unit/backup/JobFixture.h"

namespace {

/// `count` folder names of a client, the oldest first.
Names Folders(const std::string& client, int count) {
  Names names;
  for (int i = 0; i < count; ++i) {
    const std::string number = std::to_string(100 + i);
    names.push_back("Maintenance_" + client + "_120315093" + number);
  }
  return names;
}

Names Joined(Names left, const Names& right) {
  left.insert(left.end(), right.begin(), right.end());
  std::sort(left.begin(), left.end());
  return left;
}

Names Newest(const Names& names, std::size_t count) {
  return {names.end() - static_cast<std::ptrdiff_t>(std::min(count, names.size())), names.end()};
}

struct Retention {
  const char* name;
  Names folders;
  std::optional<std::uint32_t> keep;  ///< the registry value, where there is one
  app::ResultCode result;
  Names kept;
};

const Retention kRetentions[] = {
    {"twenty of twenty", Folders("PC1", 20), {}, 0, Folders("PC1", 20)},
    {"the oldest of twenty-one", Folders("PC1", 21), {}, 0, Newest(Folders("PC1", 21), 20)},
    {"none kept", Joined(Folders("PC1", 2), Folders("PC2", 1)), 0, 0, {}},
    {"per client", Joined(Folders("PC1", 3), Folders("PC2", 1)), 2, 0,
     Joined(Newest(Folders("PC1", 3), 2), Folders("PC2", 1))},
    {"a client without regard to case",
     Joined(Folders("PC1", 2), {"maintenance_pc1_120315093999"}),
     1,
     0,
     {"maintenance_pc1_120315093999"}},
    {"a name that begins another one counts both", Joined(Folders("PC1", 2), Folders("PC10", 2)), 2, 0,
     Folders("PC1", 2)},
    {"names beyond ASCII", Joined(Folders("Ärztin", 2), {}), 1, 0, Newest(Folders("Ärztin", 2), 1)},
    {"a name without a suffix stops everything", Joined(Folders("PC1", 3), {"Maintenance_"}), 1, -1,
     Joined(Folders("PC1", 3), {"Maintenance_"})},
    {"other folders stay",
     {"Keep_120315093100", "Keep_120315093101"},
     0,
     0,
     {"Keep_120315093100", "Keep_120315093101"}},
};

TEST(ClientLogRetention, KeepsTheNewestOfEachClient) {
  for (const Retention& each : kRetentions) {
    SCOPED_TRACE(each.name);
    JobStation station;
    for (const std::string& name : each.folders) station.host.disk.Write("C:\\Logs\\" + name + "\\x.log", "x");
    station.host.disk.Write("C:\\Logs\\Maintenance_a_file_is_none.txt", "x");
    if (each.keep) station.host.qx32.numbers["ClientLogBackupNumber"] = *each.keep;
    EXPECT_EQ(maintenance::PruneClientLogBackups(station.application, "C:\\Logs"), each.result);
    Names left;
    for (const auto& entry : station.host.disk.Children("C:\\Logs")) {
      if (entry->isFolder) left.push_back(entry->name);
    }
    std::sort(left.begin(), left.end());
    EXPECT_EQ(left, each.kept);
    EXPECT_TRUE(station.host.disk.IsFile("C:\\Logs\\Maintenance_a_file_is_none.txt"));
  }
}

TEST(SortDescending, OrdersWithoutRegardToCase) {
  for (std::size_t length = 0; length < 40; ++length) {
    Names list;
    for (std::size_t i = 0; i < length; ++i) {
      list.push_back((i % 2 == 0 ? "client" : "CLIENT") + std::to_string(100 + i * 37 % 41));
    }
    Names expected = list;
    std::sort(expected.begin(), expected.end(),
              [](const std::string& left, const std::string& right) { return left.substr(6) > right.substr(6); });
    maintenance::SortDescending(list, list.size());
    EXPECT_EQ(list, expected);
  }
  Names partly = {"a", "b", "c"};
  maintenance::SortDescending(partly, 2);
  EXPECT_EQ(partly, (Names{"b", "a", "c"}));
}

TEST_F(JobTest, ClientLogsAreImportedInListedOrderAndConsumed) {
  host.disk.Remove("C:\\Tarsus\\ClientLog");
  host.qx32.pathTable["ClientLog"] = " C:\\Tarsus\\ClientLog\\ ";
  for (const std::string client : {"A", "B 1"}) {
    host.disk.Write("C:\\Tarsus\\Update\\Maintenance_" + client + ".cab",
                    fakes::MakeCabinet({{"Maintenance_" + client + "_120314101010\\c.log", client}}));
  }
  host.disk.Write("C:\\Tarsus\\Update\\Other.cab", "other");
  EXPECT_EQ(maintenance::ImportClientLogs(application), app::kDone);
  EXPECT_EQ(NamesBelow("C:\\Tarsus\\ClientLog"),
            (Names{"Maintenance_A_120314101010\\c.log", "Maintenance_B 1_120314101010\\c.log"}));
  EXPECT_EQ(NamesBelow("C:\\Tarsus\\Update"), Names{"Other.cab"});
  EXPECT_EQ(host.processes.started[1].commandLine, "cabarc -r -p X \"Maintenance_B 1.cab\"");
  EXPECT_EQ(host.processes.started[1].currentFolder, "C:\\Tarsus\\ClientLog");
  EXPECT_EQ(host.disk.CurrentFolder(), fakes::kProgramFolder);
}

struct ImportFault {
  const char* name;
  void (*arrange)(fakes::FakeHost&);
  bool unknownEntry;
};

const ImportFault kImportFaults[] = {
    {"no update folder named", [](fakes::FakeHost& h) { h.qx32.pathTable.erase("Update"); }, true},
    {"no client-log folder named", [](fakes::FakeHost& h) { h.qx32.pathTable.erase("ClientLog"); }, true},
    {"client-log folder's parent missing",
     [](fakes::FakeHost& h) { h.qx32.pathTable["ClientLog"] = "C:\\None\\ClientLog"; }, false},
    {"archive stands there already",
     [](fakes::FakeHost& h) { h.disk.Write("C:\\Tarsus\\ClientLog\\Maintenance_A.cab", "old"); }, false},
    {"archiver missing", [](fakes::FakeHost& h) { h.disk.Remove("C:\\Tarsus\\Backup\\cabarc.exe"); }, false},
    {"client-log folder cannot be entered",
     [](fakes::FakeHost& h) { h.calls.FailFrom("FileSystem", "SetCurrentFolder"); }, false},
};

TEST(ClientLogImport, StopsAtTheFirstFaultAndLosesNoArchive) {
  for (const ImportFault& fault : kImportFaults) {
    SCOPED_TRACE(fault.name);
    JobStation station;
    const std::string bytes = fakes::MakeCabinet({{"Maintenance_A_120314101010\\c.log", "x"}});
    station.host.disk.Write("C:\\Tarsus\\Update\\Maintenance_A.cab", bytes);
    fault.arrange(station.host);
    if (fault.unknownEntry) station.host.person.ExpectMessage(60326);
    EXPECT_EQ(maintenance::ImportClientLogs(station.application), app::kFailed);
    EXPECT_TRUE(station.host.disk.Read("C:\\Tarsus\\Update\\Maintenance_A.cab") == bytes ||
                station.host.disk.Read("C:\\Tarsus\\ClientLog\\Maintenance_A.cab") == bytes);
  }
}

struct Filtering {
  const char* name;
  std::vector<std::string> lines;
  std::int32_t collectImages;
  app::ResultCode result;
  Names calls;
  const char* range;  ///< contents of range.txt
  bool unknownVariable = false;
};

const Filtering kFilterings[] = {
    {"no key", {}, 0, 0, {}, ""},
    {"empty value", {"PersonalInfo="}, 0, 0, {"files|C:\\Tarsus\\"}, ""},
    {"below the root", {"PersonalInfo=Report"}, 0, 0, {"files|C:\\Tarsus\\Report"}, ""},
    {"images of all days", {"PersonalInfo=%Image%\\a"}, 0, 0, {"images|C:\\Tarsus\\Image\\a"}, ""},
    {"images of some days", {"PersonalInfo=%Image%\\a"}, 1, 0, {"images|C:\\Tarsus\\Image\\a"}, "-30"},
    {"the last variable holds on",
     {"PersonalInfo=%Image%\\a;Report;%Data%\\b;Menu"},
     0,
     0,
     {"images|C:\\Tarsus\\Image\\a", "images|C:\\Tarsus\\Report", "files|C:\\Tarsus\\Data\\b",
      "files|C:\\Tarsus\\Menu"},
     ""},
    {"unknown variable", {"PersonalInfo=Menu;%X%\\a;Report"}, 0, -1, {"files|C:\\Tarsus\\Menu"}, "", true},
};

TEST(PersonalInfo, HandsEveryItemToTheFilter) {
  for (const Filtering& each : kFilterings) {
    SCOPED_TRACE(each.name);
    JobStation station;
    station.host.disk.MakeFolders("C:\\Tarsus\\Image");
    station.application.state.CollectImages = each.collectImages;
    station.application.state.ImageRangeDays = 30;
    station.application.state.PersonalInfoResult = 77;
    station.host.Told().filterAnswers = {0, 5, 6};
    station.host.calls.Reset();
    for (const char* folder : {"Report", "Data\\b", "Image\\a"}) {
      station.host.disk.MakeFolders(std::string("C:\\Tarsus\\") + folder);
    }
    station.LoadSection("MAINTENANCE", each.lines);
    if (each.unknownVariable) station.host.person.ExpectMessage(60326);
    maintenance::Collectors collectors(station.application, station.definitions);
    EXPECT_EQ(collectors.ApplyPersonalInfoList("MAINTENANCE"), each.result);
    EXPECT_EQ(station.host.Told().filterCalls, each.calls);
    EXPECT_EQ(station.host.disk.Read("C:\\Tarsus\\Image\\range.txt"), each.range);
    EXPECT_EQ(station.application.state.PersonalInfoResult, each.calls.size() > 1 ? 5 : 0) << "the first that is not 0";
  }
}

TEST_F(JobTest, PersonalInfoNeedsTheFilterItsListAndTheRange) {
  application.state.CollectImages = 1;
  LoadSection("MAINTENANCE", {"PersonalInfo=%Image%\\a"});
  host.calls.FailFrom("FileSystem", "CreateText");
  EXPECT_EQ(maintenance::ApplyPersonalInfoList(application, definitions, "MAINTENANCE"), app::kFailed);
  host.calls.Reset();
  host.calls.FailFrom("ComponentFactory", "CreatePersonalInfoFilter");
  EXPECT_EQ(maintenance::ApplyPersonalInfoList(application, definitions, "MAINTENANCE"), app::kFailed);
  host.calls.Reset();
  host.qx32.pathTable.erase("DeleteListDB");
  EXPECT_EQ(maintenance::ApplyPersonalInfoList(application, definitions, "MAINTENANCE"), app::kFailed);
  EXPECT_TRUE(host.Told().filterCalls.empty());
}

TEST_F(JobTest, MaintenanceSectionIsLoadedThoughTheImportFails) {
  host.WriteLines("C:\\Tarsus\\System\\BackupList.ini", {"[MAINTENANCE]", "Folder=a"});
  EXPECT_EQ(maintenance::LoadMaintenanceSection(job), app::kDone);
  EXPECT_EQ(definitions.Items(backup::JobKey::Folder, "MAINTENANCE"), Names{"a"});
  application.state.ProtectPersonalInfo = true;
  EXPECT_EQ(maintenance::LoadMaintenanceSection(job), app::kFailed);
  EXPECT_EQ(collectors.asked, (Names{"client logs", "client logs"}));
}

}  // namespace
