// Hands files and images to the host's filter.
#include "jobs/PersonalInfo.h"

namespace jobs {
namespace {

constexpr char kImageVariable[] = "Image";

/// Tells the filter how many days back images are wanted.
base::Outcome WriteImageRange(const Job& job) {
  std::string imageFolder;
  if (base::Outcome read = job.paths.GetPathEntry(kImageVariable, imageFolder); !read.IsDone()) return read;
  const auto file = job.tools.files.CreateText(imageFolder + "\\range.txt");
  if (!file) return file.Why();
  const std::int64_t days = -std::int64_t{job.maintenance->ImageRangeDays};
  base::Outcome written = file->Write(std::to_string(days));
  return written.IsDone() ? file->Close() : written;
}

class Filtering {
 public:
  Filtering(const Job& job, const std::string& section, host::PersonalInfoFilter& filter)
      : job_(job), section_(section), filter_(filter) {}

  base::Outcome Take(const std::string& item, std::int32_t& code) {
    const std::string source = WithDrive(item, job_.ApplicationRootFolder);
    const bool images = variable_ == kImageVariable;
    if (images && job_.maintenance && job_.maintenance->CollectImages == 1) {
      if (base::Outcome written = WriteImageRange(job_); !written.IsDone()) {
        job_.tools.log.WarnOfLoss("Image range not written: " + source + ": " + written.cause, section_);
        return written;
      }
    }
    filter_.SetSource(source);
    filter_.SetDestination(job_.workFolder.StagingFolder());
    code = images ? filter_.FilterImages() : filter_.FilterFiles();
    if (code != 0) job_.tools.log.WarnOfLoss("Filter code " + std::to_string(code) + ": " + source, section_);
    return base::Result::Done;
  }

  /// Takes the name of the last path variable: an item without one is treated like the last one before it that had one.
  std::string* Variable() { return &variable_; }

 private:
  const Job& job_;
  const std::string& section_;
  host::PersonalInfoFilter& filter_;
  std::string variable_;
};

}  // namespace

base::Outcome ApplyPersonalInfoList(const Job& job, const std::string& section, std::int32_t& PersonalInfoResult) {
  PersonalInfoResult = 0;
  const auto filter = job.components.CreatePersonalInfoFilter();
  std::string listDatabase;
  base::Outcome ready = filter ? job.paths.GetPathEntry("DeleteListDB", listDatabase)
                               : base::Failure("the personal-information filter cannot be created");
  if (!ready.IsDone()) {
    job.tools.log.WarnOfLoss("No personal-information filter or no list of patients: " + ready.cause, section);
    return ready;
  }
  filter->SetListDatabase(listDatabase);
  Filtering filtering(job, section, *filter);
  for (std::string item : job.definitions.Items(JobKey::PersonalInfo, section)) {
    base::Outcome step = job.paths.ExpandPathVariable(item, filtering.Variable());
    std::int32_t code = 0;
    if (step.IsDone()) step = filtering.Take(item, code);
    if (!step.IsDone()) return step;
    if (PersonalInfoResult == 0) PersonalInfoResult = code;
  }
  return base::Result::Done;
}

}  // namespace jobs
