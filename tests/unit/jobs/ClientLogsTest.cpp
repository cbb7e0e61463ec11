// Maintenance archives of the client workstations: taken in without losing one, and how many are kept.
#include "jobs/ClientLogs.h"

#include "unit/Station.h"

namespace {

using base::Result;
using enum base::MessageId;

base::Outcome Import(JobStation& station) {
  return jobs::ImportClientLogs(station.tools, station.application.paths, station.host.qx32, fakes::kProgramFolder);
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
  EXPECT_EQ(Import(*this), Result::Done);
  EXPECT_EQ(NamesBelow("C:\\Tarsus\\ClientLog"),
            (Names{"Maintenance_A_120314101010\\c.log", "Maintenance_B 1_120314101010\\c.log"}));
  EXPECT_EQ(NamesBelow("C:\\Tarsus\\Update"), Names{"Other.cab"});
  EXPECT_EQ(host.processes.started[2].commandLine, "cabarc -r -p X \"Maintenance_B 1.cab\"");
  EXPECT_EQ(host.processes.started[2].currentFolder, "C:\\Tarsus\\ClientLog");
  EXPECT_EQ(host.disk.CurrentFolder(), fakes::kProgramFolder);
  EXPECT_TRUE(WasWarnedOf("Exit code 1: cabarc -r -p X Maintenance_AB.cab"));
}

struct ImportFault {
  Arrangement arrange;
  Ids messages;
  std::string line;  ///< of the log, behind its kind
};

const ImportFault kImportFaults[] = {
    {NoEntry("Update"), {PathEntryUnreadable}, "Message 60326: path-table entry \"Update\": "},
    {NoEntry("ClientLog"), {PathEntryUnreadable}, "Message 60326: path-table entry \"ClientLog\": "},
    {[](auto& host) { host.qx32.pathTable["ClientLog"] = "C:\\NoParent\\ClientLog"; },
     {},
     "Client-log folder not made: C:\\NoParent\\ClientLog"},
    {Fails("FileSystem", "MoveTo"), {}, "Client log not moved: C:\\Tarsus\\Update\\Maintenance_A.cab"},
    {Gone(kArchiver), {}, "Client log not unpacked: Not started: cabarc -r -p X Maintenance_A.cab"},
    {Fails("FileSystem", "SetCurrentFolder"), {}, "Client log not unpacked: C:\\Tarsus\\ClientLog"},
    {Fails("FileSystem", "RemoveFile"), {}, "Client log not removed: C:\\Tarsus\\ClientLog\\Maintenance_A.cab"}};

// The first fault ends it, and the log says why. What a run has left, the next one takes in.
TEST(ClientLogImport, LosesNoArchive) {
  for (const auto& [arrange, messages, line] : kImportFaults) {
    SCOPED_TRACE(line);
    JobStation station;
    station.host.disk.Write("C:\\Tarsus\\Update\\Maintenance_A.cab", ClientArchive("A"));
    arrange(station.host);
    for (const base::MessageId id : messages) station.host.person.ExpectMessage(id);
    EXPECT_EQ(Import(station), Result::Failed);
    EXPECT_TRUE(station.host.disk.Read("C:\\Tarsus\\Update\\Maintenance_A.cab") == ClientArchive("A") ||
                station.host.disk.Read("C:\\Tarsus\\ClientLog\\Maintenance_A.cab") == ClientArchive("A"));
    EXPECT_TRUE(station.WasWarnedOf(line));
  }
}

TEST_F(JobTest, AnArchiveThatWasLeftBehindBlocksNobody) {
  host.disk.Write("C:\\Tarsus\\Update\\Maintenance_A.cab", ClientArchive("A"));
  const std::string archiver = host.disk.Read(kArchiver);
  Gone(kArchiver)(host);
  EXPECT_EQ(Import(*this), Result::Failed);
  EXPECT_EQ(NamesBelow("C:\\Tarsus\\ClientLog"), Names{"Maintenance_A.cab"});
  host.disk.Write(kArchiver, archiver);
  host.disk.Write("C:\\Tarsus\\Update\\Maintenance_A.cab",
                  fakes::MakeCabinet({{"Maintenance_A_120315101010\\c.log", "newer"}}));
  EXPECT_EQ(Import(*this), Result::Done);
  EXPECT_EQ(NamesBelow("C:\\Tarsus\\ClientLog"),
            (Names{"Maintenance_A_120314101010\\c.log", "Maintenance_A_120315101010\\c.log"}));
  EXPECT_EQ(NamesBelow("C:\\Tarsus\\Update"), Names{});
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
  std::string line = {};  ///< of the log
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
     Folders("PC1", 1, 3) + Names{"Maintenance_"}, Result::Failed,
     "Client logs not pruned: no time stamp in the folder's name Maintenance_ (client logs)"},
    {"a name without a stamp is no client's",
     Folders("PC1", 1, 2) + Folders("PC2", 1, 1) + Names{"Maintenance_old", "Maintenance_of_last_year_", "Manuals"}, 1,
     Folders("PC1", 2, 2) + Folders("PC2", 1, 1) + Names{"Maintenance_old", "Maintenance_of_last_year_", "Manuals"},
     Result::Done, "No client's folder, kept : Maintenance_old"},
    {"a stamp alone", {"Maintenance_120315093101", "Maintenance_120315093102"}, 1, {"Maintenance_120315093102"}},
    {"other folders stay", {"Keep_120315093100", "Keep_120315093101"}, 0, {"Keep_120315093100", "Keep_120315093101"}},
};

TEST(ClientLogRetention, KeepsTheNewestOfEachClient) {
  for (const Retention& each : kRetentions) {
    SCOPED_TRACE(each.name);
    JobStation station;
    for (const std::string& name : each.folders) station.host.disk.Write("C:\\Logs\\" + name + "\\x.log", "x");
    station.host.disk.Write("C:\\Logs\\Maintenance_a_file_is_none.txt", "x");
    if (each.keep) station.host.qx32.numbers["ClientLogBackupNumber"] = *each.keep;
    EXPECT_EQ(jobs::PruneClientLogBackups(station.tools, station.host.qx32, "C:\\Logs"), each.result);
    Names left;
    for (const auto& entry : station.host.disk.Children("C:\\Logs")) left.push_back(entry->name);
    EXPECT_EQ(left + Names{}, each.kept + Names{"Maintenance_a_file_is_none.txt"});
    EXPECT_TRUE(each.line.empty() || station.host.components.Logged(each.line));
  }
}

TEST(SortDescending, OrdersWithoutRegardToCase) {
  for (std::size_t length = 0; length < 40; ++length) {
    Names list;
    for (std::size_t i = 0; i < length; ++i)
      list.push_back((i % 2 == 0 ? "client" : "CLIENT") + std::to_string(100 + i * 37 % 41));
    Names expected = list;
    std::ranges::sort(expected, std::greater<>(), [](const std::string& name) { return name.substr(6); });
    jobs::SortDescending(list, list.size());
    EXPECT_EQ(list, expected);
  }
}

}  // namespace
