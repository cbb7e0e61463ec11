// The line of a job that has ended.
#include "backupset/EndedJob.h"

namespace backupset {
namespace {

std::string WordsOf(const Categories& categories) {
  std::string words;
  for (const Category category : kRestoreOrder) {
    if (!categories.contains(category)) continue;
    words += (words.empty() ? "" : " ") + std::string(RowOf(category).versionKey);
  }
  return words;
}

}  // namespace

void ListEndedJob(app::Application& application, app::JobKind kind, const std::string& folder, const BackupSet& set,
                  const Categories& categories, const app::Watch& job, const base::Outcome& end) {
  app::PastJob line;
  line.ended = application.host.clock.Now();
  line.kind = kind;
  line.result = end.result;
  line.message = end.PendingMessageId;
  line.user = application.state.UserId;
  line.folder = folder;
  line.categories = WordsOf(categories);
  for (const Archive& archive : set.archives) {
    line.files += archive.files;
    line.bytes += archive.size;
  }
  line.warnings = job.Warnings();
  line.seconds = job.Seconds();
  application.pastJobs.Append(line);
}

}  // namespace backupset
