// The list of past jobs: one line of comma-separated values for every job that has begun, beside the operation log. For
// the operator's summary, and for whoever watches over many workstations.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "app/Log.h"
#include "host/FileSystem.h"

namespace app {

enum class JobKind { Backup, Restore, MaintenanceLog };

struct PastJob {
  base::LocalTime ended;
  JobKind kind{};
  base::Result result{};    ///< Done, Stopped or Failed
  MessageId message{};      ///< that told the end; None where the operator has only closed a dialog
  std::string user;         ///< ID
  std::string folder;       ///< destination, or source; ends in "\"; empty where none was reached
  std::string categories;   ///< words of the version files, a blank between two
  std::uint64_t files = 0;  ///< in the archives
  std::uint64_t bytes = 0;  ///< of the archives
  std::uint64_t warnings = 0;
  std::uint64_t seconds = 0;
};

/// The line of a job, without its end.
std::string FormatPastJob(const PastJob& job);
/// The jobs of whole lines; others, such as the heading and what a full disk has cut, are passed over.
std::vector<PastJob> ParsePastJobs(const std::string& lines);

class JobList {
 public:
  /// `logFolder` is the state's.
  JobList(host::FileSystem& files, OperationLog& log, const std::string& logFolder)
      : files_(files), log_(log), logFolder_(logFolder) {}

  /// Appends one line, which has reached the disk when this returns. One that cannot be written is tried again with the
  /// next, and an exclamation in the log says why: it costs no job.
  void Append(const PastJob& job);

  /// The newest jobs, some hundreds at most, in the order of their ends; none where there is no list.
  std::vector<PastJob> Read() const;

  std::string FilePath() const { return logFolder_ + "\\BackupUtilityJobs.csv"; }

 private:
  base::Outcome Write(const std::string& lines);

  host::FileSystem& files_;
  OperationLog& log_;
  const std::string& logFolder_;
  std::string unwritten_;  ///< lines that still have no place in the file
};

}  // namespace app
