// Collects the images of recent studies.
#pragma once

#include <cstdint>
#include <string>

#include "app/PathTable.h"
#include "host/Components.h"
#include "work/Programs.h"

namespace jobs {

/// The part of the job's progress that CopyRecentImages() is.
inline constexpr char kRecentImages[] = "recent images";

/// Copies the image files of the studies of the last `days` days into `folder`, which ends in "\", as they stand below
/// the host's image folder. Files on other computers, and those outside the image folder as the path table writes it,
/// letter case included, stay where they are. A file that cannot be copied is logged and passed over; an unknown image
/// folder shows message 60326.
void CopyRecentImages(const work::Tools& tools, const app::PathTable& paths, host::ComponentFactory& components,
                      const std::string& folder, std::int32_t days);

}  // namespace jobs
