// The list of studies that goes with a maintenance log backup.
#pragma once

#include "app/Application.h"
#include "app/ResultCodes.h"

namespace maintenance {

/// Has the host export its list of studies, without personal information where that is protected,
/// moves it into the staging folder and copies it to the operator's desktop. kFailed when the export
/// cannot be started or leaves no list, or a copy fails; an unknown path-table entry also shows message
/// 60326. The staging folder is current afterwards.
app::ResultCode ExportStudyList(app::Application& application);

/// Copies the exported list from the staging folder to `SelectedFolder`. Results as
/// backup::CopyWholeFileByXcopy.
app::ResultCode CopyStudyListToDestination(app::Application& application);

}  // namespace maintenance
