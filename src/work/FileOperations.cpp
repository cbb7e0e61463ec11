// Copying, moving and deleting with their checks.
#include "work/FileOperations.h"

#include <cstddef>
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

constexpr std::size_t kBlock = std::size_t{1} << 20;  // bytes that are compared at once

/// Fills the block unless the file ends before; what it holds then is its size. False when it cannot be read.
bool ReadBlock(host::BinaryReader& reader, std::vector<std::byte>& block) {
  block.resize(kBlock);
  std::size_t have = 0;
  std::int64_t got = 1;
  while (have < block.size() && got > 0) {
    got = reader.Read(block.data() + have, block.size() - have);
    have += got > 0 ? static_cast<std::size_t>(got) : 0;
  }
  block.resize(have);
  return got >= 0;
}

/// Whether both go on alike to their ends.
bool HoldTheSame(const Tools& tools, host::BinaryReader& left, host::BinaryReader& right) {
  std::vector<std::byte> one;
  std::vector<std::byte> other;
  do {
    if (!ReadBlock(left, one) || !ReadBlock(right, other) || one != other) return false;
    tools.progress.Advance(one.size());
    tools.messageLoop.Yield();
  } while (one.size() == kBlock);
  return true;
}

}  // namespace

ProgramEnd RunXcopy(const Tools& tools, const std::string& source, const std::string& destination, const Sight& sight) {
  // The interpreter looks in the current folder first, and gathered files may bear any name, its tools' too.
  const CurrentFolderScope inOwnFolder(tools.files, tools.programFolder, tools.files.CurrentFolder());
  const std::string paths = base::Quoted(source) + " " + base::Quoted(destination);
  return RunAndWait(tools, "CMD /C xcopy " + paths + " /S /Y", host::Where::ProgramsOnly, sight);
}

base::Outcome OutcomeOfXcopy(const ProgramEnd& end) {
  if (end.Succeeded()) return base::Result::Done;
  const bool stopped = !end.exitCode || *end.exitCode == kXcopyStopped;
  return {stopped ? base::Result::Failed : base::Result::StepFailed, end.Cause()};
}

base::Outcome CopyFileByXcopy(const Tools& tools, const std::string& source, const std::string& destinationFolder,
                              const std::string& category) {
  const Sight copy = SizeOfFile(tools.files, destinationFolder + base::FileNameOf(source));
  base::Outcome copied = OutcomeOfXcopy(RunXcopy(tools, source, destinationFolder, copy));
  if (!copied.IsDone()) tools.log.WarnOfLoss(copied.cause, category);
  return copied;
}

base::Outcome CompareSizes(host::FileSystem& files, const std::string& source, const std::string& copy) {
  const std::int64_t size = files.FileSize(source);
  if (size >= 0 && files.FileSize(copy) == size) return base::Result::Done;
  return base::Failure("Copy is missing or has another size: " + copy);
}

base::Outcome CompareOnMedium(const Tools& tools, const std::string& source, const std::string& copy) {
  const auto wanted = tools.files.OpenBinary(source);
  if (!wanted) return wanted.Why();
  const auto there = tools.files.OpenUncached(copy);
  if (!there) return there.Why();
  if (HoldTheSame(tools, *wanted, *there)) return base::Result::Done;
  return base::Failure("Copy cannot be read back as it was written: " + copy);
}

base::Outcome CopyWholeFileByXcopy(const Tools& tools, const std::string& source, const std::string& destinationFolder,
                                   const std::string& category) {
  base::Outcome copied = CopyFileByXcopy(tools, source, destinationFolder, category);
  if (!copied.IsDone()) return copied;
  base::Outcome compared = CompareSizes(tools.files, source, destinationFolder + base::FileNameOf(source));
  if (!compared.IsDone()) tools.log.WarnOfLoss(compared.cause, category);
  return compared;
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

std::uint64_t GetFolderSize(const Tools& tools, const std::string& folder, const std::string& back) {
  const CurrentFolderScope inFolder(tools.files, folder, back);
  return BytesIn(tools.files, folder);
}

}  // namespace work
