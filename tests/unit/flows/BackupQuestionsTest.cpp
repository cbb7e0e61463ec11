// Questions and checks on the way to the destination, and the operator's way out of each.
#include <gtest/gtest.h>

#include "unit/flows/Session.h"

namespace flows {
namespace {

/// A question of the destination copy: how it comes about and what precedes it.
struct Question {
  const char* name;
  std::int32_t message;
  void (*arrange)(Session&);
};

void PrintTo(const Question& question, std::ostream* out) {
  *out << question.name;
}

void UseOldSet(Session& session, const char* fileName) {
  session.disk.Write(std::string("D:\\") + fileName, "old");
}

const Question kQuestions[] = {
    {"InsertMedium", 64300,
     [](Session& s) {
       s.Told().mediaStatuses['D'] = {3, 1, 3};
     }},
    {"PrepareMedium", 64305,
     [](Session& s) {
       s.Told().mediaStatuses['D'] = {3, 2};
     }},
    {"ForeignLabel", 64301, [](Session& s) { s.disk.FindDrive("D:")->label = "HOLIDAY"; }},
    {"NewFolder", 64302, [](Session&) {}},
    {"OldArchive", 64303, [](Session& s) { UseOldSet(s, "REPORTDATA.CAB"); }},
    {"OldDescriptor", 64303, [](Session& s) { UseOldSet(s, "BackupInfo.ini"); }},
};

class BackupQuestion : public testing::TestWithParam<Question> {
 protected:
  // To the root of the medium, but for the question that only a new folder raises.
  void Begin(Session& session, std::int32_t answer) {
    GetParam().arrange(session);
    session.BeginBackup({.report = true});
    session.AcceptFolder(GetParam().message == 64302 ? kProposal : "D:\\");
    session.person.ExpectMessage(GetParam().message, answer);
  }
};

TEST_P(BackupQuestion, ConsentWritesTheSet) {
  Session session;
  Begin(session, app::kConsented);
  session.person.ExpectMessage(65300);
  session.EndMenu();
  session.Run();
  const std::string folder = GetParam().message == 64302 ? kProposal : "D:\\";
  EXPECT_EQ(session.Unpacked(folder + "ReportData.cab").size(), 1u);
  EXPECT_EQ(session.disk.Read(folder + "BackupInfo.ini").substr(0, 6), "[Info]");
  if (GetParam().message == 64305) {
    EXPECT_EQ(session.Told().preparedDrives.size(), 1u);
    EXPECT_EQ(session.disk.FindDrive("D:")->label, "BACKUP");
  }
}

TEST_P(BackupQuestion, RefusalWritesNothingAndLetsTheOperatorChooseAgain) {
  Session session;
  Begin(session, app::kRefused);
  const auto before = session.disk.Tree("D:\\");
  const std::string label = session.disk.FindDrive("D:")->label;
  session.person.ExpectMessage(65301);
  session.CancelFolder();
  session.LeaveBackup();
  session.Run();
  EXPECT_EQ(session.disk.Tree("D:\\"), before);
  EXPECT_EQ(session.disk.FindDrive("D:")->label, label);
  EXPECT_EQ(session.disk.IsFolder(kProposal), false);
  EXPECT_EQ(session.qx32.texts.count("BackupDate"), 0u);
  EXPECT_EQ(session.Told().auditRecords.size(), 2u) << "sign-in and sign-out alone";
  EXPECT_EQ(session.ChangedHostFiles(), std::vector<std::string>());
  EXPECT_TRUE(session.IsTemporaryFolderEmpty());
}

INSTANTIATE_TEST_SUITE_P(All, BackupQuestion, testing::ValuesIn(kQuestions),
                         [](const auto& test) { return test.param.name; });

TEST(BackupQuestions, RefusedLogDeletionStopsTheBackup) {
  Session session;
  session.BeginBackup({.log = true, .deleteLogs = true});
  session.AcceptFolder();
  session.person.ExpectMessage(64304, app::kRefused).ExpectMessage(65301);
  session.CancelFolder();
  session.LeaveBackup();
  session.Run();
  EXPECT_TRUE(session.disk.Tree("D:\\").empty());
  EXPECT_EQ(session.ChangedHostFiles(), std::vector<std::string>());
}

// Every question of one run, in its order.
TEST(BackupQuestions, ComeInTheirOrder) {
  Session session;
  session.Told().mediaStatuses['D'] = {3, 1, 1, 2};
  session.disk.Write("D:\\Old\\BackupInfo.ini", "old");
  session.BeginBackup({.log = true, .deleteLogs = true});
  session.AcceptFolder("D:\\Old");
  session.person.ExpectMessage(64304, app::kConsented)
      .ExpectMessage(64300, app::kConsented)
      .ExpectMessage(64300, app::kConsented)
      .ExpectMessage(64305, app::kConsented, [&] { session.calls.FailFrom("Drives", "VolumeLabel"); })
      .ExpectMessage(64301, app::kConsented)
      .ExpectMessage(64303, app::kConsented)
      .ExpectMessage(65300);
  session.EndMenu();
  session.Run();
  EXPECT_TRUE(session.disk.IsFile("D:\\Old\\LogData.cab"));
}

// A stopped backup can be started again in the same dialog; nothing of the first try sticks.
TEST(BackupQuestions, SecondTrySucceeds) {
  Session session;
  session.BeginBackup({.report = true});
  session.AcceptFolder();
  session.person.ExpectMessage(64302, app::kRefused).ExpectMessage(65301);
  session.AcceptFolder("D:\\");
  session.person.ExpectMessage(65300);
  session.EndMenu();
  session.Run();
  const std::string descriptor = session.disk.Read("D:\\BackupInfo.ini");
  EXPECT_EQ(descriptor.find("[Info]"), descriptor.rfind("[Info]"));
}

struct MediaCase {
  std::int32_t status;
  std::int32_t message;
};

class MediumRefused : public testing::TestWithParam<MediaCase> {};

TEST_P(MediumRefused, IsShownAndNothingIsWritten) {
  Session session;
  session.Told().mediaStatuses['D'] = {3, GetParam().status};
  session.BeginBackup({.report = true});
  session.AcceptFolder("D:\\");
  session.person.ExpectMessage(GetParam().message).ExpectMessage(65301);
  session.CancelFolder();
  session.LeaveBackup();
  session.Run();
  EXPECT_TRUE(session.disk.Tree("D:\\").empty());
  EXPECT_TRUE(session.IsTemporaryFolderEmpty());
}

INSTANTIATE_TEST_SUITE_P(All, MediumRefused, testing::Values(MediaCase{-1, 63310}, MediaCase{0, 63311}));

TEST(BackupQuestions, AnUnknownMediumStatusIsAskedForAgain) {
  Session session;
  session.Told().mediaStatuses['D'] = {3, 7, 99, 3};
  session.BeginBackup({.report = true});
  session.AcceptFolder("D:\\");
  session.person.ExpectMessage(65300);
  session.EndMenu();
  session.Run();
  for (const std::string& command : session.Told().mediaCommands)
    EXPECT_EQ(command.empty() || command == "dvdram.exe", true);
}

struct PreparationCase {
  const char* type;
  std::vector<std::pair<std::int32_t, std::int32_t>> messages;  ///< after 64305, with their answers
  bool succeeds;
};

// The host says how its media are prepared.
TEST(BackupQuestions, MediaArePreparedInTheHostsWay) {
  const PreparationCase cases[] = {{"APPLICATION", {}, true},
                                   {"STANDARD", {}, true},
                                   {"NONE", {{63380, 0}, {60382, 0}}, false},
                                   {"standard", {}, true}};
  for (const PreparationCase& each : cases) {
    SCOPED_TRACE(each.type);
    Session session;
    session.processes.Install("C:\\Tarsus\\Backup\\dvdram.exe", [](fakes::Disk&, const fakes::Words&) { return 0u; });
    session.qxNetDB.records.back().preparationType = each.type;
    session.Told().mediaStatuses['D'] = {3, 2};
    session.BeginBackup({.report = true});
    session.AcceptFolder("D:\\");
    session.person.ExpectMessage(64305, app::kConsented);
    for (const auto& [id, answer] : each.messages) session.person.ExpectMessage(id, answer);
    if (each.succeeds)
      session.person.ExpectMessage(65300);
    else
      session.CancelBackup();
    session.EndMenu();
    session.Run();
    EXPECT_EQ(session.Told().preparedDrives.size(), each.type == std::string("STANDARD") ? 1u : 0u);
    EXPECT_EQ(session.processes.CountStarted("dvdram.exe"), each.type == std::string("APPLICATION") ? 1 : 0);
  }
}

}  // namespace
}  // namespace flows
