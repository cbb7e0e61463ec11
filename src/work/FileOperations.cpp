// Copying, moving and deleting with their checks.
#include "work/FileOperations.h"

#include <limits>
#include <utility>
#include <vector>

#include "base/Path.h"
#include "base/Text.h"

namespace work {
namespace {

constexpr std::uint32_t kXcopyStopped = 4;  // wrong path, no memory, full disk

/// Of several steps that are all taken, the first failure counts.
void Keep(base::Outcome& first, base::Outcome next) {
  if (first.IsDone()) first = std::move(next);
}

}  // namespace

base::Outcome CopyFileByXcopy(const Tools& tools, const std::string& source, const std::string& destinationFolder,
                              const std::string& category) {
  const std::string command = "CMD /C xcopy " + base::Quoted(source) + " " + base::Quoted(destinationFolder) + " /S /Y";
  const ProgramEnd end = RunProgram(tools, command, category);
  if (end.Succeeded()) return base::Result::Done;
  const bool stopped = !end.exitCode || *end.exitCode == kXcopyStopped;
  return {stopped ? base::Result::Failed : base::Result::StepFailed, end.description};
}

base::Outcome CompareSizes(host::FileSystem& files, const std::string& source, const std::string& copy) {
  const std::int64_t size = files.FileSize(source);
  if (size >= 0 && files.FileSize(copy) == size) return base::Result::Done;
  return base::Failure("Copy is missing or has another size: " + copy);
}

base::Outcome CopyWholeFileByXcopy(const Tools& tools, const std::string& source, const std::string& destinationFolder,
                                   const std::string& category) {
  base::Outcome copied = CopyFileByXcopy(tools, source, destinationFolder, category);
  if (!copied.IsDone()) return copied;
  base::Outcome compared = CompareSizes(tools.files, source, destinationFolder + base::FileNameOf(source));
  if (!compared.IsDone()) tools.log.WarnOfLoss(compared.cause, category);
  return compared;
}

base::Outcome CopyFolderByXcopy(const Tools& tools, const std::string& sourceFolder,
                                const std::string& destinationFolder, const std::string& category) {
  const std::string source = base::WithoutTrailingBackslash(sourceFolder);
  return CopyFileByXcopy(tools, source, destinationFolder + base::FileNameOf(source) + "\\", category);
}

base::Outcome MoveFileToFolder(host::FileSystem& files, const std::string& source,
                               const std::string& destinationFolder) {
  return files.MoveTo(source, destinationFolder + base::FileNameOf(source));
}

MoveCount MoveFilesMatching(const Tools& tools, const std::string& folder, const std::string& pattern,
                            const std::string& destinationFolder) {
  const std::string from = base::WithTrailingBackslash(folder);
  MoveCount count;
  std::vector<host::FolderEntry> entries;
  count.outcome = tools.files.List(from, pattern, entries);
  for (const host::FolderEntry& entry : entries) {
    if (entry.isFolder) continue;
    base::Outcome moved = MoveFileToFolder(tools.files, from + entry.name, destinationFolder);
    if (moved.IsDone()) ++count.moved;
    Keep(count.outcome, std::move(moved));
    tools.messageLoop.Yield();
  }
  return count;
}

base::Outcome DeleteFolderForced(host::FileSystem& files, const std::string& folder) {
  return files.RemoveFolder(base::WithoutTrailingBackslash(folder));
}

base::Outcome DeleteFilesMatching(const Tools& tools, const std::string& folder, const std::string& pattern) {
  const std::string from = base::WithTrailingBackslash(folder);
  std::vector<host::FolderEntry> entries;
  base::Outcome outcome = tools.files.List(from, pattern, entries);
  for (const host::FolderEntry& entry : entries) {
    if (entry.isFolder) continue;
    Keep(outcome, tools.files.RemoveFile(from + entry.name));
    tools.messageLoop.Yield();
  }
  return outcome;
}

base::Outcome EmptyFolder(const Tools& tools, const std::string& folder, const std::string& keptFolder) {
  const std::string from = base::WithTrailingBackslash(folder);
  base::Outcome outcome = DeleteFilesMatching(tools, from, "*");
  std::vector<host::FolderEntry> entries;
  Keep(outcome, tools.files.List(from, "*", entries));
  for (const host::FolderEntry& entry : entries) {
    if (!entry.isFolder || base::SameName(entry.name, keptFolder)) continue;
    Keep(outcome, DeleteFolderForced(tools.files, from + entry.name));
  }
  return outcome;
}

base::Outcome EnsureFolder(host::FileSystem& files, const std::string& path) {
  const std::string folder = base::WithoutTrailingBackslash(path);
  if (folder.empty() || files.FolderExists(folder)) return base::Result::Done;
  if (base::Outcome parent = EnsureFolder(files, base::FolderOf(folder)); !parent.IsDone()) return parent;
  return files.MakeFolder(folder);
}

std::uint32_t GetFolderSize(const Tools& tools, const std::string& folder, const std::string& back) {
  const CurrentFolderScope inFolder(tools.files, folder, back);
  std::vector<host::FolderEntry> entries;
  static_cast<void>(tools.files.List(base::WithTrailingBackslash(folder), "*", entries));
  std::uint64_t sum = 0;
  for (const host::FolderEntry& entry : entries) sum += entry.size;
  constexpr std::uint32_t kLargest = std::numeric_limits<std::uint32_t>::max();
  if (sum <= kLargest) return static_cast<std::uint32_t>(sum);
  tools.log.WriteLog(app::LogLevel::Warning, "Size beyond 32 bits: " + folder);
  return kLargest;
}

}  // namespace work
