// The list of studies that goes with a maintenance log backup.
#pragma once

#include <string>

#include "app/PathTable.h"
#include "host/Desktop.h"
#include "work/Programs.h"
#include "work/WorkFolder.h"

namespace maintenance {

/// The Windows user's desktop, "C:\" when it cannot be had. Ends in "\".
std::string DesktopFolder(host::Shell& shell);

/// Has the host export its list of studies, without personal information where that is to be protected,
/// moves it into the work folder and copies it to the operator's desktop. Fails when the export
/// cannot be started or leaves no list, or a copy fails; an unknown path-table entry also shows message
/// 60326. The work folder is current afterwards.
base::Outcome ExportStudyList(const work::Tools& tools, const app::PathTable& paths, host::Shell& shell,
                              const work::WorkFolder& workFolder, bool protectPersonalInfo);

/// Copies the exported list from the work folder to `destination`. Results as work::CopyWholeFileByXcopy.
base::Outcome CopyStudyList(const work::Tools& tools, const work::WorkFolder& workFolder,
                            const std::string& destination);

}  // namespace maintenance
