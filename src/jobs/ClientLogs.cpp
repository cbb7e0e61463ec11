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

constexpr char kPattern[] = "Maintenance_*.cab";

/// Takes the archives in. A step that fails leaves a warning: the jobs that ask for this go on without it.
class Import {
 public:
  Import(const work::Tools& tools, const std::string& update, const std::string& clientLogs,
         const std::string& programFolder)
      : tools_(tools), update_(update), clientLogs_(clientLogs), programFolder_(programFolder) {}

  base::Outcome Run() {
    const std::string bare = base::WithoutTrailingBackslash(clientLogs_);
    if (!tools_.files.FolderExists(bare)) {
      base::Outcome made = Warn("Client-log folder not made", tools_.files.MakeFolder(bare));
      if (!made.IsDone()) return made;
    }
    // What an earlier run has moved and not unpacked would stand in the way of an archive of its name for ever.
    base::Outcome taken = ForEachArchive(clientLogs_, &Import::Consume);
    return taken.IsDone() ? ForEachArchive(update_, &Import::TakeIn) : taken;
  }

 private:
  using Step = base::Outcome (Import::*)(const std::string& name);

  base::Outcome ForEachArchive(const std::string& folder, Step step) {
    if (!tools_.files.FolderExists(folder)) return base::Result::Done;  // a workstation without clients
    std::vector<host::FolderEntry> entries;
    static_cast<void>(Warn("Client logs not listed", tools_.files.List(folder, kPattern, entries)));
    for (const host::FolderEntry& entry : entries) {
      if (entry.isFolder) continue;
      if (base::Outcome taken = (this->*step)(entry.name); !taken.IsDone()) return taken;
      tools_.messageLoop.Yield();
    }
    return base::Result::Done;
  }

  base::Outcome TakeIn(const std::string& name) {
    base::Outcome moved =
        Warn("Client log not moved", work::MoveFileToFolder(tools_.files, update_ + name, clientLogs_));
    return moved.IsDone() ? Consume(name) : moved;
  }

  base::Outcome Consume(const std::string& name) {
    const std::string archive = clientLogs_ + name;
    base::Outcome unpacked =
        Warn("Client log not unpacked", ExtractClientArchive(tools_, archive, clientLogs_, programFolder_));
    return unpacked.IsDone() ? Warn("Client log not removed", tools_.files.RemoveFile(archive)) : unpacked;
  }

  base::Outcome Warn(const std::string& what, base::Outcome step) {
    if (!step.IsDone()) tools_.log.WarnOfLoss(what + ": " + step.cause, kCategory);
    return step;
  }

  const work::Tools& tools_;
  const std::string& update_;
  const std::string& clientLogs_;
  const std::string& programFolder_;
};

}  // namespace

base::Outcome ImportClientLogs(const work::Tools& tools, const app::PathTable& paths, host::QX32& registry,
                               const std::string& programFolder) {
  std::string update;
  std::string clientLogs;
  if (base::Outcome read = FolderFromPathTable(paths, "Update", update); !read.IsDone()) return read;
  if (base::Outcome read = FolderFromPathTable(paths, "ClientLog", clientLogs); !read.IsDone()) return read;
  base::Outcome imported = Import(tools, update, clientLogs, programFolder).Run();
  return imported.IsDone() ? PruneClientLogBackups(tools, registry, clientLogs) : imported;
}

base::Outcome ExtractClientArchive(const work::Tools& tools, const std::string& archivePath, const std::string& folder,
                                   const std::string& programFolder) {
  const std::string archive = work::CommandArgument(base::FileNameOf(archivePath));
  return backupset::UnpackInFolder(tools, folder, archive, {}, programFolder, kCategory).Started();
}

}  // namespace jobs
