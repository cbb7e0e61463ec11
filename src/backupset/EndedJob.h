// The line of a job that has ended in the list of past jobs.
#pragma once

#include "app/Application.h"
#include "backupset/BackupSet.h"

namespace backupset {

/// Lists a job of the signed-in operator that ends now. `folder` is its destination or source, empty where it had none
/// yet; `set` tells the archives; `categories` of it were saved or put back; `end` is the result, with the message that
/// tells it.
void ListEndedJob(app::Application& application, app::JobKind kind, const std::string& folder, const BackupSet& set,
                  const Categories& categories, const app::Watch& job, const base::Outcome& end);

}  // namespace backupset
