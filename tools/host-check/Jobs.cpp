// BackupList.ini with everything that it names, and BackupVersion.ini.
#include <vector>

#include "backupset/Descriptor.h"
#include "base/Path.h"
#include "host-check/Checks.h"
#include "jobs/Items.h"

namespace hostcheck {
namespace {

using jobs::JobKey;

struct KeyName {
  JobKey key;
  const char* name;
};

constexpr KeyName kKeys[] = {{JobKey::BatFile, "BatFile"},   {JobKey::CommonFile, "CommonFile"},
                             {JobKey::EventLog, "EventLog"}, {JobKey::RegFile, "RegFile"},
                             {JobKey::Folder, "Folder"},     {JobKey::PersonalInfo, "PersonalInfo"}};

bool IsProgram(JobKey key) {
  return key == JobKey::BatFile || key == JobKey::EventLog || key == JobKey::RegFile;
}

/// Log deletion runs what these keys name as a command line of its own, which nobody can look for.
bool IsCommandLine(const std::string& section, JobKey key) {
  return section == "LOG_DELETE" && (key == JobKey::EventLog || key == JobKey::RegFile);
}

/// A file that fits the pattern, or a folder.
bool IsThere(host::FileSystem& files, const std::string& path) {
  if (files.FolderExists(base::WithoutTrailingBackslash(path))) return true;
  std::vector<host::FolderEntry> entries;
  return files.List(base::FolderOf(path), base::FileNameOf(path), entries).IsDone() && !entries.empty();
}

void CheckItem(Report& report, app::Application& application, const std::string& subject, JobKey key,
               std::string item) {
  if (item == jobs::kDefaultRegistryCommand) return;
  if (!application.paths.ExpandPathVariable(item).IsDone()) {
    return report.Require(false, subject, "the name between % is not in the path table");
  }
  if (IsProgram(key)) {
    return report.Require(application.host.files.FileExists(item), subject, "a program: " + item);
  }
  item = jobs::WithDrive(item, application.state.ApplicationRootFolder);
  report.Expect(IsThere(application.host.files, item), subject, "data, which may come later: " + item);
}

void CheckSection(Report& report, app::Application& application, const std::string& section) {
  jobs::JobDefinitions definitions;
  const std::string subject = "BackupList.ini [" + section + "]";
  const bool loaded =
      definitions.Load(work::ToolsOf(application), application.state.SystemFolder, jobs::kJobDefinitionFile, section)
          .IsDone();
  report.Require(loaded, subject, "a job; the operation that needs the section ends without it");
  for (const KeyName& key : kKeys) {
    if (IsCommandLine(section, key.key)) continue;
    for (const std::string& item : definitions.Items(key.key, section)) {
      if (!item.empty()) CheckItem(report, application, subject + " " + key.name + "=" + item, key.key, item);
    }
  }
}

void CheckVersions(Report& report, app::Application& application) {
  for (const backupset::Category category : backupset::kDescriptorOrder) {
    const std::string data = backupset::RowOf(category).versionKey;
    const std::string version = backupset::ReadIniValue(work::ToolsOf(application), application.state.SystemFolder,
                                                        backupset::kVersionFile, data);
    report.Require(!version.empty(), std::string(backupset::kVersionFile) + " " + data,
                   "version of the data; without it no such backup");
  }
}

}  // namespace

void CheckJobs(Report& report, app::Application& application) {
  const bool there = application.host.files.FileExists(application.state.SystemFolder + jobs::kJobDefinitionFile);
  report.Require(there, jobs::kJobDefinitionFile, "what backup, restore and maintenance log consist of");
  if (there) {
    for (const std::string_view section : jobs::kJobSections) CheckSection(report, application, std::string(section));
  }
  CheckVersions(report, application);
}

}  // namespace hostcheck
