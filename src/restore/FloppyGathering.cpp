// Gathers the pieces of a floppy set disk by disk.
#include "restore/FloppyGathering.h"

#include <charconv>
#include <optional>
#include <string>
#include <vector>

#include "app/External.h"
#include "app/Messages.h"
#include "app/WindowsPath.h"
#include "backup/ArchivePieces.h"
#include "backup/Descriptor.h"
#include "backup/FileOperations.h"
#include "backup/StagingFolder.h"
#include "media/DriveStatus.h"
#include "media/Question.h"
#include "restore/Archives.h"

namespace restore {
namespace {

constexpr std::int32_t kNextDisk = 64406;
constexpr std::int32_t kWrongDisk = 64401;
constexpr std::int32_t kUnusableMedium = 63412;
constexpr std::int32_t kIncompleteDescriptor = 60427;
constexpr std::int32_t kPieceNotCopied = 63460;
constexpr std::int32_t kExtractionFailed = 60421;
constexpr std::int32_t kJoinFailed = 60326;
constexpr std::int32_t kProgressTitle = 60444;

app::ResultCode Fail(app::Application& application, std::int32_t message) {
  application.state.PendingMessageId = message;
  return app::kFailed;
}

/// A disk count or number as the descriptor holds it: plain decimal, from 1, within 16 bits.
std::optional<std::int16_t> ReadNumber(const std::string& text) {
  std::int16_t number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc() || end != text.data() + text.size() || number < 1) return std::nullopt;
  return number;
}

std::string DescriptorValue(app::Application& application, const std::string& key) {
  return app::ReadIniValue(application, application.state.SelectedFolder, backup::kDescriptorFile, key);
}

/// Waits until disk `number` is in the drive.
app::ResultCode WaitForDisk(app::Application& application, std::int16_t number) {
  const std::string drive = app::DriveLetterOf(application.state.SelectedFolder);
  for (;;) {
    switch (media::WaitForMedium(application, drive, media::kSourceMessages)) {
      case media::Medium::Stopped:
        return app::kStopped;
      case media::Medium::Readable:
        app::ShowMessage(application, kUnusableMedium);
        return app::kStopped;
      case media::Medium::Ready:
        break;
    }
    const std::string found = DescriptorValue(application, "FDNumber");
    if (found.empty()) return Fail(application, kIncompleteDescriptor);
    if (found == std::to_string(number)) return app::kDone;
    if (!media::Consents(application, kWrongDisk)) return app::kStopped;
    application.host.messageLoop.Yield();
  }
}

bool CopyPiece(app::Application& application, std::int16_t number) {
  const std::string name = backup::PieceName(number);
  const std::string source = application.state.SelectedFolder + name;
  const std::string& staging = application.state.StagingFolder;
  host::FileSystem& files = application.host.files;
  return application.host.shell.CopyWithProgress(source, staging, app::GetMessageText(application, kProgressTitle)) ==
             0 &&
         files.FileSize(staging + name) == files.FileSize(source);
}

// A set whose size is an exact multiple of the piece size declares one disk more than it has
// pieces: its last disk holds a descriptor alone, and all before it are full.
bool IsSurplusDisk(app::Application& application, std::int16_t number) {
  host::FileSystem& files = application.host.files;
  return !files.FileExists(application.state.SelectedFolder + backup::PieceName(number)) &&
         files.FileSize(application.state.StagingFolder + backup::PieceName(number - 1)) == backup::kPieceSize;
}

/// Copies what disk `number` of `count` holds; `pieces` counts the pieces that have come in.
app::ResultCode TakeDisk(app::Application& application, std::int16_t number, std::int16_t count, std::int32_t& pieces) {
  if (number != 1 && !media::Consents(application, kNextDisk)) return app::kStopped;
  if (const app::ResultCode waited = WaitForDisk(application, number); waited != app::kDone) return waited;
  const app::State& state = application.state;
  if (number == count) {
    if (backup::CopyFileByXcopy(application, state.SelectedFolder + backup::kDescriptorFile, state.StagingFolder) ==
        app::kFailed)
      return app::kFailed;
    if (IsSurplusDisk(application, number)) return app::kDone;
  }
  if (!CopyPiece(application, number)) return Fail(application, kPieceNotCopied);
  ++pieces;
  return app::kDone;
}

/// The category archives were packed under the names "*.cab.tmp".
app::ResultCode TakeArchivesOut(app::Application& application) {
  host::FileSystem& files = application.host.files;
  const std::string folder = backup::ArchiveFolder(application);
  std::vector<host::FolderEntry> entries;
  files.List(folder, "*.tmp", entries);
  for (const host::FolderEntry& entry : entries) {
    if (entry.isFolder) continue;
    const std::string name = folder + entry.name.substr(0, entry.name.rfind('.'));
    if (files.MoveTo(folder + entry.name, name) != 0 ||
        backup::MoveFileToFolder(application, name, application.state.StagingFolder) != app::kDone)
      return app::kFailed;
  }
  return app::kDone;
}

}  // namespace

app::ResultCode GatherSplitArchive(app::Application& application) {
  const auto count = ReadNumber(DescriptorValue(application, "FDCount"));
  if (!count) return Fail(application, kIncompleteDescriptor);
  std::int32_t pieces = 0;
  for (std::int32_t number = 1; number <= *count; ++number) {
    const app::ResultCode taken = TakeDisk(application, static_cast<std::int16_t>(number), *count, pieces);
    if (taken != app::kDone) return taken;
  }
  if (JoinPieces(application, pieces) != app::kDone) {
    app::ShowMessage(application, kJoinFailed);
    return app::kStopped;
  }
  if (ExtractArchive(application, application.state.StagingFolder + backup::kJoinedArchiveName, false) != app::kDone)
    return Fail(application, kExtractionFailed);
  return TakeArchivesOut(application);
}

}  // namespace restore
