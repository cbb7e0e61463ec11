// Bringing archives in: joining the pieces of a floppy set, and unpacking.
//
// The program's own folder is current again after each of these, also after a failure.
#pragma once

#include <cstdint>
#include <string>

#include "app/Application.h"
#include "app/ResultCodes.h"

namespace restore {

/// Where the category archives of a set are taken from.
struct ArchiveSource {
  std::string folder;      ///< ends in "\"
  bool copyFirst = false;  ///< whether they must be copied into the staging folder first
};

/// Joins `count` pieces in the staging folder into the joined archive by one binary copy of the
/// command interpreter. kFailed when it cannot be started, or leaves anything but all the bytes:
/// with a command line beyond its limit it writes nothing and reports success.
app::ResultCode JoinPieces(app::Application& application, std::int32_t count);

/// Unpacks `archive`, a path without ".cab", into the archive folder, which is created where it is
/// missing. kStepFailed when the copy into the staging folder says so; kFailed when that copy fails
/// otherwise or is short, or when the archiver cannot be started, reports a failure or leaves fewer files
/// than the archive says that it has: half of an archive must not replace the data it was made from.
app::ResultCode ExtractArchive(app::Application& application, const std::string& archive, bool copyFirst);

}  // namespace restore
