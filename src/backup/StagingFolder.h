// The work folder of one job, and the archive folder in it.
#pragma once

#include <string>

#include "app/Application.h"
#include "app/ResultCodes.h"

namespace backup {

/// The folder below the staging folder in which the archives are kept.
inline constexpr char kArchiveFolderName[] = "CABFILE";

/// Makes the folder named after this second below the system's temporary folder ("C:\" where there is
/// none), keeps it in `StagingFolder` and returns it; empty when it could not be made. A folder of
/// that name that exists already is taken as it is.
std::string CreateStagingFolder(app::Application& application);

/// Makes the program's own folder current and deletes the staging folder with all that is in it, if
/// it is there. kFailed when it could not be deleted: `StagingFolder` then keeps its path.
app::ResultCode RemoveStagingFolder(app::Application& application);

/// The archive folder's path; it may not exist yet.
std::string ArchiveFolder(const app::Application& application);

}  // namespace backup
