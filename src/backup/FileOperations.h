// The file operations that backup, restore and maintenance share.
//
// All take full paths and return kDone, or kFailed when the system raised an error; further codes
// are named where they occur.
#pragma once

#include <cstdint>
#include <string>

#include "app/Application.h"
#include "app/ResultCodes.h"

namespace backup {

/// Runs "CMD /C xcopy" on a file or a file pattern and waits. kDone for exit code 0, kFailed for 4 or
/// a command that could not be run, kStepFailed for any other code. A failure is logged with `category`.
/// `destinationFolder` must end in "\".
app::ResultCode CopyFileByXcopy(app::Application& application, const std::string& source,
                                const std::string& destinationFolder, const std::string& category = {});

/// The same for one file; when it does not stand in `destinationFolder` in its full size afterwards, that
/// is logged and kFailed.
app::ResultCode CopyWholeFileByXcopy(app::Application& application, const std::string& source,
                                     const std::string& destinationFolder, const std::string& category = {});

/// Copies a folder with all that is in it, which comes to stand under its own name in
/// `destinationFolder`. Results as CopyFileByXcopy.
app::ResultCode CopyFolderByXcopy(app::Application& application, const std::string& sourceFolder,
                                  const std::string& destinationFolder, const std::string& category = {});

/// Moves a file under its own name. `destinationFolder` must end in "\"; a file of that name there
/// is an error.
app::ResultCode MoveFileToFolder(app::Application& application, const std::string& source,
                                 const std::string& destinationFolder);

/// How a move of several files went.
struct MoveCount {
  int moved = 0;
  int failed = 0;
};

/// Moves every file (no folder) of `folder` whose name fits `pattern`, serving the user interface
/// between files. A folder that cannot be listed counts as one failure.
MoveCount MoveFilesMatching(app::Application& application, const std::string& folder, const std::string& pattern,
                            const std::string& destinationFolder);

/// Deletes a file, read-only or not.
app::ResultCode DeleteFileForced(app::Application& application, const std::string& path);

/// Deletes a folder with all that is in it, read-only or not. A "\" at its end does not matter.
app::ResultCode DeleteFolderForced(app::Application& application, const std::string& folder);

/// Deletes every file directly in `folder` whose name fits `pattern`; folders stay. Goes on after a
/// failure and reports it at the end.
app::ResultCode DeleteFilesMatching(app::Application& application, const std::string& folder,
                                    const std::string& pattern);

/// Deletes everything in `folder` but the folder named `keptFolder`. Goes on after a failure and
/// reports it at the end.
app::ResultCode EmptyFolder(app::Application& application, const std::string& folder, const std::string& keptFolder);

/// Bytes of the files directly in `folder`; 0 when it cannot be listed. A sum beyond 32 bits stands
/// at the largest number, so that no space check takes it for less than it is. The program's own
/// folder is current afterwards.
std::uint32_t GetFolderSize(app::Application& application, const std::string& folder);

}  // namespace backup
