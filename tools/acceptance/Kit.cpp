#include "acceptance/Kit.h"

#include <algorithm>
#include <chrono>
#include <fstream>
#include <iterator>
#include <map>
#include <stdexcept>
#include <vector>

#include "acceptance/Machine.h"
#include "operator/TestMachine.h"
#include "windows/adapters/Text.h"
#include "windows/adapters/Win32.h"

namespace acceptance {
namespace {

namespace fs = std::filesystem;

struct VirtualDisk {
  wchar_t drive;
  const char* script;  ///< between attaching and assigning the letter
  int megabytes;
};
constexpr VirtualDisk kDisks[] = {{L'E', "format fs=fat32 label=BACKUP quick", 512},
                                  {L'F', "format fs=exfat label=OTHER quick", 512},
                                  {L'V', "format fs=fat quick", 8}};

bool HasDrive(wchar_t letter) {
  return (GetLogicalDrives() >> (letter - L'A') & 1) != 0;
}
std::string DiskFile(const fs::path& work, const VirtualDisk& disk) {
  return windows::Utf8((work / (std::wstring(1, disk.drive) + L".vhd")).wstring());
}
std::string Name(const VirtualDisk& disk) {
  return std::string(1, static_cast<char>(disk.drive)) + ":";
}

std::map<std::string, std::string> FilesBelow(const fs::path& folder) {
  std::map<std::string, std::string> files;
  std::error_code error;
  for (const auto& entry : fs::recursive_directory_iterator(folder, error)) {
    if (!entry.is_regular_file()) continue;
    std::ifstream file(entry.path(), std::ios::binary);
    files[windows::Utf8(entry.path().lexically_relative(folder).wstring())] = {std::istreambuf_iterator<char>(file),
                                                                               {}};
  }
  return files;
}

std::string LastLines(const std::string& text, std::size_t bytes = 2000) {
  return text.size() > bytes ? "...\n" + text.substr(text.size() - bytes) : text;
}

std::wstring Quoted(const fs::path& path) {
  return L"\"" + path.wstring() + L"\"";
}

}  // namespace

Kit::Kit(fs::path folder, const Options& options)
    : folder_(std::move(folder)), work_(folder_ / "work"), options_(options) {
  fs::create_directories(work_ / "temporary");
}

Ran Kit::RunHere(const std::wstring& command, const std::string& log, int minutes) const {
  return Run(command, folder_, work_ / (log + ".log"), std::chrono::minutes(minutes));
}

bool Kit::Check(const std::string& what, const std::wstring& command, std::uint32_t code, int minutes) {
  const Ran ran = RunHere(command, "command", minutes);
  const bool right = ran.code == code;
  const std::string ended = ran.code ? "ended with " + std::to_string(*ran.code) : "did not end";
  report_.Check(what, right, right ? std::string() : ended + "\n" + LastLines(ran.output));
  return right;
}

bool Kit::WriteUndo() {
  std::ofstream detach(work_ / "detach.txt");
  for (const VirtualDisk& disk : kDisks)
    detach << "select vdisk file=\"" << DiskFile(work_, disk) << "\"\r\ndetach vdisk noerr\r\n";
  detach.close();
  std::ofstream undo(folder_ / "undo.cmd");
  undo << "@echo off\r\n"
          "rem Takes back whatever the acceptance kit has done. It may be run more than once.\r\n"
          "if exist \"C:\\Tarsus\\Program\\QXBackupUtility-uninstall.exe\" "
          "\"C:\\Tarsus\\Program\\QXBackupUtility-uninstall.exe\" /S _?=C:\\Tarsus\\Program\r\n"
          "if exist \"C:\\Tarsus\\ReferenceHost-uninstall.exe\" "
          "\"C:\\Tarsus\\ReferenceHost-uninstall.exe\" /S _?=C:\\Tarsus\r\n"
          "if exist C:\\Tarsus\\.test-folder rd /s /q C:\\Tarsus\r\n"
          "reg delete HKLM\\SOFTWARE\\Orvantis\\TARSUS /f /reg:32 >nul 2>&1\r\n"
          "reg delete HKLM\\SOFTWARE\\Orvantis\\TARSUS /f /reg:64 >nul 2>&1\r\n"
          "schtasks /delete /tn QXBackupUtilityQuestion /f >nul 2>&1\r\n"
          "del /f /q \"%SystemRoot%\\.test-machine\" >nul 2>&1\r\n"
          "diskpart /s \"%~dp0work\\detach.txt\" >nul 2>&1\r\n"
          "del /f /q \"%~dp0work\\*.vhd\" >nul 2>&1\r\n"
          "if exist C:\\Tarsus exit /b 1\r\n"
          "if exist \"%SystemRoot%\\.test-machine\" exit /b 1\r\n"
          "exit /b 0\r\n";
  undo.close();
  return undo.good();
}

void Kit::MakeMedia() {
  report_.Begin("Media");
  std::vector<fs::path> marked = {work_};
  for (const VirtualDisk& disk : kDisks) {
    const std::string name = Name(disk);
    if (!HasDrive(disk.drive) && !IsWine()) {
      std::ofstream(work_ / "attach.txt")
          << "create vdisk file=\"" << DiskFile(work_, disk) << "\" maximum=" << disk.megabytes
          << " type=expandable\r\nattach vdisk\r\ncreate partition primary\r\n"
          << disk.script << "\r\nassign letter=" << name[0] << "\r\n";
      Check("a virtual disk for " + name, L"diskpart /s " + Quoted(work_ / "attach.txt"), 0, 10);
    }
    const bool there = HasDrive(disk.drive);
    if (there) marked.emplace_back(name + "\\");
    report_.Add({name, there ? Verdict::Fact : Verdict::NotAnswered, there ? "is there" : "is not there"});
  }
  MarkForTests(marked);
}

void Kit::Ask() {
  report_.Begin("Questions that only Windows can answer");
  SetEnvironmentVariableW(L"QX_SMALL_DRIVE", HasDrive(L'V') ? L"V:" : nullptr);
  const Ran ran = RunHere(Quoted(folder_ / "bin" / "windows_questions.exe"), "questions", 20);
  TellAll(ran, !IsWine());
}

void Kit::TellAll(const Ran& ran, bool counts) {
  const std::vector<Case> cases = CasesIn(ran.output);
  for (const Case& one : cases) Tell(one, counts);
  // A program that died has a case that never ended; one that did not start has none.
  const bool ended = !cases.empty() && cases.back().result != Case::Broken;
  report_.Check("the test program came to its end", ended, ended ? std::string() : LastLines(ran.output));
}

void Kit::Tell(const Case& one, bool counts) {
  static const std::map<Case::Result, Verdict> kVerdicts = {{Case::Passed, Verdict::Right},
                                                            {Case::Failed, Verdict::Wrong},
                                                            {Case::Skipped, Verdict::NotAnswered},
                                                            {Case::Broken, Verdict::Wrong}};
  const std::string words = one.result == Case::Broken ? "the program died in it\n" + one.words : one.words;
  const std::string wines =
      one.result == Case::Passed ? "Wine answers as expected" : "Wine answers otherwise\n" + words;
  report_.Add(counts ? Finding{one.name, kVerdicts.at(one.result), one.result == Case::Passed ? std::string() : words}
                     : Finding{one.name, Verdict::NotAnswered, wines});
}

fs::path Kit::Package(const std::wstring& name) const {
  for (const auto& entry : fs::directory_iterator(folder_ / "packages")) {
    if (entry.path().filename().wstring().starts_with(name)) return entry.path();
  }
  throw std::runtime_error("the kit lacks the package " + windows::Utf8(name));
}

void Kit::Install() {
  report_.Begin("Installing");
  Check("the demonstration installs silently", Quoted(Package(L"ReferenceHost-")) + L" /S");
  Check("the program installs silently", Quoted(Package(L"QXBackupUtility-")) + L" /S");
  Check("the host check finds nothing missing", Quoted(L"C:\\Tarsus\\Program\\QXHostCheck.exe"));
  std::ifstream word(work_ / endtoend::kFolderMark);
  std::ofstream(fs::path(L"C:\\Tarsus") / endtoend::kFolderMark) << word.rdbuf();
}

void Kit::UnpackWithTheSystemsTool() {
  report_.Begin("Cabinets in Windows' own hands");
  const fs::path data = L"C:\\Tarsus\\Data", cabinet = work_ / "data.cab", out = work_ / "data";
  fs::create_directories(out);
  const Ran packed = Run(L"C:\\Tarsus\\Program\\cabarc.exe -r -p n " + Quoted(cabinet) + L" .\\*.*", data,
                         work_ / "pack.log", std::chrono::minutes(5));
  report_.Check("our archiver packs the demonstration's data", packed.code == 0u, LastLines(packed.output));
  const Ran expanded = RunHere(L"expand " + Quoted(cabinet) + L" -F:* " + Quoted(out), "expand");
  const bool whole = expanded.code == 0u && FilesBelow(data) == FilesBelow(out);
  const Verdict verdict = whole ? Verdict::Right : Verdict::Wrong;
  report_.Add(
      {"expand unpacks them, every byte", IsWine() ? Verdict::NotAnswered : verdict, LastLines(expanded.output)});
}

// soak.exe makes a small backup to E:\Soak and restores it.
void Kit::Kill() {
  report_.Begin("Ended in the middle of a backup");
  const std::wstring soak = Quoted(folder_ / "bin" / "soak.exe") + L" 1";
  const auto begun = std::chrono::steady_clock::now();
  if (!Check("a backup and its restore", soak)) return;
  const auto whole = std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() - begun);
  const int moments = std::max(2, 40 / options_.part);
  for (int moment = 1; moment <= moments; ++moment) {
    const auto time = whole * moment / (moments + 1);
    Run(soak, folder_, work_ / "soak.log", time);
    const Ran check = RunHere(Quoted(folder_ / "bin" / "QXSetCheck.exe") + L" E:\\Soak", "set");
    constexpr std::uint32_t kSound = 0, kNotRestorable = 2;
    report_.Check("ended after " + std::to_string(time.count()) + " ms: the older set, the new one, or none",
                  check.code == kSound || check.code == kNotRestorable, check.output);
  }
}

