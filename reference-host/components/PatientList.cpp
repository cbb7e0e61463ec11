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

}  // namespace components
