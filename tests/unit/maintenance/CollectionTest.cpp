// What a maintenance log is collected from: images, study list, client logs, filtered files.
#include "maintenance/ClientLogs.h"
#include "maintenance/Collectors.h"
#include "maintenance/MaintenanceSection.h"
#include "maintenance/PersonalInfo.h"
#include "maintenance/RecentImages.h"
#include "maintenance/Retention.h"
#include "maintenance/StudyList.h"
#include "unit/Station.h"

namespace {

using base::Result;
using enum base::MessageId;

TEST(RecentImages, FaultsCostOnlyWhatTheyConcern) {
  const std::tuple<Arrangement, Names, const char*> faults[] = {
      {Fails("StudyDatabaseQuery", "OpenQuery"), {}, "list of recent images"},
      {Fails("StudyDatabaseQuery", "FieldValue", 2), {"Image\\1.ddo"}, "A row of the list"},
      {Fails("FileSystem", "CopyTo", 2), {"Image\\1.ddo"}, "Not copied: C:\\Tarsus\\Image\\2.ddo"}};
  for (const auto& [arrange, staged, warning] : faults) {
    SCOPED_TRACE(warning);
    JobStation station;
    for (const char* const path : {"C:\\Tarsus\\Image\\1.ddo", "C:\\Tarsus\\Image\\2.ddo"}) {
      station.host.Told().studies["SELECT RIGHT(URL,LEN(URL)-7)"].rows.push_back({path, ""});
      station.host.disk.Write(path, "x");
    }
    arrange(station.host);
    maintenance::CopyRecentImages(station.application, JobStation::kStaging);
    EXPECT_EQ(station.Staged(), staged);
    EXPECT_TRUE(station.WasWarnedOf(warning));
    EXPECT_EQ(station.host.messageLoop.yields, staged.empty() ? 0 : 2) << "one for each row";
  }
}

TEST_F(JobTest, ImagesNeedTheirPathEntry) {
  host.qx32.pathTable.erase("Image");
  host.person.ExpectMessage(PathEntryUnreadable);
  maintenance::CopyRecentImages(application, kStaging);
  EXPECT_TRUE(host.Told().statements.empty());
  host.qx32.pathTable["Image"] = "\\";  // no folder that could stand in a path
  host.Told().studies["SELECT RIGHT(URL,LEN(URL)-7)"].rows.push_back({"C:\\Tarsus\\Image\\1.ddo", ""});
  maintenance::CopyRecentImages(application, kStaging);
  EXPECT_TRUE(WasWarnedOf("Not copied: C:\\Tarsus\\Image\\1.ddo"));
}

TEST_F(JobTest, EnsureFolderReportsWhatItCannotMake) {
  for (const char* folder : {"C:\\Tarsus\\Menu\\menu.ini\\a\\b", "Q:\\a"})
    EXPECT_EQ(maintenance::EnsureFolder(application, folder), Result::Failed);
}

TEST_F(JobTest, StudyListFallsBackToTheSystemDriveWithoutADesktop) {
  application.state.ProtectPersonalInfo = true;
  host.shell.desktop.clear();
  EXPECT_EQ(maintenance::ExportStudyList(application), Result::Done);
  EXPECT_EQ(host.disk.Read("C:\\T_TSTUDY.txt"), "studies without names");
  EXPECT_EQ(Staged(), Names{"T_TSTUDY.txt"});
  EXPECT_FALSE(host.disk.IsFile("C:\\Tarsus\\Temp\\StudyDB\\BCP\\T_TSTUDY.txt"));
}

std::string ClientArchive(const std::string& client) {
  return fakes::MakeCabinet({{"Maintenance_" + client + "_120314101010\\c.log", client}});
}

// One that cannot be unpacked is consumed like the others, so that it does not come again for ever.
TEST_F(JobTest, ClientLogsAreImportedInListedOrderAndConsumed) {
  host.disk.Remove("C:\\Tarsus\\ClientLog");
  host.qx32.pathTable["ClientLog"] = " C:\\Tarsus\\ClientLog\\ ";
  for (const std::string client : {"A", "B 1"})
    host.disk.Write("C:\\Tarsus\\Update\\Maintenance_" + client + ".cab", ClientArchive(client));
  host.disk.Write("C:\\Tarsus\\Update\\Maintenance_AB.cab", "no cabinet");
  host.disk.Write("C:\\Tarsus\\Update\\Other.cab", "other");
  EXPECT_EQ(maintenance::ImportClientLogs(application), Result::Done);
  EXPECT_EQ(NamesBelow("C:\\Tarsus\\ClientLog"),
            (Names{"Maintenance_A_120314101010\\c.log", "Maintenance_B 1_120314101010\\c.log"}));
  EXPECT_EQ(NamesBelow("C:\\Tarsus\\Update"), Names{"Other.cab"});
  EXPECT_EQ(host.processes.started[2].commandLine, "cabarc -r -p X \"Maintenance_B 1.cab\"");
  EXPECT_EQ(host.processes.started[2].currentFolder, "C:\\Tarsus\\ClientLog");
  EXPECT_EQ(host.disk.CurrentFolder(), fakes::kProgramFolder);
  EXPECT_TRUE(WasWarnedOf("Exit code 1: cabarc -r -p X Maintenance_AB.cab"));
}

// The first fault ends it.
TEST(ClientLogImport, LosesNoArchive) {
  const std::pair<Arrangement, Ids> faults[] = {
      {NoEntry("Update"), {PathEntryUnreadable}},
      {NoEntry("ClientLog"), {PathEntryUnreadable}},
      {[](auto& host) { host.qx32.pathTable["ClientLog"] = "C:\\NoParent\\ClientLog"; }, {}},
      {File("C:\\Tarsus\\ClientLog\\Maintenance_A.cab", "stands there already"), {}},
      {Gone(kArchiver), {}},
      {Fails("FileSystem", "SetCurrentFolder"), {}}};
  for (const auto& [arrange, messages] : faults) {
    JobStation station;
    station.host.disk.Write("C:\\Tarsus\\Update\\Maintenance_A.cab", ClientArchive("A"));
    arrange(station.host);
    for (const base::MessageId id : messages) station.host.person.ExpectMessage(id);
    EXPECT_EQ(maintenance::ImportClientLogs(station.application), Result::Failed);
    EXPECT_TRUE(station.host.disk.Read("C:\\Tarsus\\Update\\Maintenance_A.cab") == ClientArchive("A") ||
                station.host.disk.Read("C:\\Tarsus\\ClientLog\\Maintenance_A.cab") == ClientArchive("A"));
  }
}

/// Folder names of a client, the oldest first: those numbered from `first` to `last`.
Names Folders(const std::string& client, int first, int last) {
  Names names;
  for (int i = first; i <= last; ++i) names.push_back("Maintenance_" + client + "_120315093" + std::to_string(100 + i));
  return names;
}

Names operator+(Names left, const Names& right) {
  left.insert(left.end(), right.begin(), right.end());
  std::ranges::sort(left);
  return left;
}

struct Retention {
  const char* name;
  Names folders;
  std::optional<std::uint32_t> keep;  ///< the registry value, where there is one
  Names kept;
  Result result = Result::Done;
};

const Retention kRetentions[] = {
    {"twenty of twenty", Folders("PC1", 1, 20), {}, Folders("PC1", 1, 20)},
    {"the oldest of twenty-one", Folders("PC1", 1, 21), {}, Folders("PC1", 2, 21)},
    {"none kept", Folders("PC1", 1, 2) + Folders("PC2", 1, 1), 0, {}},
    {"per client", Folders("PC1", 1, 3) + Folders("PC2", 1, 1), 2, Folders("PC1", 2, 3) + Folders("PC2", 1, 1)},
    {"without regard to case", Folders("PC1", 1, 2) + Folders("pc1", 3, 3), 1, Folders("pc1", 3, 3)},
    {"a name that begins another one", Folders("PC1", 1, 2) + Folders("PC10", 1, 2), 2, Folders("PC1", 1, 2)},
    {"names beyond ASCII", Folders("Ärztin", 1, 2), 1, Folders("Ärztin", 2, 2)},
    {"a name without a suffix stops everything", Folders("PC1", 1, 3) + Names{"Maintenance_"}, 1,
     Folders("PC1", 1, 3) + Names{"Maintenance_"}, Result::Failed},
    {"other folders stay", {"Keep_120315093100", "Keep_120315093101"}, 0, {"Keep_120315093100", "Keep_120315093101"}},
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
    for (const auto& entry : station.host.disk.Children("C:\\Logs")) left.push_back(entry->name);
    EXPECT_EQ(left + Names{}, each.kept + Names{"Maintenance_a_file_is_none.txt"});
  }
}

