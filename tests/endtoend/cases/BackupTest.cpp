// Backups through the real dialogs, and what goes wrong on the way.

#include <algorithm>
#include <optional>

#include "cases/EndToEndTest.h"

namespace endtoend {
namespace {

const fs::path kSystem = kTarsus / "System";
constexpr char kSet[] = "E:\\Set\\";

class Backup : public EndToEndTest {
 protected:
  void SetUp() override {
    EndToEndTest::SetUp();
    data_ = Snapshot(kTarsus / "Data");
    person_.emplace().SignIn();
  }

  void TearDown() override {
    EXPECT_TRUE(Snapshot(kTarsus / "Data") == data_) << "the source data has changed";
    person_.reset();
    EndToEndTest::TearDown();
  }

  /// Gathers `categories` and presses OK for the folder E:\Set\.
  void BackUp(const Categories& categories) {
    person_->Accept(person_->StartBackup(person_->OpenBackup(categories)), kSet);
  }

  /// Leaves the destination and the backup dialog and ends the program.
  void LeaveDialogs() {
    person_->DestinationDialog().Press(ID_frmSelectFolder_cmdCancel);
    person_->TheProgram().WaitForDialog(ID_frmBackup_cmdCancel).Press(ID_frmBackup_cmdCancel);
    person_->End();
    ExpectNoStaging();
  }

  static void ExpectNoStaging() {
    EXPECT_TRUE(fs::is_empty(fs::temp_directory_path())) << "something is left in the temporary folder";
  }

  static std::vector<std::string> FilesIn(const fs::path& folder) {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(folder)) names.push_back(entry.path().filename().string());
    std::ranges::sort(names);
    return names;
  }

