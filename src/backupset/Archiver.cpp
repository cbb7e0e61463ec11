// The archives of a set, made and unpacked by the host's archiver cabarc.
#include "backupset/Archiver.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <numeric>
#include <optional>
#include <utility>

#include "backupset/Pieces.h"
#include "base/Path.h"
#include "base/Text.h"
#include "base/Unicode.h"
#include "work/FileOperations.h"

namespace backupset {
namespace {

constexpr char kUnpackCommand[] = "cabarc -r -p X ";
constexpr char kEnding[] = ".cab";
constexpr char kJoinedEnding[] = ".tmp";  ///< of an archive within the joined one

/// A file as the archiver's argument. It takes a word that begins with "@" for a list of files, and one that
/// begins with "-" for an option.
std::string FileArgument(const std::string& name) {
  return work::CommandArgument(name.starts_with('@') || name.starts_with('-') ? ".\\" + name : name);
}

/// The archiver's arguments for what was gathered, each after a blank.
std::string ArgumentList(const std::vector<host::FolderEntry>& entries) {
  std::string list;
  for (const host::FolderEntry& entry : entries) {
    if (!entry.isFolder) {
      list += " " + FileArgument(entry.name);
    } else if (!base::SameName(entry.name, work::kArchiveFolderName)) {
      // The pattern itself is no reason for quotes: the archiver is started without a shell.
      const bool plain = work::CommandArgument(entry.name) == entry.name;
      const std::string contents = ".\\" + entry.name + "\\*.*";
      list += " " + (plain ? contents : base::Quoted(contents));
    }
  }
  return list;
}

bool IsArchiveOfASet(const std::string& name) {
  return std::ranges::any_of(kRestoreOrder, [&](Category category) {
    return base::SameName(name, std::string(RowOf(category).archive) + kEnding);
  });
}

std::size_t KnownFiles(const std::vector<Archive>& archives, const std::string& name) {
  const auto found = std::ranges::find(archives, name, &Archive::name);
  return found == archives.end() ? 0 : found->files;
}

void TellEmptyFolders(app::OperationLog& log, const FileTree& files, const std::string& category) {
  if (files.emptyFolders == 0) return;
  log.WriteLog(app::LogLevel::Information, "Empty folders, which an archive cannot hold: " +
                                               std::to_string(files.emptyFolders) + " (" + category + ")");
}

std::uint64_t BytesOf(const FileTree& files) {
  return std::accumulate(files.sizes.begin(), files.sizes.end(), std::uint64_t{0},
                         [](std::uint64_t sum, const auto& file) { return sum + file.second; });
}

/// How far the archiver is with an archive. It is asked to tell by an empty file that stands beside the archive under
/// its name with ".progress" added: it writes the bytes that it has read or unpacked there, as a decimal number. One
/// that does not know of this writes nothing.
class ArchiversWord {
 public:
  ArchiversWord(const work::Tools& tools, const std::string& archive)
      : files_(tools.files), path_(archive + ".progress"), asked_(tools.progress.IsShown()) {
    if (asked_) static_cast<void>(files_.CreateText(path_));  // without it, nothing is told
  }
  ~ArchiversWord() {
    if (asked_) static_cast<void>(files_.RemoveFile(path_));  // what stays goes with the folder
  }
  ArchiversWord(const ArchiversWord&) = delete;
  ArchiversWord& operator=(const ArchiversWord&) = delete;

  /// Bytes; nothing when it does not tell.
  std::optional<std::uint64_t> Told() const {
    const auto file = files_.OpenBinary(path_);
    std::array<char, 24> text{};
    const std::int64_t size = file ? file->Read(reinterpret_cast<std::byte*>(text.data()), text.size()) : 0;
    std::uint64_t bytes = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + std::max<std::int64_t>(size, 0), bytes);
    return error == std::errc() ? std::optional(bytes) : std::nullopt;
  }

 private:
  host::FileSystem& files_;
  const std::string path_;
  const bool asked_;
};

/// What the archiver has packed: by its word, else by the size of the archive and what became of the bytes before.
work::Sight Packed(const work::Tools& tools, const ArchiversWord& word, const std::string& archive) {
  return [&, archive] {
    if (const auto told = word.Told()) return *told;
    constexpr double kOften = 0.7;  // images are packed already
    const std::optional<double> share = tools.progress.PackedShare();
    if (!share) tools.progress.Doubt();
    const double size = static_cast<double>(work::SizeOfFile(tools.files, archive)());
    return static_cast<std::uint64_t>(size / share.value_or(kOften));
  };
}

/// One name that no archive can hold must not cost the others their archive.
void LeaveOutLongNames(const work::Tools& tools, const std::string& folder, const std::string& category,
                       FileTree& files) {
  app::NamedWarnings leftOut(tools.log, category);
  for (const std::string& path : TakeOutLongNames(files)) {
    leftOut.Add("Not saved, the name is longer than an archive can hold: " + path);
    static_cast<void>(tools.files.RemoveFile(folder + path));  // where it stays, the archive is not whole
  }
  leftOut.Conclude("Not saved, the name is longer than an archive can hold");
}

}  // namespace

