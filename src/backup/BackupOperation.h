// The ordinary backup, as the selection dialog sees it.
#pragma once

#include <string>

#include "backup/Categories.h"
#include "backup/JobContext.h"
#include "backup/WritingOperation.h"

namespace backup {

class BackupOperation : public WritingOperation {
 public:
  BackupOperation(const JobContext& job, const CategoryChoice& choice)
      : WritingOperation(job.application, app::Operation::Backup), job_(job), choice_(choice) {}

  /// A new folder on the media drive, named after this second.
  std::string ProposeFolder() override;

  /// Runs the backup driver and keeps `BackupDone`.
  app::ResultCode Run() override;

 private:
  JobContext job_;
  CategoryChoice choice_;
};

}  // namespace backup
