// Registry values and the path table.
#include <vector>

#include "app/External.h"
#include "app/StartUp.h"
#include "app/WindowsPath.h"
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

  std::int32_t GetString(const std::string& name, std::size_t capacity, std::string& value) override {
    return library_.GetString(name, capacity, value);
  }
  std::int32_t RegGetKeySZ(const std::string& name, std::string& value) override {
    return Note(name, library_.RegGetKeySZ(name, value));
  }
  std::int32_t RegGetKeyDWORD(const std::string& name, std::uint32_t& value) override {
    return Note(name, library_.RegGetKeyDWORD(name, value));
  }
  std::int32_t RegSetKeySZ(const std::string&, const std::string&) override { return app::kFailed; }
  std::int32_t RegSetKeyDWORD(const std::string&, std::uint32_t) override { return app::kFailed; }
  std::string GetHostname() override { return library_.GetHostname(); }
  std::string GetSoftwareVersion() override { return library_.GetSoftwareVersion(); }

 private:
  std::int32_t Note(const std::string& name, std::int32_t result) {
    asked_.push_back({name, result != app::kFailed});
    return app::kDone;
  }

  QX32& library_;
  std::vector<Asked> asked_;
};

void CheckRegistry(Report& report, app::Application& application) {
  host::Host& host = application.host;
  EveryQuestion questions(host.qx32);
  app::Application asking({questions, host.qx32lib, host.qxNetDB, host.components, host.catalogue, host.compactor,
                           host.files, host.drives, host.processes, host.shell, host.clock, host.messageLoop},
                          application.toolkit);
  app::ReadAppearanceSettings(asking);
  application.appearance = asking.appearance;
  for (const auto& [name, found] : questions.All()) {
    report.Require(found, "registry " + name, "read at the start, which ends with message 60322 without it");
  }
  std::uint32_t number = 0;
  report.Expect(host.qx32.RegGetKeyDWORD("ClientLogBackupNumber", number) != app::kFailed,
                "registry ClientLogBackupNumber", "client logs kept for each client; 20 where it is missing");
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
  const bool folder = files.FolderExists(app::WithoutTrailingBackslash(value));
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
    if (app::GetPathEntry(application, entry.name, value) == app::kDone) {
      CheckTarget(report, application.host.files, entry, value);
    } else {
      report.Require(false, "path table " + std::string(entry.name), entry.purpose);
    }
  }
  app::State& state = application.state;
  app::GetPathEntry(application, "Log", state.LogFolder);
  app::GetPathEntry(application, "ApplicationRoot", state.ApplicationRootFolder);
  app::GetPathEntry(application, "System", state.SystemFolder);
  for (std::string* folder : {&state.ApplicationRootFolder, &state.SystemFolder}) {
    *folder = app::WithTrailingBackslash(*folder);
  }
}

}  // namespace

void CheckSettings(Report& report, app::Application& application) {
  report.Require(app::CheckInstallation(application) == app::kDone, "Directory.ini",
                 "the path table, in the folder System below the registry value PathAppl");
  CheckRegistry(report, application);
  CheckPathTable(report, application);
  report.Require(MayWriteTo(application.state.LogFolder), "right to write to " + application.state.LogFolder,
                 "the operation log");
}

}  // namespace hostcheck
