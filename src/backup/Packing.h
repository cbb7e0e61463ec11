// Category archives: one cabinet per category, made by the external archiver cabarc.
#pragma once

#include <string>

#include "app/Application.h"
#include "app/ResultCodes.h"

namespace backup {

/// What every archiver command that makes a cabinet begins with; the cabinet's name follows.
inline constexpr char kPackCommand[] = "cabarc -r -p n ";

/// Packs everything in the staging folder but the archive folder into `archiveName` + ".cab", moves
/// that into the archive folder, and empties the staging folder otherwise. kStopped when there is
/// nothing to pack; kFailed when the archiver cannot be started, makes no archive, or would need a
/// longer command line than Windows takes. The program's own folder is current afterwards.
app::ResultCode PackCategory(app::Application& application, const std::string& archiveName);

/// Packs every archive of the staging folder into `name` + ".cab" in the archive folder, under the
/// archives' names with ".tmp" added: so they cannot be taken for a set of their own. The archives have
/// their names back afterwards, unless this failed. kStopped when there is none; kFailed as PackCategory.
app::ResultCode JoinArchives(app::Application& application, const std::string& name);

/// Moves every archive of the archive folder up into the staging folder: once, after all categories.
app::ResultCode CollectArchives(app::Application& application);

}  // namespace backup
