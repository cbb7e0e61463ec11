// Bringing archives in: joining the pieces of a floppy set, and unpacking.
#include "restore/Archives.h"

#include "app/External.h"
#include "app/WindowsPath.h"
#include "backup/ArchivePieces.h"
#include "backup/CabinetCheck.h"
#include "backup/FileOperations.h"
#include "backup/Programs.h"
#include "backup/StagingFolder.h"

namespace restore {
namespace {

constexpr char kUnpackCommand[] = "cabarc -r -p X ";

/// Bytes of the first `count` pieces; -1 when one is missing.
std::int64_t SizeOfPieces(app::Application& application, std::int32_t count) {
  std::int64_t sum = 0;
  for (std::int32_t i = 1; i <= count; ++i) {
    const std::int64_t size = application.host.files.FileSize(application.state.StagingFolder + backup::PieceName(i));
    if (size < 0) return -1;
    sum += size;
  }
  return sum;
}

app::ResultCode CopyIntoStaging(app::Application& application, const std::string& file) {
  const std::string& staging = application.state.StagingFolder;
  const app::ResultCode copied = backup::CopyFileByXcopy(application, file, staging, app::FileNameOf(file));
  if (copied != app::kDone) return copied;
  host::FileSystem& files = application.host.files;
  return files.FileSize(staging + app::FileNameOf(file)) == files.FileSize(file) ? app::kDone : app::kFailed;
}

/// Whether the archive folder holds something, and no fewer files than the archive says that it has.
bool CameOutWhole(app::Application& application, const std::string& archive) {
  const std::size_t files = backup::CountFiles(application, backup::ArchiveFolder(application));
  const auto header = backup::ReadCabinetHeader(application, archive);
  return files > 0 && header && files >= header->files;
}

}  // namespace

app::ResultCode JoinPieces(app::Application& application, std::int32_t count) {
  std::string list;
  for (std::int32_t i = 1; i <= count; ++i) list += backup::PieceName(i) + (i < count ? " + " : " ");
  const std::string joined = std::string(backup::kJoinedArchiveName) + ".cab";
  const std::string& staging = application.state.StagingFolder;
  const app::CurrentFolderScope inStaging(application, staging, application.state.StartupDirectory);
  if (!inStaging.Entered() || !backup::RunProgram(application, "CMD /C Copy /B " + list + joined, joined).started)
    return app::kFailed;
  const std::int64_t size = application.host.files.FileSize(staging + joined);
  return size > 0 && size == SizeOfPieces(application, count) ? app::kDone : app::kFailed;
}

app::ResultCode ExtractArchive(app::Application& application, const std::string& archive, bool copyFirst) {
  if (copyFirst) {
    const app::ResultCode copied = CopyIntoStaging(application, archive + ".cab");
    if (copied != app::kDone) return copied;
  }
  const std::string archiveFolder = backup::ArchiveFolder(application);
  if (!application.host.files.FolderExists(archiveFolder)) application.host.files.MakeFolder(archiveFolder);
  const app::CurrentFolderScope inStaging(application, application.state.StagingFolder,
                                          application.state.StartupDirectory);
  if (!inStaging.Entered()) return app::kFailed;
  // The archive folder is named relative to the staging folder: the path above it may hold blanks,
  // and the archiver takes the name as it stands.
  const std::string name = app::FileNameOf(archive);
  const std::string command = kUnpackCommand + name + ".cab " + backup::kArchiveFolderName;
  if (!backup::RunProgram(application, command, name).Succeeded()) return app::kFailed;
  return CameOutWhole(application, application.state.StagingFolder + name + ".cab") ? app::kDone : app::kFailed;
}

}  // namespace restore
