// Takes in the maintenance archives of the client workstations.
#include "jobs/ClientLogs.h"

#include <vector>

#include "backupset/Archiver.h"
#include "base/Path.h"
#include "base/Text.h"
#include "work/FileOperations.h"

namespace jobs {
namespace {

constexpr char kCategory[] = "client logs";

base::Outcome FolderFromPathTable(const app::PathTable& paths, const std::string& name, std::string& folder) {
  std::string value;
  if (base::Outcome read = paths.GetPathEntryOrShow(name, value); !read.IsDone()) return read;
  folder = base::WithTrailingBackslash(base::Trim(value));
  return base::Result::Done;
}

base::Outcome ImportArchive(const work::Tools& tools, const std::string& source, const std::string& folder,
                            const std::string& programFolder) {
  const std::string archive = folder + base::FileNameOf(source);
  if (base::Outcome moved = work::MoveFileToFolder(tools.files, source, folder); !moved.IsDone()) return moved;
  base::Outcome extracted = ExtractClientArchive(tools, archive, folder, programFolder);
  return extracted.IsDone() ? tools.files.RemoveFile(archive) : extracted;
}

}  // namespace

base::Outcome ImportClientLogs(const work::Tools& tools, const app::PathTable& paths, host::QX32& registry,
                               const std::string& programFolder) {
  std::string update;
  std::string clientLogs;
  if (base::Outcome read = FolderFromPathTable(paths, "Update", update); !read.IsDone()) return read;
  if (base::Outcome read = FolderFromPathTable(paths, "ClientLog", clientLogs); !read.IsDone()) return read;
  const std::string bare = clientLogs.substr(0, clientLogs.size() - 1);
  if (!tools.files.FolderExists(bare)) {
    if (base::Outcome made = tools.files.MakeFolder(bare); !made.IsDone()) return made;
  }

  std::vector<host::FolderEntry> entries;
  static_cast<void>(tools.files.List(update, "Maintenance_*.cab", entries));  // no update folder, nothing to take in
  for (const host::FolderEntry& entry : entries) {
    if (entry.isFolder) continue;
    base::Outcome imported = ImportArchive(tools, update + entry.name, clientLogs, programFolder);
    if (!imported.IsDone()) return imported;
    tools.messageLoop.Yield();
  }
  return PruneClientLogBackups(tools, registry, clientLogs);
}

base::Outcome ExtractClientArchive(const work::Tools& tools, const std::string& archivePath, const std::string& folder,
                                   const std::string& programFolder) {
  const std::string archive = work::CommandArgument(base::FileNameOf(archivePath));
  return backupset::UnpackInFolder(tools, folder, archive, {}, programFolder, kCategory).Started();
}

}  // namespace jobs
