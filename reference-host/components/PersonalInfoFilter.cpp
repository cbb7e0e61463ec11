// Copies files and images without what belongs to the listed patients.
#include <windows.h>

#include <cstdlib>
#include <vector>

#include "components/Components.h"
#include "components/Files.h"
#include "components/PatientList.h"
#include "windows/adapters/Text.h"

namespace components {
namespace {

std::wstring LeafOf(const std::wstring& path) {
  return path.substr(path.rfind(L'\\') + 1);
}

bool IsImage(const std::wstring& name) {
  constexpr std::size_t kExtension = 4;
  return name.size() > kExtension &&
         CompareStringOrdinal(name.c_str() + name.size() - kExtension, -1, L".ddo", -1, TRUE) == CSTR_EQUAL;
}

// The oldest time of change that still counts; the beginning of time without a range file.
FILETIME RangeBegin(const std::wstring& folder) {
  const auto text = ReadFileBytes(folder + L"\\range.txt");
  if (!text) return {};
  constexpr unsigned long long kTicksOfADay = 24ULL * 60 * 60 * 10'000'000;
  FILETIME now = {};
  GetSystemTimeAsFileTime(&now);
  ULARGE_INTEGER ticks = {{now.dwLowDateTime, now.dwHighDateTime}};
  const long long days = std::llabs(std::atoll(text->c_str()));
  const unsigned long long range = static_cast<unsigned long long>(days) * kTicksOfADay;
  ticks.QuadPart = days > 100'000 ? 0 : ticks.QuadPart - range;
  return {ticks.LowPart, ticks.HighPart};
}

}  // namespace

PersonalInfoFilter::PersonalInfoFilter() {
  AddProperty(L"ListDatabase", &PersonalInfoFilter::SetListDatabase);
  AddProperty(L"Source", &PersonalInfoFilter::SetSource);
  AddProperty(L"Destination", &PersonalInfoFilter::SetDestination);
  AddMethod(L"FilterImages", &PersonalInfoFilter::FilterImages);
  AddMethod(L"FilterFiles", &PersonalInfoFilter::FilterFiles);
}

void PersonalInfoFilter::SetSource(const std::string& path) {
  source_ = windows::Utf16(path);
  while (source_.ends_with(L'\\')) source_.pop_back();
}

void PersonalInfoFilter::SetDestination(const std::string& folder) {
  destination_ = windows::Utf16(folder);
  if (!destination_.ends_with(L'\\')) destination_ += L'\\';
}

std::int32_t PersonalInfoFilter::FilterImages() {
  if (!IsFolder(source_)) return kNoSource;
  const auto patients = PatientList::Read(listDatabase_);
  if (!patients) return kListUnreadable;
  return CopyImages(*patients, L"", RangeBegin(source_)) ? kDone : kCopyFailed;
}

bool PersonalInfoFilter::CopyImages(const PatientList& patients, const std::wstring& subFolder,
                                    const FILETIME& since) const {
  const std::wstring from = source_ + subFolder + L"\\";
  const std::wstring to = destination_ + LeafOf(source_) + subFolder + L"\\";
  for (const FolderEntry& entry : ListFolder(from)) {
    if (entry.isFolder) {
      if (!CopyImages(patients, subFolder + L"\\" + entry.name, since)) return false;
      continue;
    }
    const bool wanted = IsImage(entry.name) && CompareFileTime(&entry.changed, &since) >= 0;
    if (!wanted || patients.OwnsImage(entry.name)) continue;
    if (!MakeFolder(to) || !CopyWholeFile(from + entry.name, to + entry.name)) return false;
  }
  return true;
}

std::int32_t PersonalInfoFilter::FilterFiles() {
  const bool folder = IsFolder(source_);
  if (!folder && !IsFile(source_)) return kNoSource;
  const auto patients = PatientList::Read(listDatabase_);
  if (!patients) return kListUnreadable;
  const std::wstring leaf = LeafOf(source_);
  if (!folder) return CopyFiltered(*patients, source_, destination_, leaf) ? kDone : kCopyFailed;
  for (const FolderEntry& entry : ListFolder(source_ + L"\\")) {
    if (entry.isFolder) continue;
    const bool copied = CopyFiltered(*patients, source_ + L"\\" + entry.name, destination_ + leaf + L"\\", entry.name);
    if (!copied) return kCopyFailed;
  }
  return kDone;
}

bool PersonalInfoFilter::CopyFiltered(const PatientList& patients, const std::wstring& from,
                                      const std::wstring& toFolder, const std::wstring& name) const {
  if (patients.IsNamedIn(name)) return true;
  const auto bytes = ReadFileBytes(from);
  if (!bytes || !MakeFolder(toFolder)) return false;
  const auto text = WithoutLines(*bytes, [&](std::wstring_view line) { return patients.IsNamedIn(line); });
  return text ? WriteFileBytes(toFolder + name, *text) : CopyWholeFile(from, toFolder + name);
}

}  // namespace components