void Kit::RunTests(const std::string& name, const fs::path& program) {
  report_.Begin("Tests: " + name);
  const fs::path temporary = work_ / "temporary" / name;
  fs::create_directories(temporary);
  for (const wchar_t* variable : {L"TEMP", L"TMP"}) SetEnvironmentVariableW(variable, temporary.c_str());
  SetEnvironmentVariableW(L"GTEST_TOTAL_SHARDS", std::to_wstring(options_.part).c_str());
  SetEnvironmentVariableW(L"GTEST_SHARD_INDEX", L"0");
  SetEnvironmentVariableW(L"PACKAGES", (folder_ / "packages").c_str());
  const Ran ran = RunHere(Quoted(folder_ / program), name, 60);
  SetEnvironmentVariableW(L"GTEST_TOTAL_SHARDS", nullptr);
  TellAll(ran, true);
  report_.Check("the test program ends with all cases passed", ran.code == 0u, LastLines(ran.output));
}

void Kit::Undo() {
  report_.Begin("Undone");
  Check("everything is taken back", L"CMD /C " + Quoted(folder_ / "undo.cmd"), 0, 10);
}

void Kit::ListForAPerson() {
  report_.Begin("For a person");
  for (const char* what :
       {"a real memory stick: pulled while the set is copied; formatted by the program; full",
        "a USB floppy drive: a set over several disks, a wrong disk, a disk pulled too early",
        "the shell's format dialog on a stick: done, cancelled, refused",
        "the folder browser: opens at the folder in the text box, with the keyboard too",
        "a screen reader: reads names of controls, messages and how far a job is",
        "scaling of 200 %, and a window moved between screens of different scaling", "a remote desktop session",
        "two people by fast user switching: the second one is told that the program runs",
        "shutting down while a job runs: Windows shows the reason", "the lid closed, or sleep, while a job runs"})
    report_.Add({what, Verdict::NotAnswered, {}});
}

}  // namespace acceptance
