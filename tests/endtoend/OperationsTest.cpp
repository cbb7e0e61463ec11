// Backups and restores that are refused or go wrong, through the real dialogs and on real media.
// The demonstration of ./run does the ones that go well, with every category, and compares every byte.

#include <cstdlib>

#include "EndToEndTest.h"
#include "operator/Desktop.h"

namespace endtoend {
namespace {

using Operations = EndToEndTest;

std::vector<std::string> FilesIn(const fs::path& folder) {
  std::vector<std::string> names;
  for (const auto& [name, bytes] : Snapshot(folder)) names.push_back(name);
  return names;
}

bool IsTemporaryFolderEmpty() {
  return fs::is_empty(fs::temp_directory_path());
}

TEST_F(Operations, AForeignMediumAndAnOlderSetAreAskedAbout) {
  const fs::path foreignSet = kForeignMedium / "Set";
  fs::create_directory(foreignSet);
  WriteBytes(foreignSet / "BackupInfo.ini", "older set");
  Operator person;
  person.SignIn();
  const Window destination = person.StartBackup(person.OpenBackup({.report = true}));
  EXPECT_TRUE(destination.Text(ID_frmSelectFolder_txtFolder).starts_with("E:\\20"));
  EXPECT_NE(destination.Text(ID_frmSelectFolder_txtCapacity).find("MB / "), std::string::npos);
  person.Accept(person.DestinationDialog(), "Q:\\Set\\");
  EXPECT_EQ(person.Answer(), BackupDriveUnusable);
  EXPECT_EQ(person.Answer(), BackupStopped);

  person.Accept(person.DestinationDialog(), "F:\\Set\\");
  EXPECT_EQ(person.Answer(), AskForeignLabel);
  EXPECT_EQ(person.Answer(Answer::Refuse), AskOverwriteBackup);
  EXPECT_EQ(person.Answer(), BackupStopped);
  EXPECT_EQ(ReadBytes(foreignSet / "BackupInfo.ini"), "older set");

  person.Accept(person.DestinationDialog());
  EXPECT_EQ(person.Answer(), AskForeignLabel);
  EXPECT_EQ(person.Answer(), AskOverwriteBackup);
  EXPECT_EQ(person.Answer(), BackupComplete);
  person.End();
  EXPECT_EQ(FilesIn(foreignSet), (std::vector<std::string>{"BackupInfo.ini", "ReportData.cab"}));
  const std::string info = ReadBytes(foreignSet / "BackupInfo.ini");
  EXPECT_TRUE(info.starts_with("[Info]\r\nAppVersion=3.00\r\nDate=")) << info;
  EXPECT_TRUE(info.ends_with("\r\n\r\n[VersionInfo]\r\nReportData=V1.2\r\n\r\n")) << info;
  EXPECT_TRUE(IsTemporaryFolderEmpty());
}

/// The medium of E: is out, and one lies in the drive that can be read and is not formatted. Wine has no program that
/// formats; while this lasts, there is one (format-stand-in).
Fault UnformattedMedium() {
  const std::string drive = "\"$WINEPREFIX/dosdevices/e:\"", device = "\"$WINEPREFIX/dosdevices/e::\"";
  wchar_t self[MAX_PATH] = L"", system[MAX_PATH] = L"";
  GetModuleFileNameW(nullptr, self, MAX_PATH);
  GetSystemDirectoryW(system, MAX_PATH);
  const fs::path formatter = fs::path(system) / "format.com";
  fs::copy_file(fs::path(self).replace_filename("format-stand-in.exe"), formatter,
                fs::copy_options::overwrite_existing);
  RunNative(
      "rm -rf \"$WINEPREFIX.blank\"*; truncate -s 1440K \"$WINEPREFIX.blank.device\"; ln -sfn \"$WINEPREFIX.blank\" " +
      drive + "; ln -sfn \"$WINEPREFIX.blank.device\" " + device);
  EXPECT_TRUE(WaitUntil([] { return !fs::exists(kMedium); }));
  return Fault(nullptr, [=](void*) {
    RunNative("rm -rf \"$WINEPREFIX.blank\"* " + device + "; ln -sfn \"$WINEPREFIX.medium\" " + drive);
    WaitUntil([] { return fs::exists(kMedium / kFolderMark); });  // which the formatted one has not
    fs::remove(formatter);
  });
}

TEST_F(Operations, AnUnformattedMediumIsPreparedOnceTheOperatorConsents) {
  const Fault unformatted = UnformattedMedium();
  Operator person;
  person.SignIn();
  const Window destination = person.StartBackup(person.OpenBackup({.report = true}));
  EXPECT_TRUE(destination.Text(ID_frmSelectFolder_txtCapacity).ends_with("MB / -MB"));
  person.Accept(destination, "E:\\Set\\");
  EXPECT_EQ(person.Answer(Answer::Refuse), AskPrepareBackupMedium);
  EXPECT_EQ(person.Answer(), BackupStopped);
  EXPECT_FALSE(fs::exists(kMedium));

  person.Accept(person.DestinationDialog());
  EXPECT_EQ(person.Answer(), AskPrepareBackupMedium);
  // Wine goes on telling the label that it has found first.
  person.ConsentUntil(BackupComplete, {AskForeignLabel, AskMakeBackupFolder});
  person.End();
  EXPECT_EQ(ReadBytes(kMedium / ".windows-label"), "BACKUP\n");
  EXPECT_EQ(FilesIn(kMedium / "Set"), (std::vector<std::string>{"BackupInfo.ini", "ReportData.cab"}));
  EXPECT_EQ(ReadBytes("Z:" + std::string(std::getenv("WINEPREFIX")) + ".blank.formatted"), "E: /V:TARSUS /Q /Y\n");
}

TEST_F(Operations, DamagedArchivesTouchNothing) {
  const std::string set = "E:\\Set\\";
  const auto before = Snapshot(kTarsus / "Data");
  Operator person;
  person.SignIn();
  person.Accept(person.StartBackup(person.OpenBackup({.report = true})), set);
  person.ConsentUntil(BackupComplete, {AskMakeBackupFolder});

  const std::string whole = ReadBytes(set + "ReportData.cab");
  std::string flipped = whole;
  flipped[flipped.size() / 2] = static_cast<char>(flipped[flipped.size() / 2] ^ 1);
  for (const std::string& bytes : {whole.substr(0, whole.size() / 2), std::string(), flipped}) {
    SCOPED_TRACE(bytes.size());
    const Fault damage = Altered(set + "ReportData.cab", bytes);
    person.OpenRestore(set).Press(ID_frmRestore_cmdStart);
    EXPECT_EQ(person.Answer(), RestoreFailed);
    person.DestinationDialog().Press(ID_frmSelectFolder_cmdCancel);
    person.MainMenu();
    EXPECT_TRUE(Snapshot(kTarsus / "Data") == before);
    EXPECT_TRUE(IsTemporaryFolderEmpty());
  }
  person.End();
}

/// Waits until the keyboard works on a control of the window.
bool HasKeyboard(const Window& window, int control) {
  return WaitUntil([&] { return GetForegroundWindow() == window.Handle() && window.HasFocus(control); });
}

// The second Enter of a hasty hand was meant for the dialog before. Once the restore has ended, the menu has the
// keyboard again, though messages were shown over a dialog that took no input.
TEST_F(Operations, ASecondEnterBeginsNoRestore) {
  Operator person;
  const Window menu = person.SignIn();
  person.Accept(person.StartBackup(person.OpenBackup({.report = true})), "E:\\Set\\");
  person.ConsentUntil(BackupComplete, {AskMakeBackupFolder});
  person.MainMenu().Press(ID_frmMainMenu_cmdMenu1);
  const Window source = person.DestinationDialog();
  source.Type(ID_frmSelectFolder_txtFolder, "E:\\");
  ASSERT_TRUE(HasKeyboard(source, ID_frmSelectFolder_txtFolder));
  PressKey(VK_RETURN);
  EXPECT_EQ(person.Answer(), NoDescriptor);
  ASSERT_TRUE(HasKeyboard(source, ID_frmSelectFolder_txtFolder));
  EXPECT_TRUE(WaitUntil([&] { return source.Text(ID_frmSelectFolder_txtFolder) == "E:\\Set\\"; })) << "the newest set";

  PressKey(VK_RETURN);
  Sleep(350);
  PressKey(VK_RETURN);
  const Window restore = person.TheProgram().WaitForDialog(ID_frmRestore_cmdStart);
  Sleep(1500);
  EXPECT_TRUE(restore.IsOpen() && restore.IsEnabled(ID_frmRestore_cmdStart));
  EXPECT_EQ(ReadBytes(kTarsus / "Log" / "BackupUtility.log").find("Start Restore"), std::string::npos);
  PressKey(VK_RETURN);
  EXPECT_EQ(person.Answer(), RestoreComplete);
  EXPECT_TRUE(HasKeyboard(menu, ID_frmMainMenu_cmdMenu1));
  person.End();
}

/// What a client workstation drops: an archive with one folder, which the host's archiver has made.
void DropClientArchive(const std::string& client, int day) {
  const std::string name = "Maintenance_" + client + "_2611" + std::to_string(day) + "080000";
  const fs::path made = fs::temp_directory_path() / "client";
  fs::create_directories(made / name / "Log");
  WriteBytes(made / name / "Log" / "Station.log", client + " on day " + std::to_string(day));
  const std::string pack =
      "C:\\Tarsus\\Program\\cabarc.exe -r -p n C:\\Tarsus\\Update\\" + name + ".cab .\\" + name + "\\*.*";
  EXPECT_EQ(Program("cmd /c cd /d \"" + Utf8(made.wstring()) + "\" && " + pack).WaitForEnd(), 0U);
  fs::remove_all(made);
}

TEST_F(Operations, DroppedClientLogsAreUnpackedPrunedAndSaved) {
  const fs::path clientLogs = kTarsus / "ClientLog";
  const Fault number = WithoutValue(kHostKey, L"ClientLogBackupNumber");
  const DWORD keep = 2;
  RegSetKeyValueW(HKEY_LOCAL_MACHINE, kHostKey, L"ClientLogBackupNumber", REG_DWORD, &keep, sizeof keep);
  for (const int day : {11, 13, 12}) DropClientArchive("XRAY1", day);
  DropClientArchive("XRAY2", 10);

  Operator person;
  person.SignIn();
  person.Accept(person.StartBackup(person.OpenBackup({.log = true})), "E:\\Set\\");
  person.ConsentUntil(BackupComplete, {AskMakeBackupFolder});
  person.End();

  const std::map<std::string, std::string> expected = {
      {"Maintenance_XRAY1_261112080000\\Log\\Station.log", "XRAY1 on day 12"},
      {"Maintenance_XRAY1_261113080000\\Log\\Station.log", "XRAY1 on day 13"},
      {"Maintenance_XRAY2_261110080000\\Log\\Station.log", "XRAY2 on day 10"}};
  EXPECT_EQ(Snapshot(clientLogs), expected);
  EXPECT_TRUE(fs::is_empty(kTarsus / "Update"));
  const fs::path unpacked = fs::temp_directory_path() / "unpacked";
  fs::create_directory(unpacked);
  const std::string unpack = "C:\\Tarsus\\Program\\cabarc.exe -r -p X E:\\Set\\LogData.cab";
  EXPECT_EQ(Program("cmd /c cd /d \"" + Utf8(unpacked.wstring()) + "\" && " + unpack).WaitForEnd(), 0U);
  EXPECT_EQ(Snapshot(unpacked / "ClientLog"), expected);
  for (const auto& entry : fs::directory_iterator(clientLogs)) fs::remove_all(entry.path());
}

TEST_F(Operations, TheEventLogsExportTellsNothingOfPatients) {
  const fs::path log = kTarsus / "Log" / "Acquisition.log", system = kTarsus / "System";
  const Fault written = Altered(log, "image of O'Neill, Anna stored\r\n");
  EXPECT_EQ(Program("C:\\Tarsus\\System\\BackupEventLog.exe").WaitForEnd(), 0U);
  for (const char* name : {"System.evt", "Application.evt"}) {
    const std::string exported = ReadBytes(system / name);
    EXPECT_FALSE(exported.empty()) << name;
    EXPECT_EQ(exported.find("O'Neill"), std::string::npos) << name;
    fs::remove(system / name);
  }
}

}  // namespace
}  // namespace endtoend