  std::optional<Operator> person_;
  std::vector<std::pair<std::string, std::string>> data_;
};

TEST_F(Backup, EachCategoryWritesItsArchivesAndDescriptor) {
  const struct {
    Categories categories;
    std::vector<std::string> files;
    std::string versions;
  } sets[] = {
      {{.patient = true}, {"BackupInfo.ini", "PatientData.cab"}, "PatientData=V2.1\r\n"},
      {{.system = true},
       {"BackupInfo.ini", "ExplanationData.cab", "MenuData.cab", "ReportSetData.cab", "SystemData.cab", "UserData.cab"},
       "MenuData=V2.1\r\nSystemData=V3.0\r\nUserData=V2.0\r\nExplanationData=V1.4\r\nReportSetData=V1.2\r\n"},
      {{.log = true}, {"BackupInfo.ini", "LogData.cab"}, "IPCounter=V1.0\r\n"},
      {{.report = true}, {"BackupInfo.ini", "ReportData.cab"}, "ReportData=V1.2\r\n"},
  };
  for (const auto& set : sets) {
    SCOPED_TRACE(set.files[1]);
    BackUp(set.categories);
    EXPECT_EQ(person_->Answer(), 64302);  // the folder does not exist yet
    EXPECT_EQ(person_->Answer(), 65300);
    EXPECT_EQ(FilesIn(kSet), set.files);
    const std::string info = ReadBytes(fs::path(kSet) / "BackupInfo.ini");
    EXPECT_TRUE(info.starts_with("[Info]\r\nAppVersion=3.00\r\nDate=")) << info;
    EXPECT_TRUE(info.ends_with("\r\n\r\n[VersionInfo]\r\n" + set.versions + "\r\n")) << info;
    person_->MainMenu();
    ExpectNoStaging();
    fs::remove_all(kSet);
  }
  person_->End();
}

TEST_F(Backup, QuestionsOfTheCopyCanBeRefusedAndConsented) {
  const std::string foreignSet = "F:\\Set\\";
  fs::create_directory(foreignSet);
  WriteBytes(foreignSet + "BackupInfo.ini", "older set");
  person_->StartBackup(person_->OpenBackup({.report = true}));

  const auto refuse = [&](const std::string& folder, int question, std::vector<int> consented) {
    SCOPED_TRACE(question);
    person_->Accept(person_->DestinationDialog(), folder);
    for (int id : consented) EXPECT_EQ(person_->Answer(Answer::Consent), id);
    EXPECT_EQ(person_->Answer(Answer::Refuse), question);
    EXPECT_EQ(person_->Answer(), 65301);
    EXPECT_EQ(ReadBytes(foreignSet + "BackupInfo.ini"), "older set");
  };
  refuse(foreignSet, 64301, {});
  refuse("F:\\New\\", 64302, {64301});
  EXPECT_FALSE(fs::exists("F:\\New"));
  refuse(foreignSet, 64303, {64301});

  person_->Accept(person_->DestinationDialog(), foreignSet);
  EXPECT_EQ(person_->Answer(), 64301);
  EXPECT_EQ(person_->Answer(), 64303);
  EXPECT_EQ(person_->Answer(), 65300);
  EXPECT_EQ(FilesIn(foreignSet), (std::vector<std::string>{"BackupInfo.ini", "ReportData.cab"}));
  person_->End();
  ExpectNoStaging();
}

TEST_F(Backup, LogDeletionIsAskedForAndDone) {
  const auto logs = Snapshot(kTarsus / "Log");
  BackUp({.log = true, .deleteLogs = true});
  EXPECT_EQ(person_->Answer(Answer::Refuse), 64304);
  EXPECT_EQ(person_->Answer(), 65301);
  EXPECT_TRUE(fs::exists(kTarsus / "Log" / "Archive" / "Acquisition 2025.log"));

  person_->Accept(person_->DestinationDialog(), kSet);
  EXPECT_EQ(person_->Answer(), 64304);
  EXPECT_EQ(person_->Answer(), 64302);
  EXPECT_EQ(person_->Answer(), 65300);
  person_->MainMenu();
  EXPECT_FALSE(fs::exists(kTarsus / "Log" / "Archive" / "Acquisition 2025.log"));
  EXPECT_FALSE(fs::exists(kTarsus / "Log" / "Printer.old"));
  person_->End();
  for (const auto& [name, bytes] : logs) {
    if (!name.ends_with("BackupUtility.log")) WriteBytes(kTarsus / "Log" / fs::path(Utf16(name)), bytes);
  }
}

TEST_F(Backup, MediumThatIsNotReady) {
  const struct {
    const char* folder;
    int message;
  } destinations[] = {{"Q:\\Set\\", 63311}, {"nowhere", 63310}};
  person_->StartBackup(person_->OpenBackup({.report = true}));
  for (const auto& tried : destinations) {
    SCOPED_TRACE(tried.folder);
    person_->Accept(person_->DestinationDialog(), tried.folder);
    EXPECT_EQ(person_->Answer(), tried.message);
    EXPECT_EQ(person_->Answer(), 65301);
  }
  LeaveDialogs();
}

TEST_F(Backup, BrokenJobFilesGetTheirMessage) {
  const fs::path list = kSystem / "BackupList.ini";
  const fs::path version = kSystem / "BackupVersion.ini";
  const auto gatheringFails = [&](int message, std::vector<int> before = {}) {
    person_->OpenBackup({.report = true}).Press(ID_frmBackup_cmdStart);
    for (int id : before) EXPECT_EQ(person_->Answer(), id);
    EXPECT_EQ(person_->Answer(), message);
    const Window dialog = person_->TheProgram().WaitForDialog(ID_frmBackup_cmdCancel);
    EXPECT_TRUE(WaitUntil([&] { return dialog.IsEnabled(ID_frmBackup_cmdCancel); }));
    dialog.Press(ID_frmBackup_cmdCancel);
  };
  {
    SCOPED_TRACE("no job file: nothing to back up");
    const Missing missing(list);
    gatheringFails(60371);
  }
  {
    SCOPED_TRACE("no section");
    const Altered altered(list, Replaced(ReadBytes(list), "[REPORT_BACKUP]", "[REPORT_BACKUP] "));
    gatheringFails(60370);
  }
  {
    SCOPED_TRACE("unknown variable");
    const Altered altered(list, Replaced(ReadBytes(list), "Folder=Data\\Report\r\n\r\n[REPORTSET_BACKUP]",
                                         "Folder=%Nowhere%\\Report\r\n\r\n[REPORTSET_BACKUP]"));
    gatheringFails(60371, {60326});
  }
  {
    SCOPED_TRACE("no archiver");
    const Missing archiver(kTarsus / "Program" / "cabarc.exe");
    const Missing systemArchiver("C:\\windows\\system32\\cabarc.exe");
    gatheringFails(60371);
  }
  {
    SCOPED_TRACE("no version for the category");
    const Altered altered(version, Replaced(ReadBytes(version), "ReportData=", "OtherData="));
    BackUp({.report = true});
    EXPECT_EQ(person_->Answer(), 64302);
    EXPECT_EQ(person_->Answer(), 60372);
    person_->TheProgram().WaitForDialog(ID_frmBackup_cmdCancel).Press(ID_frmBackup_cmdCancel);
  }
  person_->End();
  ExpectNoStaging();
}

TEST_F(Backup, TheDialogStartsOnlyWithACategory) {
  const Window dialog = person_->OpenBackup({});
  EXPECT_FALSE(dialog.IsEnabled(ID_frmBackup_cmdStart));
  EXPECT_FALSE(dialog.IsEnabled(ID_frmBackup_chkDeleteLog));
  dialog.Tick(ID_frmBackup_chkLogData);
  EXPECT_TRUE(dialog.IsEnabled(ID_frmBackup_cmdStart));
  EXPECT_TRUE(dialog.IsEnabled(ID_frmBackup_chkDeleteLog));
  dialog.Press(ID_frmBackup_cmdCancel);
  person_->End();
}

TEST_F(Backup, TheSpaceTextFollowsTheChosenDrive) {
  const Window dialog = person_->StartBackup(person_->OpenBackup({.report = true}));
  const std::string space = dialog.Text(ID_frmSelectFolder_txtCapacity);
  EXPECT_NE(space.find("MB / "), std::string::npos) << space;
  EXPECT_TRUE(dialog.Text(ID_frmSelectFolder_txtFolder).starts_with("E:\\20"));
  LeaveDialogs();
}

}  // namespace
}  // namespace endtoend
