// The archives of a set, made and unpacked by the host's archiver cabarc.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "backupset/BackupSet.h"
#include "backupset/CabinetCheck.h"
#include "work/Programs.h"
#include "work/WorkFolder.h"

namespace backupset {

/// Unpacks the archive that stands in `folder`, where its members' folders are made; `back` is the current folder
/// afterwards. `target`, where it is given, is a folder below `folder` to unpack into. A folder that cannot be entered
/// counts as an archiver that is not started: the archive would be unpacked into some other folder.
work::ProgramEnd UnpackInFolder(const work::Tools& tools, const std::string& folder, const std::string& archive,
                                const std::string& target, const std::string& back, const std::string& category);

/// Plans, for the job's progress, that `bytes` will be packed into the archive of this name, without ".cab", and that
/// it will be checked.
void PlanPacking(app::Progress& progress, const std::string& archiveName, std::uint64_t bytes);

/// What becomes of an archive that is not whole: it lacks files, or ends too early.
enum class Incomplete {
  Fails,
  Warns,  ///< a part is better than nothing to somebody who looks for a fault
};

/// Packs, joins and unpacks in the work folder of one job. The program's own folder is current after each call, also
/// after a failure.
class Archiver {
 public:
  /// What every command that makes a cabinet begins with; the cabinet's name follows.
  static constexpr char kPackCommand[] = "cabarc -r -p n ";

  Archiver(const work::Tools& tools, const work::WorkFolder& workFolder) : tools_(tools), workFolder_(workFolder) {}

  /// Packs everything in the work folder but the archive folder into `archiveName` + ".cab", moves that into the
  /// archive folder, empties the work folder otherwise, and tells in `made` what was made. Stopped when there is
  /// nothing to pack; fails when the archiver cannot be started, makes no archive or one that is not whole, would need
  /// a longer command line than Windows takes, or when there is more than an archive can hold.
  base::Outcome PackCategory(const std::string& archiveName, Incomplete incomplete, Archive& made) const;

  /// Moves every archive of the archive folder up into the work folder, once after all categories, and takes what then
  /// stands there into the set. The numbers of files that the set knows already are kept.
  base::Outcome CollectArchives(BackupSet& set) const;

  /// Packs the archives of the set into the joined archive in the archive folder, under the archives' names with ".tmp"
  /// added: so they cannot be taken for a set of their own. The archives have their names back afterwards, unless this
  /// failed. Stopped when there is none; fails as PackCategory.
  base::Outcome JoinArchives(const BackupSet& set) const;

  /// Unpacks `archive`, a path without ".cab", into the archive folder, which is made anew: nothing of an earlier
  /// archive must be taken for this one's. `copyFirst`: it is copied into the work folder before, and the copy deleted
  /// afterwards. StepFailed when the copy says so; fails when that copy
  /// fails otherwise or is short, or when the archiver cannot be started, reports a failure or leaves fewer files
  /// than the archive says that it has: half of an archive must not replace the data it was made from.
  base::Outcome ExtractArchive(const std::string& archive, bool copyFirst) const;

  /// Takes the archives that were joined, now unpacked in the archive folder, out of it under their own names.
  base::Outcome TakeJoinedArchivesOut() const;

 private:
  base::Outcome RunArchiver(const std::string& archive, const std::string& list, const FileTree& files,
                            Incomplete incomplete) const;
  base::Outcome CheckPacked(const std::string& archiveName, const FileTree& files) const;
  base::Outcome MoveToArchiveFolder(const std::string& archive) const;
  base::Outcome Rename(const std::vector<std::string>& from, const std::vector<std::string>& to) const;
  base::Outcome CopyIntoWorkFolder(const std::string& file) const;
  base::Outcome Unpack(const std::string& name) const;

  work::Tools tools_;
  const work::WorkFolder& workFolder_;
};

}  // namespace backupset
