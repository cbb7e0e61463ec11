// The executors that gather the items of one section into the work folder, one per item kind.
//
// Each is Done when at least one item produced output, Stopped when nothing was produced, and fails when a path
// variable is unknown (message 60326) or, for some kinds, a step fails.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "app/Application.h"
#include "jobs/JobDefinitions.h"
#include "work/CheckedCopy.h"
#include "work/Programs.h"
#include "work/WorkFolder.h"

namespace jobs {

/// `ImageRangeDays` where no images of recent days are collected, and the most that can be asked for.
inline constexpr std::int32_t kAllDays = 9999;

/// What the operator has chosen for a maintenance log.
struct MaintenanceOptions {
  bool ProtectPersonalInfo = false;
  std::int32_t CollectImages = 0;  ///< 1: images of a range of days; 0: the image folders as they are
  std::int32_t ImageRangeDays = kAllDays;
};

/// One job at work: what its executors use, and what it was asked for.
struct Job {
  work::Tools tools;
  const app::PathTable& paths;
  host::ComponentFactory& components;
  const JobDefinitions& definitions;
  const work::WorkFolder& workFolder;
  const std::string& ApplicationRootFolder;
  const std::string& SystemFolder;
  const std::string& UserFolder;
  std::optional<MaintenanceOptions> maintenance;  ///< in a maintenance log backup only
};

/// The job that gathers into `workFolder`; `options` make it a maintenance log's.
Job JobOf(app::Application& application, const JobDefinitions& definitions, const work::WorkFolder& workFolder,
          const std::optional<MaintenanceOptions>& options = std::nullopt);

/// Plans what the executors of a loaded section will gather, as far as that is there already, for the job's progress:
/// all of it under the section's name, the programs under their items. Returns its bytes.
std::uint64_t PlanGathering(const Job& job, const std::string& section);

/// Calls `action` with each item, its path variable expanded, until an expansion or an action is not Done; that
/// outcome is the result.
template <typename Action>
base::Outcome ForEachItem(const app::PathTable& paths, const std::vector<std::string>& items, Action action) {
  for (std::string item : items) {
    if (base::Outcome expanded = paths.ExpandPathVariable(item); !expanded.IsDone()) return expanded;
    if (base::Outcome taken = action(item); !taken.IsDone()) return taken;
  }
  return base::Result::Done;
}

/// A folder item with its drive: one without is taken from the application root.
std::string WithDrive(const std::string& item, const std::string& applicationRootFolder);

/// The names that the items of one section have brought into the work folder. Two files or folders of one name from
/// different places would be one in the archive, and each of them the other's at the restore.
class GatheredNames {
 public:
  /// Notes that what is named `name` comes from `source`. Where it came from before, if that was another place.
  std::optional<std::string> Note(const std::string& name, const std::string& source);

 private:
  std::map<std::u32string, std::string> sources_;
};

/// What the executors that copy have in common beside the job.
struct Gathering {
  GatheredNames names;
  work::CopiedFiles* copied = nullptr;  ///< learns what was copied, where somebody wants to know
};

/// Runs the programs. One that cannot be started fails the kind. In a maintenance log backup, what
/// the databases' export has left in a program's folder is moved to the work folder's "BCP\" after
/// each run; a move that fails fails the kind.
base::Outcome RunBatFileItems(const Job& job, const std::string& section);

/// Copies files and file patterns. What cannot be copied is logged and otherwise passed over, and so are names that
/// meet.
base::Outcome RunCommonFileItems(const Job& job, const std::string& section, Gathering& gathering);

/// Runs the programs and takes the "*.evt" files that stand in their folders afterwards.
base::Outcome RunEventLogItems(const Job& job, const std::string& section);

/// The same with "*.reg" files. The default export command is run as it stands, in the work folder.
base::Outcome RunRegFileItems(const Job& job, const std::string& section);

/// Copies folders with all that is in them, in the same way; one without a drive is taken from the application root.
base::Outcome RunFolderItems(const Job& job, const std::string& section, Gathering& gathering);

}  // namespace jobs
