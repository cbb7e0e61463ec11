// The search for programs: words of a command line, folders, endings.
#include "windows/adapters/ProgramSearch.h"

#include <algorithm>
#include <ranges>
#include <string_view>
#include <vector>

#include "windows/adapters/ApiPath.h"
#include "windows/adapters/Win32.h"

namespace windows {
namespace {

using Folders = std::vector<std::wstring>;

constexpr std::wstring_view kPathMarks = L"\\:";

/// Calls of the system that fill a buffer and answer the length, or the length that they need.
template <class Call>
std::wstring TextOf(Call call) {
  std::wstring text(call(nullptr, 0), L'\0');
  text.resize(std::min<std::size_t>(call(text.data(), static_cast<DWORD>(text.size())), text.size()));
  return text;
}

std::wstring WithSeparator(std::wstring folder) {
  if (!folder.ends_with(L'\\')) folder += L'\\';
  return folder;
}

std::wstring SystemFolder() {
  return WithSeparator(TextOf([](wchar_t* text, DWORD size) { return GetSystemDirectoryW(text, size); }));
}

bool IsAbsolute(const std::wstring& folder) {
  return folder.starts_with(L"\\\\") || (folder.size() > 2 && folder[1] == L':' && folder[2] == L'\\');
}

/// The folders of PATH. An empty one, "." and the like would be the current folder by another name.
void AddPath(Folders& folders) {
  const std::wstring path =
      TextOf([](wchar_t* text, DWORD size) { return GetEnvironmentVariableW(L"PATH", text, size); });
  std::wstring folder;
  bool quoted = false;
  const auto add = [&] {
    if (IsAbsolute(folder)) folders.push_back(WithSeparator(folder));
    folder.clear();
  };
  for (const wchar_t character : path) {
    if (character == L'"') {
      quoted = !quoted;
    } else if (character == L';' && !quoted) {
      add();
    } else {
      folder += character;
    }
  }
  add();
}

Folders ProgramFolders() {
  Folders folders{
      ProgramFolder(), SystemFolder(),
      WithSeparator(TextOf([](wchar_t* text, DWORD size) { return GetSystemWindowsDirectoryW(text, size); }))};
  AddPath(folders);
  return folders;
}

Folders CurrentFolder() {
  return {WithSeparator(TextOf([](wchar_t* text, DWORD size) { return GetCurrentDirectoryW(size, text); }))};
}

bool IsFile(const std::wstring& path) {
  const DWORD attributes = GetFileAttributesW(path.c_str());
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
}

bool EndsWith(const std::wstring& path, std::wstring_view ending) {
  return path.size() >= ending.size() && _wcsicmp(path.c_str() + path.size() - ending.size(), ending.data()) == 0;
}

bool IsBatchFile(const std::wstring& path) {
  return EndsWith(path, L".bat") || EndsWith(path, L".cmd");
}

/// The file of that name, which may lack the ending; empty when there is none.
std::wstring WithEnding(const std::wstring& path) {
  const bool hasEnding = path.find(L'.', path.find_last_of(L'\\') + 1) != std::wstring::npos;
  if (hasEnding) return IsFile(path) ? path : std::wstring();
  for (const wchar_t* ending : {L".exe", L".com", L".bat", L".cmd"})
    if (IsFile(path + ending)) return path + ending;
  return {};
}

std::wstring FindIn(const Folders& folders, const std::wstring& name) {
  for (const std::wstring& folder : folders) {
    std::wstring file = WithEnding(folder + name);
    if (!file.empty()) return file;
  }
  return {};
}

std::wstring FullPathOf(const std::wstring& path) {
  return TextOf([&path](wchar_t* text, DWORD size) { return GetFullPathNameW(path.c_str(), size, text, nullptr); });
}

/// A command line, cut behind its program.
struct Cut {
  std::wstring name;
  std::wstring_view arguments;
};

/// The places where a command line may be cut. Without quotes that is each blank: "C:\Program Files\x.exe /a" may mean
/// any of three programs.
std::vector<Cut> CutsOf(std::wstring_view line) {
  line.remove_prefix(std::min(line.find_first_not_of(L" \t"), line.size()));
  if (line.starts_with(L'"')) {
    const std::size_t end = std::min(line.find(L'"', 1), line.size());
    return {{std::wstring(line.substr(1, end - 1)), line.substr(std::min(end + 1, line.size()))}};
  }
  std::vector<Cut> cuts;
  const std::size_t end = std::min({line.find(L'"'), line.size(), std::size_t{MAX_PATH}});
  for (std::size_t blank = 0; blank < end; ++blank) {
    blank = std::min(line.find_first_of(L" \t", blank), line.size());
    if (blank > 0 && blank <= end) cuts.push_back({std::wstring(line.substr(0, blank)), line.substr(blank)});
  }
  return cuts;
}

/// Makes "program" full paths of the cuts in turn, until one is a file's; returns that cut.
const Cut* FindFirst(const std::vector<Cut>& cuts, const Folders& folders, std::wstring& program) {
  for (const Cut& cut : cuts) {
    if (cut.name.find_first_of(kPathMarks) != std::wstring::npos) return nullptr;  // arguments begin
    program = FindIn(folders, cut.name);
    if (!program.empty()) return &cut;
  }
  return nullptr;
}

/// The longest path that is a file's: of "C:\Program Files\x.exe /a" nobody may put a "C:\Program.exe" in front.
const Cut* FindPath(const std::vector<Cut>& cuts, std::wstring& program) {
  for (const Cut& cut : std::views::reverse(cuts)) {
    program = WithEnding(FullPathOf(cut.name));
    if (!program.empty()) return &cut;
  }
  return nullptr;
}

}  // namespace

Starting FindProgram(const std::wstring& commandLine, host::Where where) {
  const std::vector<Cut> cuts = CutsOf(commandLine);
  if (cuts.empty() || cuts.front().name.empty()) return {};
  std::wstring program;
  const Cut* cut = nullptr;
  if (cuts.front().name.find_first_of(kPathMarks) != std::wstring::npos) {
    cut = FindPath(cuts, program);
  } else {
    if (where == host::Where::CurrentFolder) cut = FindFirst(cuts, CurrentFolder(), program);
    if (cut == nullptr) cut = FindFirst(cuts, ProgramFolders(), program);
  }
  if (cut == nullptr) return {};
  const std::wstring interpreter = SystemFolder() + L"cmd.exe";
  if (!IsBatchFile(program)) return {program, commandLine, EndsWith(program, L"\\cmd.exe")};
  // With /S the interpreter takes off the outer quotes and nothing else.
  const std::wstring batch = L"\"" + program + L"\"" + std::wstring(cut->arguments);
  return {interpreter, L"cmd.exe /S /C \"" + batch + L"\"", false};
}

}  // namespace windows
