// The job-definition file BackupList.ini, and what of it has been loaded.
#include "jobs/JobDefinitions.h"

#include <algorithm>
#include <string_view>

#include "base/Path.h"
#include "base/Text.h"

namespace jobs {
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

bool FindSection(host::MessageLoop& messageLoop, host::TextReader& reader, const std::string& section) {
  const std::string header = "[" + base::Trim(section) + "]";
  std::string line;
  while (reader.ReadLine(line)) {
    messageLoop.Yield();
    if (line == header) return true;
  }
  return false;
}

}  // namespace

int SectionIndex(const std::string& section) {
  const auto* const found = std::find(kJobSections.begin(), kJobSections.end(), section);
  return found == kJobSections.end() ? -1 : static_cast<int>(found - kJobSections.begin());
}

base::Outcome JobDefinitions::Load(const work::Tools& tools, const std::string& folder, const std::string& fileName,
                                   const std::string& section) {
  const int index = SectionIndex(base::Trim(section));
  Forget(index);
  const std::string path = base::WithTrailingBackslash(folder) + fileName;
  if (!tools.files.FileExists(path)) {
    tools.log.WriteLog(app::LogLevel::Warning, "Job file missing: " + path + " (" + section + ")");
    return base::Result::Done;
  }
  const auto reader = tools.files.OpenText(path);
  if (!reader) return reader.Why();
  if (!FindSection(tools.messageLoop, *reader, section)) return base::Failure(path + " has no section " + section);

  std::string line;
  while (reader->ReadLine(line)) {
    if (base::Outcome taken = TakeLine(line, index); !taken.IsDone()) return taken;
    tools.messageLoop.Yield();
    if (IsHeader(line)) break;
  }
  // Half a section would be a job that leaves data out.
  return reader->Failed() ? base::Failure(path + " cannot be read to the end of " + section) : base::Result::Done;
}

std::vector<std::string> JobDefinitions::Items(JobKey key, const std::string& section) const {
  const int index = SectionIndex(section);
  if (index < 0) return {};
  const auto& value = tables_[static_cast<std::size_t>(key)][static_cast<std::size_t>(index)];
  return value ? base::Split(*value, ';') : std::vector<std::string>();
}

std::vector<std::string> JobDefinitions::FilledItems(JobKey key, const std::string& section) const {
  std::vector<std::string> items = Items(key, section);
  std::erase(items, std::string());
  return items;
}

std::vector<std::string> JobDefinitions::FolderItems(const std::string& section) const {
  std::vector<std::string> items = Items(JobKey::Folder, section);
  if (items.size() > 1) std::erase_if(items, [](const std::string& item) { return base::Trim(item).empty(); });
  return items;
}

void JobDefinitions::Forget(int section) {
  if (section < 0) return;
  for (Table& table : tables_) table[static_cast<std::size_t>(section)].reset();
}

base::Outcome JobDefinitions::TakeLine(const std::string& line, int section) {
  for (const KeyRule& rule : kKeys) {
    if (!line.starts_with(rule.head)) continue;
    if (section < 0) return base::Failure("an item of a section without a number: " + line);
    std::string value = base::Trim(std::string_view(line).substr(rule.head.size()));
    if (value.empty()) value = rule.whenEmpty;
    tables_[static_cast<std::size_t>(rule.key)][static_cast<std::size_t>(section)] = value;
  }
  return base::Result::Done;
}

}  // namespace jobs
