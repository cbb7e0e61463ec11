// BackupList.ini with everything that it names, and BackupVersion.ini.
#include <vector>

#include "app/External.h"
#include "app/PathVariables.h"
#include "app/WindowsPath.h"
#include "backup/Descriptor.h"
#include "backup/JobDefinitions.h"
#include "host-check/Checks.h"

namespace hostcheck {
namespace {

using backup::JobKey;

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
  if (files.FolderExists(app::WithoutTrailingBackslash(path))) return true;
  std::vector<host::FolderEntry> entries;
  return files.List(app::FolderOf(path), app::FileNameOf(path), entries) == app::kDone && !entries.empty();
}

void CheckItem(Report& report, app::Application& application, const std::string& subject, JobKey key,
               std::string item) {
  if (item == backup::kDefaultRegistryCommand) return;
  if (app::ExpandPathVariable(application, item) != app::kDone) {
    return report.Require(false, subject, "the name between % is not in the path table");
  }
  if (IsProgram(key)) {
    return report.Require(application.host.files.FileExists(item), subject, "a program: " + item);
  }
  if (item.find(':') == std::string::npos) item = application.state.ApplicationRootFolder + item;
  report.Expect(IsThere(application.host.files, item), subject, "data, which may come later: " + item);
}

void CheckSection(Report& report, app::Application& application, const std::string& section) {
  backup::JobDefinitions definitions;
  const std::string subject = "BackupList.ini [" + section + "]";
  const bool loaded =
      definitions.Load(application, application.state.SystemFolder, backup::kJobDefinitionFile, section) == app::kDone;
  report.Require(loaded, subject, "a job; the operation that needs the section ends without it");
  for (const KeyName& key : kKeys) {
    if (IsCommandLine(section, key.key)) continue;
    for (const std::string& item : definitions.Items(key.key, section)) {
      if (!item.empty()) CheckItem(report, application, subject + " " + key.name + "=" + item, key.key, item);
    }
  }
}

void CheckVersions(Report& report, app::Application& application) {
  for (const char* data : {"PatientData", "MenuData", "SystemData", "UserData", "ExplanationData", "IPCounter",
                           "ReportSetData", "ReportData"}) {
    const std::string version =
        app::ReadIniValue(application, application.state.SystemFolder, backup::kVersionFile, data);
    report.Require(!version.empty(), std::string(backup::kVersionFile) + " " + data,
                   "version of the data; without it no such backup");
  }
}

}  // namespace

void CheckJobs(Report& report, app::Application& application) {
  const bool there = application.host.files.FileExists(application.state.SystemFolder + backup::kJobDefinitionFile);
  report.Require(there, backup::kJobDefinitionFile, "what backup, restore and maintenance log consist of");
  if (there) {
    for (const std::string_view section : backup::kJobSections) CheckSection(report, application, std::string(section));
  }
  CheckVersions(report, application);
}

}  // namespace hostcheck
