// Writes the archives and their descriptor to one medium or folder.
#pragma once

#include "backupset/SetWriter.h"

namespace backupset {

/// Checks and, where it must be, formats and labels the medium of the destination, checks its space,
/// asks before it uses a foreign volume, makes a folder or overwrites, then writes the descriptor into
/// the work folder and copies it with every archive. A file that does not arrive in its full size
/// is a failed copy. Stopped when the operator stopped or an error was shown; a failure may carry a message.
base::Outcome CopyToDestination(app::Application& application, media::MediaDrives& drives, const Writing& writing);

}  // namespace backupset
