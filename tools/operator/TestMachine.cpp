// Compares the words of the marks.
#include "operator/TestMachine.h"

#include <fstream>
#include <stdexcept>
#include <string>

#include "windows/adapters/Text.h"

namespace endtoend {
namespace {

namespace fs = std::filesystem;

/// Empty where there is no mark.
std::string WordIn(const fs::path& mark) {
  std::string word;
  std::ifstream(mark) >> word;
  return word;
}

std::string MachineWord() {
  wchar_t folder[MAX_PATH] = L"";
  GetSystemWindowsDirectoryW(folder, MAX_PATH);
  return WordIn(fs::path(folder) / kMachineMark);
}

bool IsMarked(fs::path folder, const std::string& word) {
  while (WordIn(folder / kFolderMark) != word) {
    if (folder == folder.root_path()) return false;
    folder = folder.parent_path();
  }
  return true;
}

/// Empty where there is no host.
fs::path HostRoot() {
  wchar_t folder[MAX_PATH] = L"";
  DWORD size = sizeof(folder);
  RegGetValueW(HKEY_LOCAL_MACHINE, kHostKey, L"PathAppl", RRF_RT_REG_SZ, nullptr, folder, &size);
  return folder;
}

[[noreturn]] void Refuse(const std::string& what) {
  throw std::runtime_error(what + " is not marked as made for tests. Nothing of it has been touched");
}

}  // namespace

void RequireTestMachine() {
  if (MachineWord().empty()) Refuse("this machine");
}

void RequireTestHost() {
  RequireTestMachine();
  if (const fs::path root = HostRoot(); !root.empty()) RequireTestFolder(root);
}

void RequireTestFolder(const fs::path& path) {
  RequireTestMachine();
  if (!IsMarked(fs::absolute(path), MachineWord())) Refuse(windows::Utf8(path.wstring()));
}

}  // namespace endtoend
