// The operator of `./run --unattended`: backs up, restores onto damaged data and
// makes two maintenance bundles through the program's windows, or restores from a
// pile of floppies; prints each step and leaves a screenshot of each window.
//
//   operator.exe SCREENSHOT_FOLDER [PILE_OF_DISKS NUMBER_OF_DISKS]

#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <stdexcept>
#include <string>

#include "operator/Desktop.h"
#include "operator/Operator.h"
#include "resource.h"

namespace {

using namespace endtoend;
using enum base::MessageId;

void Require(bool condition, const std::string& what) {
  if (!condition) throw std::runtime_error(what);
}

void Say(const std::string& text) {
  std::printf("     %s\n", text.c_str());
}

/// Backs everything up and returns the folder of the set.
std::string MakeBackup(Operator& person) {
  const Window destination = person.StartBackup(person.OpenBackup({true, true, true, true}));
  const std::string folder = destination.Text(ID_frmSelectFolder_txtFolder);
  person.Accept(destination);
  person.ConsentUntil(BackupComplete, {AskMakeBackupFolder});
  return folder;
}

/// What a bad day leaves: files gone, files altered, a folder gone.
void DamageData() {
  RequireTestHost();
  fs::remove_all(kTarsus / "Data" / "Report");
  fs::remove_all(kTarsus / "Data" / "Patient" / "P000007");
  fs::remove(kTarsus / "Data" / "Explanation" / L"撮影 手順.htm");
  WriteBytes(kTarsus / "Data" / "Menu" / "Standard.mnu", "damaged");
  for (const auto& entry : fs::directory_iterator(kTarsus / "Data" / "Image.ddo" / "001")) fs::remove(entry.path());
  Say("Patients, images, menus and reports of the workstation are altered and deleted");
}

/// Damages the data, lets `restore` put it back, and compares.
void ProveRestore(Operator& person, const std::function<void()>& restore) {
  const auto before = Snapshot(kTarsus / "Data");
  DamageData();
  Require(Snapshot(kTarsus / "Data") != before, "nothing was damaged");
  restore();
  person.MainMenu();
  const auto after = Snapshot(kTarsus / "Data");
  Require(after == before, "the restored data is not the original data");
  Say("All " + std::to_string(after.size()) + " files of the workstation's data are byte for byte as before");
}

void RestoreFolder(Operator& person, const std::string& set) {
  ProveRestore(person, [&] {
    person.OpenRestore(set).Press(ID_frmRestore_cmdStart);
    person.ConsentUntil(RestoreComplete, {AskReplaceIPCounter});
  });
}

/// Puts another disk into drive A: the drive is a link of Wine's to a folder.
void InsertDisk(const std::string& pile, int number) {
  RunNative("ln -sfn '" + pile + "/" + std::to_string(number) + "' \"$WINEPREFIX/dosdevices/a:\"");
  const fs::path descriptor = L"A:\\BackupInfo.ini";
  Require(WaitUntil([&] {
            return ReadBytes(descriptor).find("FDNumber=" + std::to_string(number) + "\r") != std::string::npos;
          }),
          "disk " + std::to_string(number) + " does not appear in drive A");
}

/// Restores from the pile of disks, and takes a wrong one once.
void RestoreFloppies(Operator& person, const std::string& pile, int disks) {
  ProveRestore(person, [&] {
    InsertDisk(pile, 1);
    person.OpenRestore("A:\\").Press(ID_frmRestore_cmdStart);
    int inserted = 1;
    bool wrongDiskTried = false;
    for (auto id = None; id != RestoreComplete;) {
      id = person.NextMessage();
      if (id == AskNextSourceDisk && !wrongDiskTried) {
        InsertDisk(pile, disks);
        wrongDiskTried = true;
      } else if (id == AskNextSourceDisk || id == AskRightDisk) {
        InsertDisk(pile, ++inserted);
      }
      Require(id == AskReplaceIPCounter || id == AskNextSourceDisk || id == AskRightDisk || id == RestoreComplete,
              "message " + std::to_string(static_cast<int>(id)));
      person.Answer();
    }
    Require(inserted == disks, "not every disk was asked for");
  });
}

void MakeMaintenanceLog(Operator& person, bool protect, const std::string& folder) {
  person.Accept(person.CollectMaintenanceLog(protect, 30), folder);
  person.ConsentUntil(MaintenanceComplete, {AskMakeMaintenanceFolder});
  Require(fs::exists(folder + "MAINTENANCE.cab"), "there is no " + folder + "MAINTENANCE.cab");
}

void LookAtPastJobs(Operator& person) {
  const Window dialog = person.OpenPastJobs();
  const std::string list = ReadBytes(kTarsus / "Log" / "BackupUtilityJobs.csv");
  Require(std::ranges::count(list, '\n') == 5, "the heading and four jobs should be listed:\n" + list);
  Say("The last backup, restore and maintenance logs are listed, each with what was saved where");
  dialog.Press(ID_frmJobs_cmdClose);
  person.MainMenu();
}

void End(Operator& person) {
  person.End(false);
  Require(LogLines().back().ends_with("Finish Backup Utility and Start Tarsus"), "the log does not end as it should");
  Require(WaitUntil([] { return IsRunning(L"Tarsus.exe"); }), "the host application was not started");
  Say("The program has ended and started the host application");
  EndAll(L"Tarsus.exe");
}

}  // namespace

int wmain(int argc, wchar_t** argv) {
  if (argc != 2 && argc != 4) {
    std::puts("usage: operator SCREENSHOT_FOLDER [PILE_OF_DISKS NUMBER_OF_DISKS]");
    return 2;
  }
  std::setvbuf(stdout, nullptr, _IONBF, 0);
  const std::string folder = Utf8(argv[1]);
  int step = argc == 2 ? 0 : 50;
  try {
    MoveMouseAway();
    Operator person([&](const std::string& text, const Window& window) {
      std::printf("%3d  %s\n", ++step, text.c_str());
      char name[16];
      std::snprintf(name, sizeof(name), "/%02d.png", step);
      TakeScreenshot(folder + name, window, Part::Screen);
    });
    person.SignIn();
    if (argc == 4) {
      RestoreFloppies(person, Utf8(argv[2]), std::stoi(argv[3]));
    } else {
      RestoreFolder(person, MakeBackup(person));
      MakeMaintenanceLog(person, true, "E:\\Protected\\");
      MakeMaintenanceLog(person, false, "E:\\Unprotected\\");
      LookAtPastJobs(person);
    }
    End(person);
  } catch (const std::exception& error) {
    std::printf("!!   %s\n", error.what());
    return 1;
  }
  return 0;
}
