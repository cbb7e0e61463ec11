// Reads, disturbs and tidies the workstation.
#include "operator/Workstation.h"

#include <tlhelp32.h>

#include <array>
#include <fstream>
#include <iterator>
#include <stdexcept>

#include "operator/Window.h"

namespace endtoend {
namespace {

constexpr std::size_t kTimeStampLength = 21;  // "[yyyy/mm/dd hh:mm:ss]"

/// Deletes what lies in a marked folder, but for the mark. Wine keeps a medium's label in a file on it.
void Empty(const fs::path& folder) {
  std::error_code ignored;
  for (const auto& entry : fs::directory_iterator(folder, ignored)) {
    const fs::path name = entry.path().filename();
    if (name != kFolderMark && name != L".windows-label") fs::remove_all(entry.path(), ignored);
  }
}

std::vector<DWORD> ProcessesOf(const std::wstring& executable) {
  std::vector<DWORD> found;
  HANDLE snapshot = CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0);
  PROCESSENTRY32W entry{};
  entry.dwSize = sizeof(entry);
  for (BOOL more = Process32FirstW(snapshot, &entry); more; more = Process32NextW(snapshot, &entry))
    if (executable == entry.szExeFile) found.push_back(entry.th32ProcessID);
  CloseHandle(snapshot);
  return found;
}

}  // namespace

std::string ReadBytes(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

void WriteBytes(const fs::path& path, const std::string& bytes) {
  std::ofstream(path, std::ios::binary) << bytes;
}

std::vector<std::string> LogLines() {
  std::vector<std::string> lines;
  std::ifstream file(kTarsus / "Log" / "BackupUtility.log");
  for (std::string line; std::getline(file, line);)
    lines.push_back(line.size() > kTimeStampLength ? line.substr(kTimeStampLength + 1) : line);
  return lines;
}

Fault Altered(const fs::path& path, const std::optional<std::string>& contents) {
  RequireTestFolder(path);
  const fs::path aside = path.native() + L".aside";
  fs::rename(path, aside);
  if (contents) WriteBytes(path, *contents);
  return Fault(nullptr, [=](void*) {
    std::error_code ignored;
    fs::remove(path, ignored);
    fs::rename(aside, path, ignored);
  });
}

Fault WithoutValue(const std::wstring& key, const std::wstring& name) {
  RequireTestMachine();
  std::array<BYTE, 1024> data;
  DWORD type = 0, size = data.size();
  if (RegGetValueW(HKEY_LOCAL_MACHINE, key.c_str(), name.c_str(), RRF_RT_ANY, &type, data.data(), &size))
    throw std::runtime_error("no registry value " + Utf8(name));
  RegDeleteKeyValueW(HKEY_LOCAL_MACHINE, key.c_str(), name.c_str());
  return Fault(nullptr,
               [=](void*) { RegSetKeyValueW(HKEY_LOCAL_MACHINE, key.c_str(), name.c_str(), type, data.data(), size); });
}

std::string Replaced(std::string text, const std::string& from, const std::string& to) {
  for (std::size_t at = 0; (at = text.find(from, at)) != std::string::npos; at += to.size())
    text.replace(at, from.size(), to);
  return text;
}

std::map<std::string, std::string> Snapshot(const fs::path& folder) {
  std::map<std::string, std::string> files;
  for (const auto& entry : fs::recursive_directory_iterator(folder))
    if (entry.is_regular_file())
      files[Utf8(entry.path().lexically_relative(folder).wstring())] = ReadBytes(entry.path());
  return files;
}

bool IsRunning(const std::wstring& executable) {
  return !ProcessesOf(executable).empty();
}

void EndAll(const std::wstring& executable) {
  RequireTestMachine();
  WaitUntil([&] {
    for (const DWORD id : ProcessesOf(executable)) {
      HANDLE process = OpenProcess(PROCESS_TERMINATE, FALSE, id);
      TerminateProcess(process, 1);
      CloseHandle(process);
    }
    return !IsRunning(executable);
  });
}

void TidyUp() {
  std::vector<fs::path> folders = {fs::temp_directory_path()};
  std::error_code ignored;
  for (const fs::path& folder : {kMedium, kForeignMedium})
    if (fs::exists(folder, ignored)) folders.push_back(folder);
  // All of them before the first change.
  RequireTestHost();
  for (const fs::path& folder : folders) RequireTestFolder(folder);
  for (const wchar_t* executable : {L"QXBackupUtility.exe", L"Tarsus.exe"}) EndAll(executable);
  for (const fs::path& folder : folders) Empty(folder);
  for (const char* own : {"BackupUtility.log", "BackupUtilityJobs.csv"}) fs::remove(kTarsus / "Log" / own, ignored);
}

}  // namespace endtoend
