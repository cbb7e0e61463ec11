// The file operations that backup, restore and maintenance share.
#include "backup/FileOperations.h"

#include <limits>
#include <vector>

#include "app/External.h"
#include "app/Log.h"
#include "app/WindowsPath.h"
#include "backup/Programs.h"

namespace backup {
namespace {

constexpr std::uint32_t kXcopyStopped = 4;  // wrong path, no memory, full disk

app::ResultCode RunXcopy(app::Application& application, const std::string& source, const std::string& destination,
                         const std::string& category) {
  const std::string command = "CMD /C xcopy " + app::Quoted(source) + " " + app::Quoted(destination) + " /S /Y";
  const ProgramEnd end = RunProgram(application, command, category);
  if (end.Succeeded()) return app::kDone;
  return !end.exitCode || *end.exitCode == kXcopyStopped ? app::kFailed : app::kStepFailed;
}

app::ResultCode ResultOf(std::int32_t hostAnswer) {
  return hostAnswer == 0 ? app::kDone : app::kFailed;
}

}  // namespace

app::ResultCode CopyFileByXcopy(app::Application& application, const std::string& source,
                                const std::string& destinationFolder, const std::string& category) {
  return RunXcopy(application, source, destinationFolder, category);
}

app::ResultCode CopyWholeFileByXcopy(app::Application& application, const std::string& source,
                                     const std::string& destinationFolder, const std::string& category) {
  const app::ResultCode result = CopyFileByXcopy(application, source, destinationFolder, category);
  if (result != app::kDone) return result;
  host::FileSystem& files = application.host.files;
  const std::string copy = destinationFolder + app::FileNameOf(source);
  const std::int64_t size = files.FileSize(source);
  if (size >= 0 && files.FileSize(copy) == size) return app::kDone;
  WarnOfLoss(application, "Copy is missing or has another size: " + copy, category);
  return app::kFailed;
}

app::ResultCode CopyFolderByXcopy(app::Application& application, const std::string& sourceFolder,
                                  const std::string& destinationFolder, const std::string& category) {
  const std::string source = app::WithoutTrailingBackslash(sourceFolder);
  return RunXcopy(application, source, destinationFolder + app::FileNameOf(source) + "\\", category);
}

app::ResultCode MoveFileToFolder(app::Application& application, const std::string& source,
                                 const std::string& destinationFolder) {
  return ResultOf(application.host.files.MoveTo(source, destinationFolder + app::FileNameOf(source)));
}

MoveCount MoveFilesMatching(app::Application& application, const std::string& folder, const std::string& pattern,
                            const std::string& destinationFolder) {
  const std::string from = app::WithTrailingBackslash(folder);
  MoveCount count;
  std::vector<host::FolderEntry> entries;
  if (application.host.files.List(from, pattern, entries) != 0) count.failed = 1;
  for (const host::FolderEntry& entry : entries) {
    if (entry.isFolder) continue;
    const bool moved = MoveFileToFolder(application, from + entry.name, destinationFolder) == app::kDone;
    ++(moved ? count.moved : count.failed);
    application.host.messageLoop.Yield();
  }
  return count;
}

app::ResultCode DeleteFileForced(app::Application& application, const std::string& path) {
  return ResultOf(application.host.files.RemoveFile(path));
}

app::ResultCode DeleteFolderForced(app::Application& application, const std::string& folder) {
  return ResultOf(application.host.files.RemoveFolder(app::WithoutTrailingBackslash(folder)));
}

app::ResultCode DeleteFilesMatching(app::Application& application, const std::string& folder,
                                    const std::string& pattern) {
  const std::string from = app::WithTrailingBackslash(folder);
  std::vector<host::FolderEntry> entries;
  app::ResultCode result = ResultOf(application.host.files.List(from, pattern, entries));
  for (const host::FolderEntry& entry : entries) {
    if (entry.isFolder) continue;
    if (DeleteFileForced(application, from + entry.name) != app::kDone) result = app::kFailed;
    application.host.messageLoop.Yield();
  }
  return result;
}

app::ResultCode EmptyFolder(app::Application& application, const std::string& folder, const std::string& keptFolder) {
  const std::string from = app::WithTrailingBackslash(folder);
  app::ResultCode result = DeleteFilesMatching(application, from, "*");
  std::vector<host::FolderEntry> entries;
  if (application.host.files.List(from, "*", entries) != 0) result = app::kFailed;
  for (const host::FolderEntry& entry : entries) {
    if (!entry.isFolder || app::SameName(entry.name, keptFolder)) continue;
    if (DeleteFolderForced(application, from + entry.name) != app::kDone) result = app::kFailed;
  }
  return result;
}

std::uint32_t GetFolderSize(app::Application& application, const std::string& folder) {
  const app::CurrentFolderScope inFolder(application, folder, application.state.StartupDirectory);
  std::vector<host::FolderEntry> entries;
  application.host.files.List(app::WithTrailingBackslash(folder), "*", entries);
  std::uint64_t sum = 0;
  for (const host::FolderEntry& entry : entries) sum += entry.size;
  constexpr std::uint32_t kLargest = std::numeric_limits<std::uint32_t>::max();
  if (sum <= kLargest) return static_cast<std::uint32_t>(sum);
  app::WriteLog(application, 1, app::LogLevel::Warning, "Size beyond 32 bits: " + folder);
  return kLargest;
}

}  // namespace backup
