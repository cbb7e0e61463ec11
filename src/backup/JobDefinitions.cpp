// The job-definition file BackupList.ini, and what of it has been loaded.
#include "backup/JobDefinitions.h"

#include <algorithm>
#include <string_view>

#include "app/Log.h"
#include "app/TextFormat.h"
#include "app/WindowsPath.h"

namespace backup {
namespace {

struct KeyRule {
  JobKey key;
  std::string_view head;       ///< how an item line begins
  std::string_view whenEmpty;  ///< what an empty value stands for
};

constexpr std::array<KeyRule, kJobKeys> kKeys = {{{JobKey::BatFile, "BatFile=", ""},
                                                  {JobKey::CommonFile, "CommonFile=", ""},
                                                  {JobKey::EventLog, "EventLog=", "%System%\\BackupEventLog.exe"},
                                                  {JobKey::RegFile, "RegFile=", kDefaultRegistryCommand},
                                                  {JobKey::Folder, "Folder=", ""},
                                                  {JobKey::PersonalInfo, "PersonalInfo=", ""}}};

bool IsHeader(std::string_view line) {
  return line.size() >= 2 && line.starts_with('[') && line.ends_with(']');
}

bool FindSection(app::Application& application, host::TextReader& reader, const std::string& section) {
  const std::string header = "[" + app::Trim(section) + "]";
  std::string line;
  while (reader.ReadLine(line)) {
    application.host.messageLoop.Yield();
    if (line == header) return true;
  }
  return false;
}

}  // namespace

int SectionIndex(const std::string& section) {
  const auto* const found = std::find(kJobSections.begin(), kJobSections.end(), section);
  return found == kJobSections.end() ? -1 : static_cast<int>(found - kJobSections.begin());
}

app::ResultCode JobDefinitions::Load(app::Application& application, const std::string& folder,
                                     const std::string& fileName, const std::string& section) {
  const int index = SectionIndex(app::Trim(section));
  Forget(index);
  host::FileSystem& files = application.host.files;
  const std::string path = app::WithTrailingBackslash(folder) + fileName;
  if (!files.FileExists(path)) {
    app::WriteLog(application, 1, app::LogLevel::Warning, "Job file missing: " + path + " (" + section + ")");
    return app::kDone;
  }
  const auto reader = files.OpenText(path);
  if (!reader || !FindSection(application, *reader, section)) return app::kFailed;

  std::string line;
  while (reader->ReadLine(line)) {
    if (TakeLine(line, index) != app::kDone) return app::kFailed;
    application.host.messageLoop.Yield();
    if (IsHeader(line)) break;
  }
  // Half a section would be a job that leaves data out.
  return reader->Failed() ? app::kFailed : app::kDone;
}

std::vector<std::string> JobDefinitions::Items(JobKey key, const std::string& section) const {
  const int index = SectionIndex(section);
  if (index < 0) return {};
  const auto& value = tables_[static_cast<std::size_t>(key)][static_cast<std::size_t>(index)];
  return value ? app::Split(*value, ';') : std::vector<std::string>();
}

void JobDefinitions::Forget(int section) {
  if (section < 0) return;
  for (Table& table : tables_) table[static_cast<std::size_t>(section)].reset();
}

app::ResultCode JobDefinitions::TakeLine(const std::string& line, int section) {
  for (const KeyRule& rule : kKeys) {
    if (!line.starts_with(rule.head)) continue;
    if (section < 0) return app::kFailed;
    std::string value = app::Trim(std::string_view(line).substr(rule.head.size()));
    if (value.empty()) value = rule.whenEmpty;
    tables_[static_cast<std::size_t>(rule.key)][static_cast<std::size_t>(section)] = value;
  }
  return app::kDone;
}

}  // namespace backup