TEST(SortDescending, OrdersWithoutRegardToCase) {
  for (std::size_t length = 0; length < 40; ++length) {
    Names list;
    for (std::size_t i = 0; i < length; ++i)
      list.push_back((i % 2 == 0 ? "client" : "CLIENT") + std::to_string(100 + i * 37 % 41));
    Names expected = list;
    std::ranges::sort(expected, std::greater<>(), [](const std::string& name) { return name.substr(6); });
    maintenance::SortDescending(list, list.size());
    EXPECT_EQ(list, expected);
  }
}

struct Filtering {
  const char* name;
  std::string line;
  Names calls;
  std::string range = {};  ///< contents of range.txt
  Result result = Result::Done;
};

const Filtering kFilterings[] = {
    {"no key", "", {}},
    {"empty value", "PersonalInfo=", {"files|C:\\Tarsus\\"}},
    {"below the root", "PersonalInfo=Report", {"files|C:\\Tarsus\\Report"}},
    {"images of all days", "PersonalInfo=%Image%\\a", {"images|C:\\Tarsus\\Image\\a"}},
    {"images of some days", "PersonalInfo=%Image%\\a", {"images|C:\\Tarsus\\Image\\a"}, "-30"},
    {"the last variable holds on",
     "PersonalInfo=%Image%\\a;Report;%Data%\\b;Menu",
     {"images|C:\\Tarsus\\Image\\a", "images|C:\\Tarsus\\Report", "files|C:\\Tarsus\\Data\\b",
      "files|C:\\Tarsus\\Menu"}},
    {"unknown variable", "PersonalInfo=Menu;%X%\\a;Report", {"files|C:\\Tarsus\\Menu"}, "", Result::Failed},
};

