#include "operator/Workstation.h"

#include <tlhelp32.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <stdexcept>

#include "operator/Window.h"

namespace endtoend {
namespace {

constexpr wchar_t kHostKey[] = L"SOFTWARE\\Orvantis\\TARSUS";
constexpr std::size_t kTimeStampLength = 21;  // "[yyyy/mm/dd hh:mm:ss]"

template <typename Action>
void ForEachProcess(const std::wstring& executable, Action action) {
  HANDLE snapshot = CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0);
  PROCESSENTRY32W entry{};
  entry.dwSize = sizeof(entry);
  for (BOOL more = Process32FirstW(snapshot, &entry); more; more = Process32NextW(snapshot, &entry)) {
    if (executable == entry.szExeFile) action(entry.th32ProcessID);
  }
  CloseHandle(snapshot);
}

}  // namespace

std::string ReadBytes(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

void WriteBytes(const fs::path& path, const std::string& bytes) {
  std::ofstream(path, std::ios::binary).write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

std::vector<std::string> LogLines() {
  std::vector<std::string> lines;
  std::ifstream file(kTarsus / "Log" / "BackupUtility.log");
  for (std::string line; std::getline(file, line);) {
    if (line.ends_with('\r')) line.pop_back();
    lines.push_back(line.size() > kTimeStampLength ? line.substr(kTimeStampLength + 1) : line);
  }
  return lines;
}

bool LogHolds(const std::string& text) {
  return std::ranges::any_of(LogLines(), [&](const std::string& line) { return line.ends_with(text); });
}

Missing::Missing(fs::path path) : path_(std::move(path)), aside_(path_.native() + L".aside") {
  fs::rename(path_, aside_);
}

Missing::~Missing() {
  std::error_code ignored;
  fs::rename(aside_, path_, ignored);
}

Altered::Altered(fs::path path, const std::string& contents) : path_(std::move(path)), before_(ReadBytes(path_)) {
  WriteBytes(path_, contents);
}

MissingRegistryValue::MissingRegistryValue(std::wstring key, std::wstring name)
    : key_(kHostKey + (key.empty() ? key : L"\\" + key)), name_(std::move(name)), data_(1024) {
  auto size = static_cast<DWORD>(data_.size());
  if (RegGetValueW(HKEY_LOCAL_MACHINE, key_.c_str(), name_.c_str(), RRF_RT_ANY, &type_, data_.data(), &size))
    throw std::runtime_error("no registry value " + Utf8(name_));
  data_.resize(size);
  RegDeleteKeyValueW(HKEY_LOCAL_MACHINE, key_.c_str(), name_.c_str());
}

MissingRegistryValue::~MissingRegistryValue() {
  RegSetKeyValueW(HKEY_LOCAL_MACHINE, key_.c_str(), name_.c_str(), type_, data_.data(),
                  static_cast<DWORD>(data_.size()));
}

std::string Replaced(std::string text, const std::string& from, const std::string& to) {
  for (std::size_t at = 0; (at = text.find(from, at)) != std::string::npos; at += to.size()) {
    text.replace(at, from.size(), to);
  }
  return text;
}

std::vector<std::pair<std::string, std::string>> Snapshot(const fs::path& folder) {
  std::vector<std::pair<std::string, std::string>> files;
  for (const auto& entry : fs::recursive_directory_iterator(folder)) {
    if (entry.is_regular_file())
      files.emplace_back(Utf8(entry.path().lexically_relative(folder).wstring()), ReadBytes(entry.path()));
  }
  std::ranges::sort(files);
  return files;
}

bool IsRunning(const std::wstring& executable) {
  bool found = false;
  ForEachProcess(executable, [&](DWORD) { found = true; });
  return found;
}

void EndAll(const std::wstring& executable) {
  WaitUntil([&] {
    ForEachProcess(executable, [](DWORD id) {
      HANDLE process = OpenProcess(PROCESS_TERMINATE, FALSE, id);
      TerminateProcess(process, 1);
      CloseHandle(process);
    });
    return !IsRunning(executable);
  });
}

void TidyUp() {
  for (const wchar_t* executable : {L"QXBackupUtility.exe", L"Tarsus.exe"}) EndAll(executable);
  std::error_code ignored;
  for (const auto& folder : {kMedium, kForeignMedium, fs::temp_directory_path()}) {
    for (const auto& entry : fs::directory_iterator(folder, ignored)) {
      // Wine keeps a medium's label in a file on it.
      if (entry.path().filename() != ".windows-label") fs::remove_all(entry.path(), ignored);
    }
  }
  fs::remove(kTarsus / "Log" / "BackupUtility.log", ignored);
}

}  // namespace endtoend
