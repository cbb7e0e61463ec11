// Hands files and images to the host's filter, which leaves out the patients on the host's list.
#pragma once

#include <string>

#include "app/Application.h"
#include "app/ResultCodes.h"
#include "backup/JobDefinitions.h"

namespace maintenance {

/// Has the filter copy each `PersonalInfo` item of a loaded section into the staging folder. The first
/// non-zero answer of the filter goes into `PersonalInfoResult` and stops nothing. kFailed when the
/// filter or its list database is missing (no message), a path variable is unknown (message 60326), or
/// the image range cannot be written.
app::ResultCode ApplyPersonalInfoList(app::Application& application, const backup::JobDefinitions& definitions,
                                      const std::string& section);

}  // namespace maintenance