TEST(PersonalInfo, HandsEveryItemToTheFilter) {
  for (const Filtering& each : kFilterings) {
    SCOPED_TRACE(each.name);
    JobStation station;
    app::State& state = station.application.state;
    state.CollectImages = each.range.empty() ? 0 : 1;
    state.ImageRangeDays = 30;
    state.PersonalInfoResult = 77;
    station.host.Told().filterAnswers = {0, 5, 6};
    for (const std::string folder : {"Report", "Data\\b", "Image\\a"})
      station.host.disk.MakeFolders("C:\\Tarsus\\" + folder);
    station.LoadSection("MAINTENANCE", {each.line});
    if (each.result != Result::Done) station.host.person.ExpectMessage(PathEntryUnreadable);
    maintenance::Collectors collectors(station.application, station.definitions);
    EXPECT_EQ(collectors.ApplyPersonalInfoList("MAINTENANCE"), each.result);
    EXPECT_EQ(station.host.Told().filterCalls, each.calls);
    EXPECT_EQ(station.host.disk.Read("C:\\Tarsus\\Image\\range.txt"), each.range);
    EXPECT_EQ(state.PersonalInfoResult, each.calls.size() > 1 ? 5 : 0) << "the first that is not 0";
  }
}

TEST(PersonalInfo, NeedsTheFilterItsListAndTheRange) {
  for (const Arrangement& fault : {Fails("FileSystem", "CreateText"), NoEntry("DeleteListDB"),
                                   Fails("ComponentFactory", "CreatePersonalInfoFilter")}) {
    JobStation station;
    station.application.state.CollectImages = 1;
    station.LoadSection("MAINTENANCE", {"PersonalInfo=%Image%\\a"});
    fault(station.host);
    EXPECT_EQ(maintenance::ApplyPersonalInfoList(station.application, station.definitions, "MAINTENANCE"),
              Result::Failed);
    EXPECT_TRUE(station.host.Told().filterCalls.empty());
  }
}

TEST_F(JobTest, MaintenanceSectionIsLoadedThoughTheImportFails) {
  Jobs({"[MAINTENANCE]", "Folder=a"})(host);
  EXPECT_EQ(maintenance::LoadMaintenanceSection(job), Result::Done);
  EXPECT_EQ(definitions.Items(backup::JobKey::Folder, "MAINTENANCE"), Names{"a"});
  application.state.ProtectPersonalInfo = true;
  EXPECT_EQ(maintenance::LoadMaintenanceSection(job), Result::Failed);
  EXPECT_EQ(collectors.asked, (Names{"client logs", "client logs"}));
}

}  // namespace
