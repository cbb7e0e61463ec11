// The line of a job that has ended in the list of past jobs.
#pragma once

#include "app/Application.h"
#include "backupset/BackupSet.h"

namespace backupset {

/// Lists a job of the signed-in operator that ends now: `set` tells where it went or came from, and what it is made of;
/// `categories` of them were saved or put back; `end` is the result, with the message that tells it.
void ListEndedJob(app::Application& application, app::JobKind kind, const BackupSet& set, const Categories& categories,
                  const app::Watch& job, const base::Outcome& end);

}  // namespace backupset
