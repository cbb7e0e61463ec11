// Start-up in its order, and the way out.
#include "app/StartUp.h"

#include <functional>

#include "app/Messages.h"
#include "unit/app/Fixture.h"

namespace {

using StartUpTest = AppTest;

/// Signs a user in, or not, and notes what was shown.
class Dialogs : public app::StartUpDialogs {
 public:
  explicit Dialogs(bool signIn) : signIn_(signIn) {}
  std::string shown;
  void ShowSignIn(app::Application& application) override {
    shown += "sign-in ";
    application.state.SignedIn = signIn_;
    application.state.ExitMode = app::kEndQuietly;
  }
  void ShowMainMenu(app::Application&) override { shown += "menu "; }

 private:
  bool signIn_;
};

TEST_F(StartUpTest, WithoutInstallationThereIsOnePlainMessage) {
  Dialogs dialogs(true);
  host.person.ExpectPlainMessage("Not Exist Directory.ini. Please Reinstall Tarsus System.")
      .ExpectPlainMessage("Not Exist Directory.ini. Please Reinstall Tarsus System.");
  host.disk.Remove("C:\\Tarsus\\System\\Directory.ini");
  app::Main(application, dialogs);
  host.qx32.texts.erase("PathAppl");
  app::Main(application, dialogs);
  EXPECT_EQ(dialogs.shown, "");
  EXPECT_FALSE(host.disk.IsFile(fakes::kLogFile));
  EXPECT_EQ(host.catalogue.state, fakes::FakeCatalogue::State::Never);
}

TEST_F(StartUpTest, HelpOpensTheManualOrTheLogSaysThatItCannot) {
  Dialogs dialogs(false);
  app::Main(application, dialogs);
  host.toolkit.HelpRequested();
  EXPECT_EQ(host.shell.openedDocument, "QXBackupUtility.html");
  EXPECT_EQ(host.disk.Read(fakes::kLogFile).find("Warning"), std::string::npos);
  host.calls.FailFrom("Shell", "OpenDocument");
  host.toolkit.HelpRequested();
  EXPECT_TRUE(host.disk.Read(fakes::kLogFile).ends_with("Manual not opened : QXBackupUtility.html\r\n"));
  EXPECT_TRUE(host.person.Messages().empty());
}

// Each failure is tried with all later ones in place too, so that the order shows.
TEST(StartUpOrder, TheFirstFailureIsShownAndHalts) {
  const struct {
    std::int32_t id;
    std::function<void(fakes::FakeHost&)> arrange;
  } faults[] = {
      {60326, [](auto& host) { host.qx32.pathTable.erase("SysMasterDB"); }},
      {60321, [](auto& host) { host.calls.FailFrom("QX32lib", "SysDBConnect"); }},
      {60325, [](auto& host) { host.calls.FailFrom("QX32lib", "SysDBReadszValue"); }},
      {60321, [](auto& host) { host.calls.FailFrom("QX32lib", "SysDBClose"); }},
      // The log has read its folder once before.
      {60326, [](auto& host) { host.calls.FailFrom("QX32", "GetString", 2, "Log"); }},
      {60322, [](auto& host) { host.qx32.numbers.erase("BackupUtility\\ColorTextR"); }},
      {60326, [](auto& host) { host.qx32.pathTable.erase("LangStrDB"); }},
      {60320, [](auto& host) { host.catalogue.tableName = "T_OTHER"; }},
      {60316, [](auto& host) { host.processes.previousInstance = true; }},
      {60314, [](auto& host) { host.processes.running.push_back("QXUserUtility.exe"); }},
      {60326, [](auto& host) { host.qx32.pathTable.erase("UserFolder"); }},
  };
  for (std::size_t first = 0; first < std::size(faults); ++first) {
    Workstation station;
    for (std::size_t i = first; i < std::size(faults); ++i) faults[i].arrange(station.host);
    station.host.person.ExpectMessage(faults[first].id);
    Dialogs dialogs(true);
    EXPECT_THROW(app::Main(station.application, dialogs), fakes::ProcessEnded) << first;
    EXPECT_EQ(dialogs.shown, "") << first;
    EXPECT_EQ(station.host.Told().logLines, (std::vector<std::string>{"Start Backup Utility", "Halt Backup Utility"}));
    EXPECT_TRUE(station.host.processes.started.empty()) << first;
  }
}

TEST_F(StartUpTest, FillsTheState) {
  host.qx32.pathTable["LangStrDB"] = "Data Source=ü";
  application.state.PendingMessageId = 1;
  Dialogs dialogs(true);
  app::Main(application, dialogs);
  EXPECT_EQ(dialogs.shown, "sign-in menu ");
  EXPECT_EQ(host.catalogue.connection, "Data Source=ü" + std::string(243, ' '));  // 256 characters
  const app::State& state = application.state;
  EXPECT_EQ(state.StartupDirectory, fakes::kProgramFolder);
  EXPECT_EQ(state.MsgTableName, "T_MESSAGE");
  EXPECT_EQ(state.ApplicationRootFolder + state.SystemFolder + state.UserFolder,
            "C:\\Tarsus\\C:\\Tarsus\\System\\C:\\Tarsus\\User\\");
  EXPECT_EQ(state.HostName + state.SoftwareVersion, "WS-RADIOLOGY-13.00");
  EXPECT_EQ(state.CategoryNames[0] + state.CategoryNames[8] + state.CategoryNames[9], "Patient dataReport data");
  EXPECT_EQ(state.PhaseWords[1] + state.SignInOutWords[1] + state.ProgramTitle, "EndSign-outBackup");
  EXPECT_EQ(state.PendingMessageId, 0);
}

TEST_F(StartUpTest, ALongConnectionIsCutAndNobodySignedInSeesNoMenu) {
  host.qx32.pathTable["LangStrDB"] = std::string(300, 'x');
  Dialogs dialogs(false);
  app::Main(application, dialogs);
  EXPECT_EQ(host.catalogue.connection, std::string(256, 'x'));
  EXPECT_EQ(dialogs.shown, "sign-in ");
  EXPECT_TRUE(host.Told().auditRecords.empty());
}

TEST_F(StartUpTest, ExclusiveRun) {
  const struct {
    std::int32_t id;
    bool previous;
    std::vector<std::string> running;
  } rows[] = {
      {0, false, {"System", "QXBackupUtility.exe"}},
      {60314, false, {"QXServiceUtility.exe", "QXUserUtility.exe"}},
      {60316, true, {"QXUserUtility.exe"}},
      {60315, false, {"ScheduledBackupTool.exe", "QXServiceUtility.exe"}},
      {61603, false, {"ScheduledBackupTool.exe"}},
      {60315, false, {"QXServiceUtilit"}},  // 15 characters are all that count
      {60315, false, {"QXServiceUtility2.com"}},
      {0, false, {"QXServiceUtili"}},
      {0, false, {"qxserviceutility.exe"}},
  };
  for (const auto& row : rows) {
    host.processes.previousInstance = row.previous;
    host.processes.running = row.running;
    EXPECT_EQ(app::CheckExclusiveRun(application), row.id) << row.running.front();
  }
  host.messageLoop.yields = 0;
  host.processes.running = {"a", "b", "c", "d"};
  EXPECT_TRUE(app::IsProcessRunning(application, "c"));
  EXPECT_EQ(host.messageLoop.yields, 3);
}

class FinishTest : public CatalogueTest {
 public:
  FinishTest() {
    application.state.SignedIn = true;
    application.state.UserId = "U001";
    application.state.SignInOutWords = {"Sign-in", "Sign-out"};
    application.state.StartupDirectory = fakes::kProgramFolder;
    application.state.SystemFolder = fakes::kSystemFolder;
    application.appearance.ApplicationName = "Tarsus.exe";
    app::CreateMessageDialog(application);
    host.disk.SetCurrentFolder("D:\\");
    host.toolkit.pointer = forms::Pointer::Hourglass;
  }
};

TEST_F(FinishTest, RestartsTheHostApplication) {
  app::FinishApplication(application, app::kEndAndRestartHost);
  ASSERT_EQ(host.processes.started.size(), 1u);
  EXPECT_EQ(host.processes.started[0].commandLine, "C:\\Tarsus\\System\\\\Tarsus.exe /a");
  EXPECT_EQ(host.processes.started[0].currentFolder, fakes::kProgramFolder);
  EXPECT_EQ(host.processes.started[0].style, host::WindowStyle::Normal);
  EXPECT_FALSE(host.processes.started[0].waitedFor);
  EXPECT_EQ(host.Told().logLines, (std::vector<std::string>{"Current Directory : C:\\Tarsus\\Backup",
                                                            "Finish Backup Utility and Start Tarsus"}));
  EXPECT_EQ(host.Told().auditRecords, std::vector<std::string>{"U001|Sign-out|"});
  EXPECT_EQ(host.catalogue.state, fakes::FakeCatalogue::State::Closed);
  EXPECT_EQ(host.toolkit.pointer, forms::Pointer::Default);
  EXPECT_EQ(application.messageDialog, nullptr);
}

TEST_F(FinishTest, AnyOtherModeEndsQuietly) {
  for (const std::int16_t mode : {std::int16_t{1}, std::int16_t{2}, std::int16_t{-2}}) {
    app::FinishApplication(application, mode);
    EXPECT_EQ(host.Told().logLines, std::vector<std::string>{"Finish Backup Utility"});
    host.Told().logLines.clear();
  }
  EXPECT_TRUE(host.processes.started.empty());
}

TEST_F(FinishTest, FailuresOnTheWayOutAreShownAndDoNotStopIt) {
  host.Told().auditAnswer = 7;
  host.disk.Remove("C:\\Tarsus\\System\\Tarsus.exe");
  host.person.ExpectMessage(60501).ExpectMessage(60260).ExpectMessage(60501);
  app::FinishApplication(application, app::kEndAndRestartHost);
  EXPECT_TRUE(host.components.Logged("Finish Backup Utility and Start Tarsus"));
  EXPECT_THROW(app::FinishApplication(application, app::kHalt), fakes::ProcessEnded);
}

TEST_F(FinishTest, HaltAbandonsTheCatalogueAndLeavesTheFolderAlone) {
  EXPECT_THROW(app::FinishApplication(application, app::kHalt), fakes::ProcessEnded);
  EXPECT_EQ(host.catalogue.state, fakes::FakeCatalogue::State::Abandoned);
  EXPECT_EQ(host.disk.Read(fakes::kLogFile), "[2012/03/15 09:30:12] [Error]       Halt Backup Utility\r\n");
  EXPECT_EQ(host.Told().auditRecords.size(), 1u);
  EXPECT_EQ(host.disk.CurrentFolder(), "D:\\");
  EXPECT_TRUE(host.processes.started.empty());
}

}  // namespace
