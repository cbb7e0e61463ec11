// Finds the listed patients in texts and file names, and takes lines out of texts.
#include "components/PatientList.h"

#include <windows.h>

#include <algorithm>

#include "common/Database.h"
#include "windows/adapters/Text.h"

namespace components {
namespace {

std::wstring LowerCase(std::wstring_view text) {
  std::wstring lower(text);
  CharLowerBuffW(lower.data(), static_cast<DWORD>(lower.size()));
  return lower;
}

bool IsWordAt(std::wstring_view text, std::size_t begin, std::size_t length) {
  const bool startsWord = begin == 0 || !IsCharAlphaNumericW(text[begin - 1]);
  const bool endsWord = begin + length == text.size() || !IsCharAlphaNumericW(text[begin + length]);
  return startsWord && endsWord;
}

// Whole words only: the ID "12" must not take away every line with a time of day in it.
bool Holds(std::wstring_view text, const std::wstring& wanted) {
  for (std::size_t at = text.find(wanted); at != std::wstring_view::npos; at = text.find(wanted, at + 1)) {
    if (IsWordAt(text, at, wanted.size())) return true;
  }
  return false;
}

constexpr std::string_view kUtf16Mark = "\xFF\xFE";

bool IsUtf8(std::string_view bytes) {
  return bytes.empty() ||
         MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, bytes.data(), static_cast<int>(bytes.size()), nullptr, 0);
}

// Takes the first line with its line end off `text`.
template <typename Text>
Text TakeLine(Text& text, typename Text::value_type lineEnd) {
  const std::size_t end = text.find(lineEnd);
  const Text line = text.substr(0, end == Text::npos ? end : end + 1);
  text.remove_prefix(line.size());
  return line;
}

std::string FilterUtf16(std::string_view bytes, const std::function<bool(std::wstring_view)>& isUnwanted) {
  std::wstring wide(bytes.size() / sizeof(wchar_t), L'\0');
  bytes.copy(reinterpret_cast<char*>(wide.data()), wide.size() * sizeof(wchar_t));
  std::string kept;
  for (std::wstring_view rest = wide; !rest.empty();) {
    const std::wstring_view line = TakeLine(rest, L'\n');
    if (isUnwanted(line)) continue;
    kept.append(reinterpret_cast<const char*>(line.data()), line.size() * sizeof(wchar_t));
  }
  return kept;
}

}  // namespace

std::optional<PatientList> PatientList::Read(const std::string& database) {
  const bool isConnection = database.find('=') != std::string::npos;
  const auto connection = reference::Database::Open(isConnection ? database : "DRIVER=SQLite3;Database=" + database);
  if (!connection) return std::nullopt;
  const auto rows = connection->Run("SELECT PATIENT_ID, PATIENT_NAME FROM T_DELETE_PATIENT");
  if (!rows) return std::nullopt;
  PatientList list;
  for (const auto& row : rows->cells) {
    list.AddTo(list.ids_, row[0]);
    list.AddTo(list.names_, row[1]);
  }
  return list;
}

void PatientList::AddTo(std::vector<std::wstring>& list, const std::optional<std::string>& entry) const {
  if (entry && !entry->empty()) list.push_back(LowerCase(windows::Utf16(*entry)));
}

bool PatientList::IsNamedIn(std::wstring_view text) const {
  const std::wstring lower = LowerCase(text);
  const auto isIn = [&](const std::wstring& entry) { return Holds(lower, entry); };
  return std::any_of(ids_.begin(), ids_.end(), isIn) || std::any_of(names_.begin(), names_.end(), isIn);
}

bool PatientList::OwnsImage(std::wstring_view fileName) const {
  const std::wstring lower = LowerCase(fileName);
  return std::any_of(ids_.begin(), ids_.end(),
                     [&](const std::wstring& id) { return lower.starts_with(id) && IsWordAt(lower, 0, id.size()); });
}

std::optional<std::string> WithoutLines(std::string_view bytes,
                                        const std::function<bool(std::wstring_view line)>& isUnwanted) {
  if (bytes.starts_with(kUtf16Mark)) {
    bytes.remove_prefix(kUtf16Mark.size());
    return std::string(kUtf16Mark) + FilterUtf16(bytes, isUnwanted);
  }
  if (bytes.find('\0') != std::string_view::npos) return std::nullopt;
  const bool utf8 = IsUtf8(bytes);
  std::string kept;
  while (!bytes.empty()) {
    const std::string_view line = TakeLine(bytes, '\n');
    if (!isUnwanted(windows::Utf16(utf8 ? std::string(line) : windows::FromCodePage(line)))) kept += line;
  }
  return kept;
}

}  // namespace components
