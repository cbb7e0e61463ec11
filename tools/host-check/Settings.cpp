// Registry values and the path table.
#include <vector>

#include "app/StartUp.h"
#include "base/Path.h"
#include "host-check/Checks.h"

namespace hostcheck {
namespace {

/// Passes questions on to the host's library, and answers each with success, so that the program's own
/// reading goes on to the last value and every missing one is seen.
class EveryQuestion : public host::QX32 {
 public:
  explicit EveryQuestion(QX32& library) : library_(library) {}

  struct Asked {
    std::string name;
    bool found;
  };
  const std::vector<Asked>& All() const { return asked_; }

  base::Outcome GetString(const std::string& name, std::size_t capacity, std::string& value) override {
    return library_.GetString(name, capacity, value);
  }
  base::Outcome RegGetKeySZ(const std::string& name, std::string& value) override {
    return Note(name, library_.RegGetKeySZ(name, value));
  }
  base::Outcome RegGetKeyDWORD(const std::string& name, std::uint32_t& value) override {
    return Note(name, library_.RegGetKeyDWORD(name, value));
  }
  base::Outcome RegSetKeySZ(const std::string&, const std::string&) override { return base::Result::Failed; }
  base::Outcome RegSetKeyDWORD(const std::string&, std::uint32_t) override { return base::Result::Failed; }
  std::string GetHostname() override { return library_.GetHostname(); }
  std::string GetSoftwareVersion() override { return library_.GetSoftwareVersion(); }

 private:
  base::Outcome Note(const std::string& name, const base::Outcome& read) {
    asked_.push_back({name, read.IsDone()});
    return base::Result::Done;
  }

  QX32& library_;
  std::vector<Asked> asked_;
};

void CheckRegistry(Report& report, app::Application& application) {
  host::Host& host = application.host;
  EveryQuestion questions(host.qx32);
  static_cast<void>(app::ReadAppearanceSettings(questions, application.toolkit, application.appearance));
  for (const auto& [name, found] : questions.All()) {
    report.Require(found, "registry " + name, "read at the start, which ends with message 60322 without it");
  }
  std::uint32_t number = 0;
  report.Expect(host.qx32.RegGetKeyDWORD("ClientLogBackupNumber", number).IsDone(), "registry ClientLogBackupNumber",
                "client logs kept for each client; 20 where it is missing");
  const std::string version = host.qx32.GetSoftwareVersion();
  report.Require(version.find('.') != std::string::npos, "software version \"" + version + "\"",
                 "compared up to its point when a set is restored");
}

enum class Kind {
  Connection,  ///< the host's own text
  Folder,
  FolderToCome,  ///< made by the program or by others when it is needed
  File
};

struct PathEntry {
  const char* name;
  Kind kind;
  const char* purpose;
};

constexpr PathEntry kPathEntries[] = {
    {"SysMasterDB", Kind::Connection, "system configuration database, read at the start"},
    {"LangStrDB", Kind::Connection, "message catalogue, opened at the start"},
    {"Log", Kind::Folder, "the operation log BackupUtility.log"},
    {"ApplicationRoot", Kind::Folder, "folders of BackupList.ini that name no drive"},
    {"System", Kind::Folder, "BackupList.ini, BackupVersion.ini, Maintenance.js, the host application"},
    {"UserFolder", Kind::Folder, "handed to the maintenance script"},
    {"Config", Kind::Folder, "databases compacted at sign-in"},
    {"Param", Kind::Folder, "databases compacted at sign-in"},
    {"NetConfigDB", Kind::Connection, "network configuration database with the media drives"},
    {"ClientLog", Kind::FolderToCome, "unpacked logs of client workstations"},
    {"Update", Kind::FolderToCome, "where client workstations drop their logs"},
    {"DeleteListDB", Kind::File, "list of the personal-information filter; no backup without this entry"},
    {"Image", Kind::Folder, "images of a maintenance log"},
    {"Temp", Kind::Folder, "the programs that export the study list"},
};

/// A connection has a field of fixed length in the program.
constexpr std::size_t kLongestConnection = 256;

void CheckTarget(Report& report, host::FileSystem& files, const PathEntry& entry, const std::string& value) {
  const std::string subject = "path table " + std::string(entry.name) + " = " + value;
  const bool folder = files.FolderExists(base::WithoutTrailingBackslash(value));
  switch (entry.kind) {
    case Kind::Connection:
      return report.Require(value.size() <= kLongestConnection, subject, entry.purpose);
    case Kind::Folder:
      return report.Require(folder, subject, entry.purpose);
    case Kind::FolderToCome:
      return report.Expect(folder, subject, entry.purpose);
    case Kind::File:
      return report.Require(files.FileExists(value), subject, entry.purpose);
  }
}

void CheckPathTable(Report& report, app::Application& application) {
  for (const PathEntry& entry : kPathEntries) {
    std::string value;
    if (application.paths.GetPathEntry(entry.name, value).IsDone()) {
      CheckTarget(report, application.host.files, entry, value);
    } else {
      report.Require(false, "path table " + std::string(entry.name), entry.purpose);
    }
  }
  app::State& state = application.state;
  static_cast<void>(application.paths.GetPathEntry("Log", state.LogFolder));  // what is missing was said above
  static_cast<void>(application.paths.GetPathEntry("ApplicationRoot", state.ApplicationRootFolder));
  static_cast<void>(application.paths.GetPathEntry("System", state.SystemFolder));
  for (std::string* folder : {&state.ApplicationRootFolder, &state.SystemFolder}) {
    *folder = base::WithTrailingBackslash(*folder);
  }
}

}  // namespace

void CheckSettings(Report& report, app::Application& application) {
  report.Require(app::CheckInstallation(application.host.qx32, application.host.files).IsDone(), "Directory.ini",
                 "the path table, in the folder System below the registry value PathAppl");
  CheckRegistry(report, application);
  CheckPathTable(report, application);
  report.Require(MayWriteTo(application.state.LogFolder), "right to write to " + application.state.LogFolder,
                 "the operation log");
}

}  // namespace hostcheck
