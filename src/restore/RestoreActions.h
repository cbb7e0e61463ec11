// What a restore section does with an unpacked category, one routine per item kind.
//
// Each returns kDone, or kFailed for an unknown path variable (message 60326 was shown).
#pragma once

#include <string>

#include "app/Application.h"
#include "app/ResultCodes.h"
#include "backup/JobDefinitions.h"

namespace restore {

/// Copies each item's file from the archive folder to its own folder. A copy that fails is logged
/// and passed over: a set may lawfully lack a file.
app::ResultCode RestoreCommonFiles(app::Application& application, const backup::JobDefinitions& definitions,
                                   const std::string& section);

/// Runs each item in its own folder. One that cannot be started ends the kind without a failure.
app::ResultCode RunBatchFiles(app::Application& application, const backup::JobDefinitions& definitions,
                              const std::string& section);

/// Copies each item's folder from the archive folder back to its place; an item whose parent folder
/// does not exist is passed over.
app::ResultCode RestoreFolders(app::Application& application, const backup::JobDefinitions& definitions,
                               const std::string& section);

}  // namespace restore
