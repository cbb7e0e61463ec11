// Writes a backup set to floppies: joined, cut into pieces, one piece a disk.
#pragma once

#include "backupset/SetWriter.h"

namespace backupset {

/// Joins the archives of the work folder, cuts the result, and writes disk by disk: asks for the
/// disk, formats and labels it, and puts its descriptor and its piece on it. Nothing but the joined
/// archive and its pieces is left in the archive folder. Stopped when the operator stopped or an error
/// was shown; a failure may carry a message.
base::Outcome WriteToFloppies(app::Application& application, media::MediaDrives& drives, const Writing& writing);

}  // namespace backupset