work::ProgramEnd UnpackInFolder(const work::Tools& tools, const std::string& folder, const std::string& archive,
                                const std::string& target, const std::string& back, const std::string& category) {
  const work::CurrentFolderScope inFolder(tools.files, folder, back);
  if (!inFolder.Entered().IsDone()) return {false, std::nullopt, {}, inFolder.Entered().cause};
  const ArchiversWord word(tools, folder + archive);
  const work::Sight grown = work::SizeOfTree(tools.files, tools.messageLoop, folder + target);
  const work::Sight unpacked = [&] {
    const auto told = word.Told();
    return told ? *told : grown();
  };
  return work::RunProgram(tools, kUnpackCommand + archive + (target.empty() ? "" : " " + target), category,
                          host::Where::ProgramsOnly, unpacked);
}

void PlanPacking(app::Progress& progress, const std::string& archiveName, std::uint64_t bytes) {
  progress.Plan(app::Work::Packing, archiveName, bytes);
  progress.Plan(app::Work::Checking, archiveName, bytes);
}

base::Outcome Archiver::PackCategory(const std::string& archiveName, Incomplete incomplete, Archive& made) const {
  const std::string& staging = workFolder_.StagingFolder();
  const work::CurrentFolderScope inStaging(tools_.files, staging, workFolder_.ProgramFolder());
  if (!inStaging.Entered().IsDone()) return inStaging.Entered();
  FileTree files;
  if (base::Outcome listed = ListTree(tools_, staging, work::kArchiveFolderName, files); !listed.IsDone()) {
    return listed;
  }
  LeaveOutLongNames(tools_, staging, archiveName, files);
  if (files.sizes.empty()) return base::Result::Stopped;
  if (base::Outcome fits = CheckLimits(files); !fits.IsDone()) return fits;
  std::vector<host::FolderEntry> entries;
  if (base::Outcome listed = tools_.files.List(staging, "*", entries); !listed.IsDone()) return listed;
  TellEmptyFolders(tools_.log, files, archiveName);
  made = {archiveName + kEnding, 0, files.sizes.size()};
  base::Outcome packed = RunArchiver(archiveName, ArgumentList(entries), files, incomplete);
  if (packed.IsDone()) packed = MoveToArchiveFolder(staging + made.name);
  if (!packed.IsDone()) return packed;
  if (!work::EmptyFolder(tools_, staging, work::kArchiveFolderName).IsDone()) {
    tools_.log.WarnOfLoss("Staging folder not emptied: " + staging, archiveName);
  }
  return base::Result::Done;
}

/// Packs what `list` names, which is `files`.
base::Outcome Archiver::RunArchiver(const std::string& archiveName, const std::string& list, const FileTree& files,
                                    Incomplete incomplete) const {
  const std::string command = kPackCommand + archiveName + kEnding + list;
  if (base::WideLength(command) > work::kLongestCommandLine) {
    return base::Failure("Too many files for one command line: cabarc (" + archiveName + ")");
  }
  const std::string archive = workFolder_.StagingFolder() + archiveName + kEnding;
  PlanPacking(tools_.progress, archiveName, BytesOf(files));
  {
    const app::Progress::Part part(tools_.progress, app::Work::Packing, archiveName);
    const ArchiversWord word(tools_, archive);
    const work::ProgramEnd end =
        work::RunProgram(tools_, command, archiveName, host::Where::ProgramsOnly, Packed(tools_, word, archive));
    if (!end.started) return end.Started();
  }
  base::Outcome whole = CheckPacked(archiveName, files);
  if (whole.IsDone() || incomplete == Incomplete::Fails) return whole;
  tools_.log.WarnOfLoss(whole.cause, archiveName);
  return base::Result::Done;
}

base::Outcome Archiver::CheckPacked(const std::string& archiveName, const FileTree& files) const {
  const std::string archive = workFolder_.StagingFolder() + archiveName + kEnding;
  const std::uint64_t size = work::SizeOfFile(tools_.files, archive)();
  tools_.progress.NotePacked(BytesOf(files), size);
  tools_.progress.Plan(app::Work::Checking, archiveName, BytesOf(files), size);
  const app::Progress::Part part(tools_.progress, app::Work::Checking, archiveName);
  return CheckWhole(tools_, archive, files);
}

base::Outcome Archiver::MoveToArchiveFolder(const std::string& archive) const {
  const std::string folder = workFolder_.ArchiveFolder();
  // Where it cannot be made, the move says so.
  if (!tools_.files.FolderExists(folder)) static_cast<void>(tools_.files.MakeFolder(folder));
  return work::MoveFileToFolder(tools_.files, archive, folder);
}

base::Outcome Archiver::CollectArchives(BackupSet& set) const {
  const std::string& staging = workFolder_.StagingFolder();
  base::Outcome moved =
      work::MoveFilesMatching(tools_, workFolder_.ArchiveFolder(), std::string("*") + kEnding, staging).outcome;
  if (!moved.IsDone()) return moved;
  std::vector<host::FolderEntry> entries;
  if (base::Outcome listed = tools_.files.List(staging, std::string("*") + kEnding, entries); !listed.IsDone()) {
    return listed;
  }
  const std::vector<Archive> packed = std::exchange(set.archives, {});
  for (const host::FolderEntry& entry : entries) {
    if (!entry.isFolder) set.archives.push_back({entry.name, entry.size, KnownFiles(packed, entry.name)});
  }
  set.folder = staging;
  return base::Result::Done;
}

