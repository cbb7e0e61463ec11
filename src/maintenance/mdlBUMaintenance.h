// The maintenance log backup, from the main menu's choice to the bundle at its destination.
#pragma once

#include "app/Application.h"
#include "backupset/SetWriter.h"
#include "jobs/Items.h"
#include "jobs/JobDefinitions.h"
#include "media/MediaDrives.h"

namespace maintenance {

/// Lives from the operator's choice of options until the selection dialog has gone.
struct MaintenanceJob {
  MaintenanceJob(app::Application& application, const jobs::MaintenanceOptions& chosen);

  jobs::MaintenanceOptions options;
  backupset::PackedSet packed;
  std::int32_t PersonalInfoResult = 0;  ///< first non-zero code of the personal-information filter
  app::Watch watch;
};

/// Asks for the options, collects, with `bar` and `numbers` showing how far that is, and has the destination chosen,
/// where the bundle is written. Whatever goes wrong was shown when this returns, and no work folder is left.
void StartMaintenanceLogBackup(app::Application& application, jobs::JobDefinitions& definitions,
                               media::MediaDrives& drives, forms::ProgressBar& bar, forms::Label& numbers);

/// Collects and packs everything into a new work folder and measures it. Client logs are imported first, whatever
/// comes of that. A failure carries message 60460, 60470 or 60471.
base::Outcome MaintenanceLogBackup(app::Application& application, jobs::JobDefinitions& definitions,
                                   MaintenanceJob& job);

/// The job section that belongs to the choice of protection.
std::string MaintenanceSectionName(const jobs::MaintenanceOptions& options);

/// The maintenance log backup, as the selection dialog sees it.
class MaintenanceOperation : public backupset::WritingOperation {
 public:
  MaintenanceOperation(app::Application& application, media::MediaDrives& drives, MaintenanceJob& job);

  /// The desktop: the bundle is handed on from there. Looks the media drives up all the same: a medium chosen by hand
  /// is prepared by what is found there.
  std::string ProposeFolder() override;

 protected:
  /// Exports the list of studies, writes the set and says so. A list that fails is a failed bundle.
  base::Outcome Write() override;

 private:
  base::Outcome WriteBundle();

  MaintenanceJob& job_;
};

}  // namespace maintenance
