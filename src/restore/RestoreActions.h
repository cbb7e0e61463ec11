// What a restore section does with an unpacked category, one routine per item kind.
//
// Each is Done, or fails for an unknown path variable (message 60326 was shown).
#pragma once

#include <string>

#include "app/PathTable.h"
#include "jobs/JobDefinitions.h"
#include "work/Programs.h"
#include "work/WorkFolder.h"

namespace restore {

/// What the actions use, and where unpacked data and the host's folders are.
struct Putting {
  work::Tools tools;
  const app::PathTable& paths;
  const jobs::JobDefinitions& definitions;
  const work::WorkFolder& workFolder;
  const std::string& ApplicationRootFolder;
};

/// Copies each item's file from the archive folder to its own folder. What cannot be copied is logged and passed over:
/// a set may lawfully lack a file.
base::Outcome RestoreCommonFiles(const Putting& putting, const std::string& section);

/// Runs each item in its own folder. One that cannot be started ends the kind without a failure.
base::Outcome RunBatchFiles(const Putting& putting, const std::string& section);

/// Copies each item's folder from the archive folder back to its place; an item whose parent folder
/// does not exist is passed over.
base::Outcome RestoreFolders(const Putting& putting, const std::string& section);

}  // namespace restore
