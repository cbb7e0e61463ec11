// Runs one section of the job-definition file and packs what it gathers.
#pragma once

#include <string>

#include "backup/JobContext.h"

namespace backup {

/// Gathers the items of a loaded section into the staging folder and packs them into `archiveName`
/// + ".cab" in the archive folder. Returns how many item kinds produced output; 0 when the section
/// yields nothing or failed, and then there is no archive.
int RunSectionItems(const JobContext& job, const std::string& section, const std::string& archiveName);

}  // namespace backup
