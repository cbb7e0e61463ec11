// The executors that gather the items of one section into the work folder.
#include "jobs/Items.h"

#include <algorithm>
#include <array>
#include <utility>

#include "base/Path.h"
#include "base/Unicode.h"
#include "base/Wildcard.h"
#include "jobs/RecentImages.h"
#include "work/FileOperations.h"
#include "work/Programs.h"

namespace jobs {
namespace {

constexpr std::array kExportPatterns = {"*.txt", "*.bcp", "*.fmtt", "*.log"};

base::Outcome TakeDatabaseExport(const Job& job, const std::string& folder) {
  const std::string target = job.workFolder.StagingFolder() + "BCP\\";
  for (const char* const pattern : kExportPatterns) {
    base::Outcome moved = work::MoveFilesMatching(job.tools, folder, pattern, target).outcome;
    if (!moved.IsDone()) return moved;
  }
  return base::Result::Done;
}

/// The outcome of a kind: what ended it early, else whether anything was produced.
base::Outcome OutcomeOf(base::Outcome ended, bool produced) {
  if (!ended.IsDone()) return ended;
  return produced ? base::Result::Done : base::Result::Stopped;
}

/// Runs each item's program in its folder, then takes the files that it has written there.
base::Outcome RunExporters(const Job& job, JobKey key, const std::string& section, const std::string& pattern) {
  const std::string& staging = job.workFolder.StagingFolder();
  bool produced = false;
  const auto runAndTake = [&](const std::string& item) -> base::Outcome {
    work::RunInItsFolder(job.tools, item, staging, section);
    const std::string folder = base::FolderOf(item);
    if (folder.empty()) return base::Result::Done;
    const work::MoveCount count = work::MoveFilesMatching(job.tools, folder, pattern, staging);
    produced = produced || count.moved > 0;
    if (!count.outcome.IsDone()) job.tools.log.WarnOfLoss("Not moved: " + folder + pattern, section);
    return base::Result::Done;
  };
  base::Outcome ended = ForEachItem(job.paths, job.definitions.FilledItems(key, section), runAndTake);
  return OutcomeOf(std::move(ended), produced);
}

void Note(app::OperationLog& log, GatheredNames& names, const std::string& name, const std::string& source,
          const std::string& section) {
  const auto earlier = names.Note(name, source);
  if (earlier) log.WarnOfLoss("Two of one name meet in the archive: " + *earlier + " and " + source, section);
}

/// The entries of a folder; none where it cannot be listed, which the copy says.
std::vector<host::FolderEntry> EntriesOf(const work::Tools& tools, const std::string& folder) {
  std::vector<host::FolderEntry> entries;
  static_cast<void>(tools.files.List(folder, "*", entries));
  tools.messageLoop.Yield();
  return entries;
}

/// Whether the entry of `folder` is a file that fits, or has one below it.
bool BringsFile(const work::Tools& tools, const std::string& folder, const host::FolderEntry& entry,
                const std::string& pattern) {
  if (!entry.isFolder) return base::MatchesFileName(entry.name, pattern);
  if (entry.isLink) return false;
  const std::string below = folder + entry.name + "\\";
  return std::ranges::any_of(EntriesOf(tools, below),
                             [&](const auto& inner) { return BringsFile(tools, below, inner, pattern); });
}

/// Notes the files that an item names, and the folders that come with them: xcopy takes what fits in them, too.
void NoteFiles(const Job& job, const std::string& item, const std::string& section, GatheredNames& names) {
  const std::string folder = base::FolderOf(item);
  const std::string pattern = base::FileNameOf(item);
  for (const host::FolderEntry& entry : EntriesOf(job.tools, folder)) {
    if (BringsFile(job.tools, folder, entry, pattern)) {
      Note(job.tools.log, names, entry.name, folder + entry.name, section);
    }
  }
}

/// Only a maintenance log takes some days' images: a backup of the patient data must hold them all.
bool TakesRecentImages(const Job& job, const std::string& folder) {
  constexpr std::size_t kLength = 5;
  return job.maintenance && job.maintenance->CollectImages == 1 && folder.size() >= kLength &&
         base::SameName(folder.substr(folder.size() - kLength), ".ddo\\");
}

/// Bytes of the files that fit, in a folder and below it.
std::uint64_t BytesBelow(const work::Tools& tools, const std::string& folder, const std::string& pattern) {
  std::uint64_t sum = 0;
  for (const host::FolderEntry& entry : EntriesOf(tools, folder)) {
    if (entry.isFolder) {
      sum += entry.isLink ? 0 : BytesBelow(tools, folder + entry.name + "\\", pattern);
    } else if (base::MatchesFileName(entry.name, pattern)) {
      sum += entry.size;
    }
  }
  return sum;
}

std::uint64_t BytesOfFiles(const Job& job, const std::string& item) {
  const std::string name = base::FileNameOf(item);
  if (name.find_first_of("*?") != std::string::npos) return BytesBelow(job.tools, base::FolderOf(item), name);
  return static_cast<std::uint64_t>(std::max<std::int64_t>(job.tools.files.FileSize(item), 0));
}

std::uint64_t BytesOfFolder(const Job& job, const std::string& item) {
  const std::string folder = WithDrive(base::WithTrailingBackslash(item), job.ApplicationRootFolder);
  const std::uint64_t bytes = BytesBelow(job.tools, folder, "*");
  if (!TakesRecentImages(job, folder)) return bytes;
  job.tools.progress.Plan(app::Work::Gathering, kRecentImages, bytes);  // at most
  return 0;
}

/// The items with their path variables expanded. One that cannot be is told when its turn comes.
std::vector<std::string> Expanded(const Job& job, const std::vector<std::string>& items) {
  std::vector<std::string> expanded;
  for (std::string item : items) {
    if (job.paths.ExpandQuietly(item).IsDone()) expanded.push_back(std::move(item));
  }
  return expanded;
}

/// A program writes its folder's files again, as far as that can be told before, and `most` of that is gathered then.
void PlanProgram(const Job& job, const std::string& item, std::uint64_t most) {
  const std::string folder = base::FolderOf(item);
  const std::uint64_t there = folder.empty() ? 0 : work::BytesIn(job.tools.files, folder);
  job.tools.progress.Plan(app::Work::Exporting, item, std::min(there, most));
}

}  // namespace

std::uint64_t PlanGathering(const Job& job, const std::string& section) {
  const JobDefinitions& definitions = job.definitions;
  std::uint64_t bytes = 0;
  for (const auto& item : Expanded(job, definitions.FilledItems(JobKey::CommonFile, section))) {
    bytes += BytesOfFiles(job, item);
  }
  for (const auto& item : Expanded(job, definitions.FolderItems(section))) bytes += BytesOfFolder(job, item);
  for (const JobKey key : {JobKey::BatFile, JobKey::EventLog, JobKey::RegFile}) {
    for (const auto& item : Expanded(job, definitions.FilledItems(key, section))) PlanProgram(job, item, bytes);
  }
  job.tools.progress.Plan(app::Work::Gathering, section, bytes);
  return bytes;
}

Job JobOf(app::Application& application, const JobDefinitions& definitions, const work::WorkFolder& workFolder,
          const std::optional<MaintenanceOptions>& options) {
  const app::State& state = application.state;
  return {.tools = work::ToolsOf(application),
          .paths = application.paths,
          .components = application.host.components,
          .definitions = definitions,
          .workFolder = workFolder,
          .ApplicationRootFolder = state.ApplicationRootFolder,
          .SystemFolder = state.SystemFolder,
          .UserFolder = state.UserFolder,
          .maintenance = options};
}

std::optional<std::string> GatheredNames::Note(const std::string& name, const std::string& source) {
  std::string& known = sources_.try_emplace(base::Folded(name), source).first->second;
  if (base::SameName(known, source)) return std::nullopt;
  return std::exchange(known, source);
}

std::string WithDrive(const std::string& item, const std::string& applicationRootFolder) {
  return item.find(':') == std::string::npos ? applicationRootFolder + item : item;
}

base::Outcome RunBatFileItems(const Job& job, const std::string& section) {
  bool produced = false;
  const auto run = [&](const std::string& item) -> base::Outcome {
    const auto end = work::RunInItsFolder(job.tools, item, job.workFolder.StagingFolder(), section);
    if (!end.started) return end.Started();
    produced = true;
    return job.maintenance ? TakeDatabaseExport(job, base::FolderOf(item)) : base::Result::Done;
  };
  base::Outcome ended = ForEachItem(job.paths, job.definitions.FilledItems(JobKey::BatFile, section), run);
  return OutcomeOf(std::move(ended), produced);
}

base::Outcome RunCommonFileItems(const Job& job, const std::string& section, Gathering& gathering) {
  bool produced = false;
  const auto copy = [&](const std::string& item) -> base::Outcome {
    NoteFiles(job, item, section, gathering.names);
    const auto copied =
        work::CopyFilesChecked(job.tools, item, job.workFolder.StagingFolder(), section, gathering.copied);
    produced = produced || copied.Produced();
    return base::Result::Done;
  };
  base::Outcome ended = ForEachItem(job.paths, job.definitions.FilledItems(JobKey::CommonFile, section), copy);
  return OutcomeOf(std::move(ended), produced);
}

base::Outcome RunEventLogItems(const Job& job, const std::string& section) {
  return RunExporters(job, JobKey::EventLog, section, "*.evt");
}

base::Outcome RunRegFileItems(const Job& job, const std::string& section) {
  const auto items = job.definitions.Items(JobKey::RegFile, section);
  if (items.empty() || items.front() != kDefaultRegistryCommand) {
    return RunExporters(job, JobKey::RegFile, section, "*.reg");
  }
  const std::string& staging = job.workFolder.StagingFolder();
  const work::CurrentFolderScope inStaging(job.tools.files, staging, staging);
  if (!inStaging.Entered().IsDone()) return inStaging.Entered();  // the export would land in some other folder
  const bool succeeded = work::RunProgram(job.tools, items.front(), section).Succeeded();
  if (succeeded && job.tools.files.FileSize(staging + kDefaultRegistryFile) <= 0) {
    job.tools.log.WarnOfLoss(std::string("Not exported: ") + kDefaultRegistryFile, section);
  }
  return base::Result::Done;
}

base::Outcome RunFolderItems(const Job& job, const std::string& section, Gathering& gathering) {
  std::vector<std::string> items = job.definitions.FolderItems(section);
  for (std::string& item : items) item = base::WithTrailingBackslash(item);
  const std::string& staging = job.workFolder.StagingFolder();
  bool produced = false;
  const auto copy = [&](const std::string& item) -> base::Outcome {
    const std::string folder = WithDrive(item, job.ApplicationRootFolder);
    if (TakesRecentImages(job, folder)) {
      CopyRecentImages(job.tools, job.paths, job.components, staging, job.maintenance->ImageRangeDays);
      return base::Result::Done;
    }
    const std::string source = base::WithoutTrailingBackslash(folder);
    Note(job.tools.log, gathering.names, base::FileNameOf(source), source, section);
    produced = work::CopyFolderChecked(job.tools, source, staging, section, gathering.copied).Produced() || produced;
    return base::Result::Done;
  };
  base::Outcome ended = ForEachItem(job.paths, items, copy);
  return OutcomeOf(std::move(ended), produced);
}

}  // namespace jobs
