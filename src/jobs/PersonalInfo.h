// Hands files and images to the host's filter, which leaves out the patients on the host's list.
#pragma once

#include <cstdint>
#include <string>

#include "jobs/Items.h"

namespace jobs {

/// Has the filter copy each `PersonalInfo` item of a loaded section into the work folder. The first non-zero answer of
/// the filter goes into `PersonalInfoResult`, which is 0 otherwise, and stops nothing. Fails when the filter or its
/// list database is missing (no message), a path variable is unknown (message 60326), or the image range cannot be
/// written.
base::Outcome ApplyPersonalInfoList(const Job& job, const std::string& section, std::int32_t& PersonalInfoResult);

}  // namespace jobs
