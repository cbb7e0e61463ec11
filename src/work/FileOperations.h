// Copying, moving and deleting with their checks, as backup, restore and maintenance share them.
//
// All take full paths; where nothing else is said a failure is what the system raised an error for.
#pragma once

#include <cstdint>
#include <string>

#include "work/Programs.h"

namespace work {

/// Runs "CMD /C xcopy" on a file, a file pattern or a folder and waits; what grows meanwhile is seen by `sight`.
/// Nothing is logged.
ProgramEnd RunXcopy(const Tools& tools, const std::string& source, const std::string& destination, const Sight& sight);

/// Done for exit code 0, Failed for 4 or a command that could not be run, StepFailed for any other code.
base::Outcome OutcomeOfXcopy(const ProgramEnd& end);

/// Copies a file or a file pattern by xcopy. A failure is logged with `category`. `destinationFolder` must end in "\".
base::Outcome CopyFileByXcopy(const Tools& tools, const std::string& source, const std::string& destinationFolder,
                              const std::string& category = {});

/// Done when both files are there and of one size: what a copy reported is not all that can be known of it.
base::Outcome CompareSizes(host::FileSystem& files, const std::string& source, const std::string& copy);

/// Done when `copy`, read from its medium past the system's cache, holds the bytes of `source`. Serves the user
/// interface meanwhile and tells the job's progress what was read; needs the same memory for any size.
base::Outcome CompareOnMedium(const Tools& tools, const std::string& source, const std::string& copy);

/// CopyFileByXcopy for one file, and the comparison; a copy that is short or missing is logged.
base::Outcome CopyWholeFileByXcopy(const Tools& tools, const std::string& source, const std::string& destinationFolder,
                                   const std::string& category = {});

/// Moves a file under its own name. `destinationFolder` must end in "\"; a file of that name there
/// is an error.
base::Outcome MoveFileToFolder(host::FileSystem& files, const std::string& source,
                               const std::string& destinationFolder);

/// How a move of several files went.
struct MoveCount {
  int moved = 0;
  base::Outcome outcome;  ///< the first failure; what could be moved was moved all the same
};

/// Moves every file (no folder) of `folder` whose name fits `pattern`, serving the user interface
/// between files.
MoveCount MoveFilesMatching(const Tools& tools, const std::string& folder, const std::string& pattern,
                            const std::string& destinationFolder);

/// Deletes a folder with all that is in it, read-only or not. A "\" at its end does not matter.
base::Outcome DeleteFolderForced(host::FileSystem& files, const std::string& folder);

/// Deletes every file directly in `folder` whose name fits `pattern`, read-only or not; folders stay. Goes on after a
/// failure and reports the first one at the end.
base::Outcome DeleteFilesMatching(const Tools& tools, const std::string& folder, const std::string& pattern);

/// Deletes everything in `folder` but the folder named `keptFolder`. Goes on after a failure and
/// reports the first one at the end.
base::Outcome EmptyFolder(const Tools& tools, const std::string& folder, const std::string& keptFolder);

/// Creates a folder and those above it that are missing.
base::Outcome EnsureFolder(host::FileSystem& files, const std::string& path);

/// Bytes of the files directly in `folder`; 0 when it cannot be listed. `back` is the current folder afterwards.
std::uint64_t GetFolderSize(const Tools& tools, const std::string& folder, const std::string& back);

}  // namespace work
