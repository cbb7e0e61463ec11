// Gathers the pieces of a floppy set disk by disk.
#pragma once

#include "app/Application.h"
#include "backupset/BackupSet.h"
#include "media/MediaDrives.h"
#include "work/WorkFolder.h"

namespace backupset {

/// Asks for each disk of the set, copies its piece into the work folder, joins the pieces and unpacks them, so that
/// the category archives stand in the work folder. A disk of another set is not taken. Stopped when the operator
/// stopped or an error was shown; a failure may carry a message.
base::Outcome GatherSplitArchive(app::Application& application, media::MediaDrives& drives, const BackupSet& set,
                                 const work::WorkFolder& workFolder);

}  // namespace backupset