base::Outcome Archiver::Rename(const std::vector<std::string>& from, const std::vector<std::string>& to) const {
  const std::string& staging = workFolder_.StagingFolder();
  for (std::size_t i = 0; i < from.size(); ++i) {
    if (base::Outcome moved = tools_.files.MoveTo(staging + from[i], staging + to[i]); !moved.IsDone()) return moved;
  }
  return base::Result::Done;
}

base::Outcome Archiver::JoinArchives(const BackupSet& set) const {
  const std::string& staging = workFolder_.StagingFolder();
  const work::CurrentFolderScope inStaging(tools_.files, staging, workFolder_.ProgramFolder());
  if (!inStaging.Entered().IsDone()) return inStaging.Entered();
  if (set.archives.empty()) return base::Result::Stopped;
  std::vector<std::string> own;
  std::vector<std::string> within;
  std::string list;
  FileTree joined;
  for (const Archive& archive : set.archives) {
    own.push_back(archive.name);
    within.push_back(archive.name + kJoinedEnding);
    joined.sizes[within.back()] = archive.size;
    list += " " + work::CommandArgument(within.back());
  }
  if (base::Outcome renamed = Rename(own, within); !renamed.IsDone()) return renamed;
  base::Outcome packed = RunArchiver(kJoinedArchiveName, list, joined, Incomplete::Fails);
  if (!packed.IsDone()) return packed;
  if (base::Outcome moved = MoveToArchiveFolder(staging + kJoinedArchive); !moved.IsDone()) return moved;
  return Rename(within, own);
}

base::Outcome Archiver::CopyIntoWorkFolder(const std::string& file) const {
  const std::string& staging = workFolder_.StagingFolder();
  const std::string name = base::FileNameOf(file);
  const app::Progress::Part part(tools_.progress, app::Work::Copying, name);
  base::Outcome copied = work::CopyFileByXcopy(tools_, file, staging, name);
  return copied.IsDone() ? work::CompareSizes(tools_.files, file, staging + name) : copied;
}

base::Outcome Archiver::ExtractArchive(const std::string& archive, bool copyFirst) const {
  const std::string name = base::FileNameOf(archive) + kEnding;
  if (copyFirst) {
    if (base::Outcome copied = CopyIntoWorkFolder(archive + kEnding); !copied.IsDone()) return copied;
  }
  base::Outcome unpacked = Unpack(name);
  // Two sizes of an archive are enough on the disk. What cannot be deleted goes with the work folder.
  if (copyFirst) static_cast<void>(tools_.files.RemoveFile(workFolder_.StagingFolder() + name));
  return unpacked;
}

base::Outcome Archiver::Unpack(const std::string& name) const {
  const std::string archiveFolder = workFolder_.ArchiveFolder();
  if (tools_.files.FolderExists(archiveFolder)) {
    base::Outcome removed = work::DeleteFolderForced(tools_.files, archiveFolder);
    if (!removed.IsDone()) return removed;
  }
  // Where it cannot be made, the archiver makes it, or says so.
  static_cast<void>(tools_.files.MakeFolder(archiveFolder));
  // The archive folder is named relative to the work folder: the path above it may hold blanks,
  // and the archiver takes the name as it stands.
  const std::string& staging = workFolder_.StagingFolder();
  const app::Progress::Part part(tools_.progress, app::Work::Unpacking, name);
  const work::ProgramEnd end =
      UnpackInFolder(tools_, staging, name, work::kArchiveFolderName, workFolder_.ProgramFolder(), name);
  if (!end.Succeeded()) return base::Failure(end.Cause());
  FileTree files;
  if (base::Outcome listed = ListTree(tools_, archiveFolder, {}, files); !listed.IsDone()) return listed;
  return CheckUnpacked(tools_.files, staging + name, files);
}

base::Outcome Archiver::TakeJoinedArchivesOut() const {
  const std::string folder = workFolder_.ArchiveFolder();
  std::vector<host::FolderEntry> entries;
  static_cast<void>(tools_.files.List(folder, std::string("*") + kJoinedEnding, entries));
  for (const host::FolderEntry& entry : entries) {
    const std::string name = entry.name.substr(0, entry.name.rfind('.'));
    // The disks may be anybody's, and programs are started from this folder's neighbourhood.
    if (entry.isFolder || !IsArchiveOfASet(name)) continue;
    const std::string archive = folder + name;
    if (base::Outcome renamed = tools_.files.MoveTo(folder + entry.name, archive); !renamed.IsDone()) return renamed;
    base::Outcome moved = work::MoveFileToFolder(tools_.files, archive, workFolder_.StagingFolder());
    if (!moved.IsDone()) return moved;
  }
  return base::Result::Done;
}

}  // namespace backupset
