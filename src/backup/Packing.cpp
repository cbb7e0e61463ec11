// Category archives: one cabinet per category, made by the external archiver cabarc.
#include "backup/Packing.h"

#include <optional>
#include <vector>

#include "app/External.h"
#include "app/Log.h"
#include "app/WindowsPath.h"
#include "backup/CabinetCheck.h"
#include "backup/FileOperations.h"
#include "backup/Programs.h"
#include "backup/StagingFolder.h"

namespace backup {
namespace {

/// A file as the archiver's argument. It takes a word that begins with "@" for a list of files, and one that
/// begins with "-" for an option.
std::string FileArgument(const std::string& name) {
  return CommandArgument(name.starts_with('@') || name.starts_with('-') ? ".\\" + name : name);
}

/// The archiver's arguments for what was gathered, each after a blank.
std::string ArgumentList(const std::vector<host::FolderEntry>& entries) {
  std::string list;
  for (const host::FolderEntry& entry : entries) {
    if (!entry.isFolder) {
      list += " " + FileArgument(entry.name);
    } else if (!app::SameName(entry.name, kArchiveFolderName)) {
      // The pattern itself is no reason for quotes: the archiver is started without a shell.
      const bool plain = CommandArgument(entry.name) == entry.name;
      const std::string contents = ".\\" + entry.name + "\\*.*";
      list += " " + (plain ? contents : app::Quoted(contents));
    }
  }
  return list;
}

/// Packs what `list` names, `files` files in all, into an archive in the staging folder.
app::ResultCode RunArchiver(app::Application& application, const std::string& archiveName, const std::string& list,
                            std::size_t files) {
  const std::string command = kPackCommand + archiveName + ".cab" + list;
  if (WideLength(command) > kLongestCommandLine) {
    app::WriteLog(application, 1, app::LogLevel::Error,
                  "Too many files for one command line: cabarc (" + archiveName + ")");
    return app::kFailed;
  }
  if (!RunProgram(application, command, archiveName).started) return app::kFailed;
  WarnUnlessWhole(application, application.state.StagingFolder + archiveName + ".cab", files, archiveName);
  return app::kDone;
}

app::ResultCode MoveToArchiveFolder(app::Application& application, const std::string& archive) {
  const std::string folder = ArchiveFolder(application);
  if (!application.host.files.FolderExists(folder)) application.host.files.MakeFolder(folder);
  return MoveFileToFolder(application, archive, folder);
}

/// Gives every file that fits `pattern` the name that `rename` makes of its own; the new names, or
/// nothing after a failure.
template <typename Rename>
std::optional<std::vector<std::string>> RenameFiles(app::Application& application, const std::string& pattern,
                                                    Rename rename) {
  const std::string& staging = application.state.StagingFolder;
  std::vector<host::FolderEntry> entries;
  if (application.host.files.List(staging, pattern, entries) != 0) return std::nullopt;
  std::vector<std::string> names;
  for (const host::FolderEntry& entry : entries) {
    if (entry.isFolder) continue;
    names.push_back(rename(entry.name));
    if (application.host.files.MoveTo(staging + entry.name, staging + names.back()) != 0) return std::nullopt;
  }
  return names;
}

}  // namespace

app::ResultCode PackCategory(app::Application& application, const std::string& archiveName) {
  const std::string& staging = application.state.StagingFolder;
  const app::CurrentFolderScope inStaging(application, staging, application.state.StartupDirectory);
  std::vector<host::FolderEntry> entries;
  if (!inStaging.Entered() || application.host.files.List(staging, "*", entries) != 0) return app::kFailed;
  const std::string list = ArgumentList(entries);
  if (list.empty()) return app::kStopped;
  const std::size_t files = CountFiles(application, staging, kArchiveFolderName);
  if (RunArchiver(application, archiveName, list, files) != app::kDone) return app::kFailed;
  if (MoveToArchiveFolder(application, staging + archiveName + ".cab") != app::kDone) return app::kFailed;
  if (EmptyFolder(application, staging, kArchiveFolderName) != app::kDone) {
    WarnOfLoss(application, "Staging folder not emptied: " + staging, archiveName);
  }
  return app::kDone;
}

app::ResultCode JoinArchives(app::Application& application, const std::string& name) {
  const std::string& staging = application.state.StagingFolder;
  const app::CurrentFolderScope inStaging(application, staging, application.state.StartupDirectory);
  if (!inStaging.Entered()) return app::kFailed;
  const auto archives = RenameFiles(application, "*.cab", [](const std::string& file) { return file + ".tmp"; });
  if (!archives) return app::kFailed;
  if (archives->empty()) return app::kStopped;
  std::string list;
  for (const std::string& archive : *archives) list += " " + CommandArgument(archive);
  if (RunArchiver(application, name, list, archives->size()) != app::kDone ||
      MoveToArchiveFolder(application, staging + name + ".cab") != app::kDone)
    return app::kFailed;
  const auto withoutEnding = [](const std::string& file) { return file.substr(0, file.rfind('.')); };
  return RenameFiles(application, "*.tmp", withoutEnding) ? app::kDone : app::kFailed;
}

app::ResultCode CollectArchives(app::Application& application) {
  const std::string& staging = application.state.StagingFolder;
  const MoveCount count = MoveFilesMatching(application, ArchiveFolder(application), "*.cab", staging);
  return count.failed == 0 ? app::kDone : app::kFailed;
}

}  // namespace backup
