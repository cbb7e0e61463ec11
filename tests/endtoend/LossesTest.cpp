// What cannot be read, packed, written or put back, on the real program: the rest is done, the loss is told, and
// nothing is deleted or given up for a set that lacks something.

#include <algorithm>
#include <iterator>

#include "EndToEndTest.h"

namespace endtoend {
namespace {

using Files = std::map<std::string, std::string>;

const fs::path kLogs = kTarsus / "Log";
const fs::path kData = kTarsus / "Data";
const std::vector<std::string> kNone;

/// Another program has the file open and lets nobody else in.
Fault HeldOpen(const fs::path& path) {
  const HANDLE file = CreateFileW(path.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
  EXPECT_NE(file, INVALID_HANDLE_VALUE) << path;
  return Fault(nullptr, [=](void*) { CloseHandle(file); });
}

/// A file of the host's that was not there.
Fault Added(const fs::path& path, const std::string& bytes) {
  const fs::path folder = path.parent_path();
  const bool newFolder = fs::create_directories(folder);
  WriteBytes(path, bytes);
  EXPECT_EQ(ReadBytes(path), bytes) << path;
  return Fault(nullptr, [=](void*) { fs::remove_all(newFolder ? folder : path); });
}

/// Undoes what is done to the contents of a folder's files.
Fault Kept(const fs::path& folder) {
  return Fault(nullptr, [=, files = Snapshot(folder)](void*) {
    for (const auto& [path, bytes] : files) {
      SetFileAttributesW((folder / path).c_str(), FILE_ATTRIBUTE_NORMAL);
      WriteBytes(folder / path, bytes);
    }
  });
}

/// The host's job file says something else in one place.
Fault JobsWith(const std::string& from, const std::string& to) {
  const fs::path jobs = kTarsus / "System" / "BackupList.ini";
  const std::string before = ReadBytes(jobs);
  EXPECT_NE(before.find(from), std::string::npos) << from;
  return Altered(jobs, Replaced(before, from, to));
}

/// The logs but for the program's own and its list of jobs, which go on all the time.
Files LogsBut(Files logs) {
  logs.erase("BackupUtility.log");
  logs.erase("BackupUtilityJobs.csv");
  return logs;
}

/// What is in an archive. It is unpacked on the medium, where paths are short.
Files Unpacked(const std::string& archive) {
  const fs::path folder = kMedium / fs::path(archive).stem();
  fs::create_directory(folder);
  const std::string unpack = "C:\\Tarsus\\Program\\cabarc.exe -r -p X \"" + archive + "\"";
  EXPECT_EQ(Program("cmd /c cd /d \"" + Utf8(folder.wstring()) + "\" && " + unpack).WaitForEnd(), 0U);
  return Snapshot(folder);
}

/// Folders, each with its files, as they lie in one archive.
Files Joined(const std::map<std::string, Files>& folders) {
  Files joined;
  for (const auto& [folder, files] : folders)
    for (const auto& [path, bytes] : files) joined[folder + "\\" + path] = bytes;
  return joined;
}
/// Paths of the files that are not the same in both.
std::vector<std::string> Differences(const Files& left, const Files& right) {
  Files different;
  std::ranges::set_symmetric_difference(left, right, std::inserter(different, different.end()));
  std::vector<std::string> paths;
  for (const auto& [path, bytes] : different) paths.push_back(path + ", " + std::to_string(bytes.size()) + " bytes");
  return paths;
}

Files Below(const std::string& folder, const Files& files) {
  Files below;
  for (const auto& [path, bytes] : files)
    if (path.starts_with(folder + "\\")) below[path] = bytes;
  return below;
}

class Losses : public EndToEndTest {
 protected:
  /// The next message is `id`, and tells of so many warnings.
  static void ExpectWarnings(Operator& person, base::MessageId id, int warnings) {
    const std::string text = person.TheProgram().WaitForMessageWindow().Text(TARSUS_MESSAGE_TEXT);
    EXPECT_NE(text.find(": " + std::to_string(warnings) + "."), std::string::npos) << text;
    EXPECT_EQ(person.Answer(), id);
  }
  /// What was gathered has gone with the program.
  static void ExpectNothingLeft() {
    for (const auto& entry : fs::recursive_directory_iterator(fs::temp_directory_path())) ADD_FAILURE() << entry.path();
  }
  /// A warning of the log has these words.
  static void ExpectNamed(const std::string& words) {
    const std::vector<std::string> lines = LogLines();
    EXPECT_TRUE(std::ranges::any_of(lines, [&](const std::string& line) {
      return line.starts_with("[Warning]") && line.find(words) != std::string::npos;
    })) << words;
  }
};

TEST_F(Losses, WhatCannotBeReadIsNamedAndNoLogIsDeleted) {
  // One patient and one folder of images are enough.
  const fs::path patient = kData / "Patient" / "P000001", images = kData / "Image.ddo" / "000";
  const Fault fewer =
      JobsWith("Folder=Data\\Patient;Data\\Image.ddo", "Folder=Data\\Patient\\P000001;Data\\Image.ddo\\000");
  // xcopy passes over both without a word. Only older Wines hide it for its dot alone.
  const Fault hidden = Added(patient / ".remarks", "none");
  SetFileAttributesW((patient / ".remarks").c_str(), FILE_ATTRIBUTE_HIDDEN);
  EXPECT_TRUE(GetFileAttributesW((patient / ".remarks").c_str()) & FILE_ATTRIBUTE_HIDDEN);
  constexpr std::size_t kLongest = 258;
  std::wstring deep = (images / std::wstring(110, L'd')).wstring() + L"\\";
  deep.append(kLongest - deep.size(), L'e');
  const Fault longPath = Added(deep, "image");
  const Fault oldLog = Added(kLogs / "Printer.old", "of last week");
  Files expected = Joined({{"P000001", Snapshot(patient)}, {"000", Snapshot(images)}});
  const std::string inUse = "P000001_00000.ddo";
  const Files logs = LogsBut(Snapshot(kLogs));
  Operator person;
  person.SignIn();
  const Window dialog = person.OpenBackup({.patient = true, .log = true});
  dialog.Tick(ID_frmBackup_chkDeleteLog);
  {
    const Fault heldLog = HeldOpen(kLogs / "Network.log"), heldImage = HeldOpen(images / inUse);
    person.Accept(person.StartBackup(dialog), "E:\\Set\\");
    EXPECT_EQ(person.Answer(), AskDeleteLogs);
    EXPECT_EQ(person.Answer(), AskMakeBackupFolder);
    ExpectWarnings(person, BackupWarnings, 2);
    EXPECT_EQ(person.Answer(), BackupComplete);
    EXPECT_EQ(person.Answer(), LogsNotDeleted);
    person.MainMenu();
  }
  EXPECT_EQ(Differences(LogsBut(Snapshot(kLogs)), logs), kNone);
  person.End();
  ExpectNothingLeft();
  ExpectNamed("Log\\Network.log");
  ExpectNamed("000\\" + inUse);
  EXPECT_EQ(expected.erase("000\\" + inUse), 1U);
  const Files patientData = Unpacked("E:\\Set\\PatientData.cab");
  EXPECT_EQ(Differences(Below("P000001", patientData), Below("P000001", expected)), kNone);
  EXPECT_EQ(Differences(Below("000", patientData), Below("000", expected)), kNone);
  expected = Joined({{"Log", logs}});
  EXPECT_EQ(expected.erase("Log\\Network.log"), 1U);
  Files savedLogs = Below("Log", Unpacked("E:\\Set\\LogData.cab"));
  EXPECT_EQ(savedLogs.erase("Log\\BackupUtility.log"), 1U);
  EXPECT_EQ(Differences(savedLogs, expected), kNone);
}

TEST_F(Losses, AnArchiverThatIsWrongDeletesNothing) {
  const fs::path archiver = kTarsus / "Program" / "cabarc.exe", flaw = kTarsus / "Program" / "cabarc.flaw";
  wchar_t self[MAX_PATH] = L"";
  GetModuleFileNameW(nullptr, self, MAX_PATH);
  const Fault wrong = Altered(archiver, ReadBytes(fs::path(self).replace_filename("archiver-stand-in.exe")));
  const Fault oldLog = Added(kLogs / "Printer.old", "of last week");
  const Fault olderSet = Added(kMedium / "Set" / "BackupInfo.ini", "older set");
  const Files logs = LogsBut(Snapshot(kLogs)), medium = Snapshot(kMedium);
  Operator person;
  person.SignIn();
  const Window dialog = person.OpenBackup({.log = true});
  dialog.Tick(ID_frmBackup_chkDeleteLog);
  for (const char* how : {"nothing", "half"}) {
    SCOPED_TRACE(how);
    const Fault flawed = Added(flaw, how);
    person.TheProgram().WaitForDialog(ID_frmBackup_chkDeleteLog).Press(ID_frmBackup_cmdStart);
    EXPECT_EQ(person.Answer(), BackupNotGathered);
  }
  person.TheProgram().WaitForDialog(ID_frmBackup_chkDeleteLog).Press(ID_frmBackup_cmdCancel);
  person.MainMenu();
  EXPECT_EQ(Differences(LogsBut(Snapshot(kLogs)), logs), kNone);
  person.End();
  ExpectNamed("LogData.cab was not made");
  EXPECT_EQ(Differences(Snapshot(kMedium), medium), kNone);
}

/// What is typed as a destination, once the program has gathered what it will write.
std::vector<std::string> ImpossibleFolders() {
  std::string workFolder;
  for (const auto& entry : fs::directory_iterator(fs::temp_directory_path()))
    if (entry.is_directory()) workFolder = Utf8(entry.path().wstring());
  EXPECT_NE(workFolder, "");
  return {"", "E:\\100%\\", workFolder + "\\a\\b\\"};
}

TEST_F(Losses, AFolderThatCannotBeLeavesTheChoiceAndWhatCannotBePutBackIsNamed) {
  const fs::path reports = kData / "Report";
  const std::string set = "E:\\Year\\Month\\Day\\";
  const std::string item = "[REPORT_RESTORE]\r\nFolder=Data\\Report";
  const Fault noSuchParent = JobsWith(item, item + ";Data\\Gone\\Report");
  const Fault kept = Kept(reports);
  const Files saved = Snapshot(reports);
  ASSERT_GT(saved.size(), 2U);
  Operator person;
  person.SignIn();
  person.StartBackup(person.OpenBackup({.report = true}));
  for (const std::string& impossible : ImpossibleFolders()) {
    SCOPED_TRACE(impossible);
    person.DestinationDialog().Type(ID_frmSelectFolder_txtFolder, impossible);
    person.Accept(person.DestinationDialog());
    EXPECT_EQ(person.Answer(), BackupFolderNotMade);
    EXPECT_EQ(person.Answer(), BackupStopped);
  }
  person.Accept(person.DestinationDialog(), set);
  EXPECT_EQ(person.Answer(), AskMakeBackupFolder);
  EXPECT_EQ(person.Answer(), BackupComplete);

  Files expected = saved;
  for (const auto& [name, bytes] : saved) WriteBytes(reports / name, "damaged");
  const std::string held = saved.begin()->first, readOnly = saved.rbegin()->first;
  expected[held] = "damaged";
  SetFileAttributesW((reports / readOnly).c_str(), FILE_ATTRIBUTE_READONLY);
  {
    const Fault inUse = HeldOpen(reports / held);
    person.OpenRestore(set).Press(ID_frmRestore_cmdStart);
    ExpectWarnings(person, RestoreWarnings, 2);
    EXPECT_EQ(person.Answer(), RestoreComplete);
    person.End();
  }
  ExpectNothingLeft();
  ExpectNamed("Report\\" + held);
  ExpectNamed("no such folder: C:\\Tarsus\\Data\\Gone\\");
  EXPECT_EQ(Differences(Snapshot(reports), expected), kNone);
}

// A ";" too many takes nothing more; two files of one name, an empty folder and a read-only mark; and a set that is
// exchanged behind the restore dialog.
TEST_F(Losses, WhatAJobFileOrAMediumMayHoldIsToldAndChangesNothingElse) {
  const fs::path reports = kData / "Report";
  const std::string backup = "[REPORT_BACKUP]\r\nFolder=Data\\Report";
  const Fault jobs = JobsWith(backup,
                              "[REPORT_BACKUP]\r\nCommonFile=%System%\\BackupVersion.ini;C:\\Tarsus\\Other\\"
                              "BackupVersion.ini\r\nFolder=Data\\Report;;");
  const Fault other = Added(kTarsus / "Other" / "BackupVersion.ini", "another file of that name");
  const Fault kept = Kept(reports);
  fs::create_directory(reports / "Empty");
  const std::string marked = Snapshot(reports).begin()->first;
  SetFileAttributesW((reports / marked).c_str(), FILE_ATTRIBUTE_READONLY);
  const Files saved = Snapshot(reports);
  Operator person;
  person.SignIn();
  person.StartBackup(person.OpenBackup({.report = true}));
  person.Accept(person.DestinationDialog(), "E:\\Set\\");
  EXPECT_EQ(person.Answer(), AskMakeBackupFolder);
  ExpectWarnings(person, BackupWarnings, 1);
  EXPECT_EQ(person.Answer(), BackupComplete);
  Files expected = Joined({{"Report", saved}});
  expected["BackupVersion.ini"] = "another file of that name";
  EXPECT_EQ(Differences(Unpacked("E:\\Set\\ReportData.cab"), expected), kNone);

  const fs::path descriptor = kMedium / "Set" / "BackupInfo.ini";
  Window dialog = person.OpenRestore("E:\\Set\\");
  const std::string shown = ReadBytes(descriptor);
  WriteBytes(descriptor, Replaced(shown, "Date=", "Date=of another day "));
  dialog.Press(ID_frmRestore_cmdStart);
  EXPECT_EQ(person.Answer(), RestoreFailed);
  WriteBytes(descriptor, shown);
  SetFileAttributesW((reports / marked).c_str(), FILE_ATTRIBUTE_NORMAL);
  for (const auto& [name, bytes] : saved) WriteBytes(reports / name, "damaged");
  person.Accept(person.DestinationDialog());
  person.TheProgram().WaitForDialog(ID_frmRestore_cmdStart).Press(ID_frmRestore_cmdStart);
  EXPECT_EQ(person.Answer(), RestoreComplete);
  person.End();
  ExpectNothingLeft();
  ExpectNamed("Two of one name meet in the archive");
  EXPECT_EQ(Differences(Snapshot(reports), saved), kNone);
  EXPECT_NE(GetFileAttributesW((reports / marked).c_str()) & FILE_ATTRIBUTE_READONLY, 0U);
  fs::remove(reports / "Empty");
}

TEST_F(Losses, WhatAKilledRunHasLeftGoesAtTheNextStart) {
  {
    Operator person;
    person.SignIn();
    person.StartBackup(person.OpenBackup({.report = true}));
    person.DestinationDialog();
    EXPECT_FALSE(fs::is_empty(fs::temp_directory_path()));
    EXPECT_EQ(Program("taskkill /f /im QXBackupUtility.exe").WaitForEnd(), 0U);
    person.TheProgram().WaitForEnd();
  }
  Operator person;
  person.SignIn();
  ExpectNothingLeft();
  person.End();
}

}  // namespace
}  // namespace endtoend
