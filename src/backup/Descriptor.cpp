// The descriptor BackupInfo.ini that goes with every backup set.
#include "backup/Descriptor.h"

#include <array>
#include <vector>

#include "app/External.h"
#include "app/WindowsPath.h"
#include "backup/FileOperations.h"
#include "backup/FloppyFormat.h"
#include "backup/StagingFolder.h"

namespace backup {
namespace {

struct VersionLine {
  const char* category;
  bool app::CategoriesPresent::*present;
};

// In the order of the file.
constexpr std::array<VersionLine, 8> kVersionLines = {{
    {"PatientData", &app::CategoriesPresent::PatientData},
    {"MenuData", &app::CategoriesPresent::MenuData},
    {"SystemData", &app::CategoriesPresent::SystemData},
    {"UserData", &app::CategoriesPresent::UserData},
    {"ExplanationData", &app::CategoriesPresent::ExplanationData},
    {"IPCounter", &app::CategoriesPresent::IPCounter},
    {"ReportSetData", &app::CategoriesPresent::ReportSetData},
    {"ReportData", &app::CategoriesPresent::ReportData},
}};

bool ListArchives(app::Application& application, const std::string& folder, std::string& list) {
  std::vector<host::FolderEntry> entries;
  if (application.host.files.List(folder, "*.cab", entries) != 0) return false;
  for (const host::FolderEntry& entry : entries) {
    if (!entry.isFolder) list += entry.name + ";";
  }
  return true;
}

/// Writes line by line; after a failure nothing more is written.
class Writer {
 public:
  explicit Writer(std::unique_ptr<host::TextWriter> file) : file_(std::move(file)), good_(file_ != nullptr) {}

  void Line(const std::string& text) { good_ = good_ && file_->Write(text + "\r\n") == 0; }
  bool Close() { return good_ && file_->Close() == 0; }

 private:
  std::unique_ptr<host::TextWriter> file_;
  bool good_;
};

/// Whether a restore can ever accept the set: it refuses one that does not say who made it.
bool CanBeAccepted(const app::Application& application) {
  return !application.state.SoftwareVersion.empty() && !HostApplicationType(application).empty();
}

void WriteInfo(app::Application& application, Writer& file, std::int16_t diskNumber, const std::string& archives) {
  host::Clock& clock = application.host.clock;
  const host::LocalTime now = clock.Now();
  file.Line("[Info]");
  file.Line("AppVersion=" + application.state.SoftwareVersion);
  file.Line("Date=" + clock.ShortDate(now) + " " + clock.LongTime(now));
  file.Line("AppType=" + HostApplicationType(application));
  file.Line("CABFile=" + archives);
  if (diskNumber >= 1 && archives.find(kJoinedArchiveName) != std::string::npos) {
    file.Line("FDCount=" + std::to_string(FloppyDiskCount(application.state.JoinedArchiveSize)));
    file.Line("FDNumber=" + std::to_string(diskNumber));
  }
}

bool WriteVersions(app::Application& application, Writer& file) {
  file.Line("");
  file.Line("[VersionInfo]");
  for (const VersionLine& line : kVersionLines) {
    if (!(application.state.Present.*line.present)) continue;
    const std::string version =
        app::ReadIniValue(application, application.state.SystemFolder, kVersionFile, line.category);
    if (version.empty()) return false;
    file.Line(std::string(line.category) + "=" + version);
  }
  file.Line("");
  return true;
}

}  // namespace

app::ResultCode WriteDescriptor(app::Application& application, std::int16_t diskNumber) {
  if (!CanBeAccepted(application)) return app::kFailed;
  const std::string& staging = application.state.StagingFolder;
  const std::string path = staging + kDescriptorFile;
  const bool stale = diskNumber != 0 && application.host.files.FileExists(path);
  if (stale && DeleteFileForced(application, path) != app::kDone) return app::kFailed;

  Writer file(application.host.files.AppendText(path));
  std::string archives;
  if (!ListArchives(application, diskNumber == 0 ? staging : ArchiveFolder(application), archives)) return app::kFailed;
  WriteInfo(application, file, diskNumber, archives);
  if (!WriteVersions(application, file)) return app::kFailed;
  return file.Close() ? app::kDone : app::kFailed;
}

std::string HostApplicationType(const app::Application& application) {
  constexpr std::size_t kExtensionLength = 4;
  const std::string& name = application.appearance.ApplicationName;
  if (name.size() < kExtensionLength) return name;
  const std::size_t stem = name.size() - kExtensionLength;
  return app::SameName(name.substr(stem), ".exe") ? name.substr(0, stem) : name;
}

}  // namespace backup
