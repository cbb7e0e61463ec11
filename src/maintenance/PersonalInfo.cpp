// Hands files and images to the host's filter, which leaves out the patients on the host's list.
#include "maintenance/PersonalInfo.h"

#include "app/External.h"
#include "app/PathVariables.h"
#include "backup/Programs.h"

namespace maintenance {
namespace {

constexpr char kImageVariable[] = "Image";

/// Tells the filter how many days back images are wanted.
app::ResultCode WriteImageRange(app::Application& application) {
  std::string imageFolder;
  if (app::GetPathEntry(application, kImageVariable, imageFolder) != app::kDone) return app::kFailed;
  const auto file = application.host.files.CreateText(imageFolder + "\\range.txt");
  const std::int64_t days = -std::int64_t{application.state.ImageRangeDays};
  if (!file || file->Write(std::to_string(days)) != 0) return app::kFailed;
  return file->Close() == 0 ? app::kDone : app::kFailed;
}

std::int32_t Filter(app::Application& application, host::PersonalInfoFilter& filter, const std::string& item,
                    bool images) {
  filter.SetSource(item);
  filter.SetDestination(application.state.StagingFolder);
  return images ? filter.FilterImages() : filter.FilterFiles();
}

}  // namespace

app::ResultCode ApplyPersonalInfoList(app::Application& application, const backup::JobDefinitions& definitions,
                                      const std::string& section) {
  const auto filter = application.host.components.CreatePersonalInfoFilter();
  std::string listDatabase;
  if (!filter || app::GetPathEntry(application, "DeleteListDB", listDatabase) != app::kDone) {
    backup::WarnOfLoss(application, "No personal-information filter or no list of patients", section);
    return app::kFailed;
  }
  filter->SetListDatabase(listDatabase);

  std::int32_t& firstCode = application.state.PersonalInfoResult;
  firstCode = 0;
  // An item without a variable is treated like the last one before it that had one.
  std::string variable;
  for (std::string item : definitions.Items(backup::JobKey::PersonalInfo, section)) {
    if (app::ExpandPathVariable(application, item, &variable) != app::kDone) return app::kFailed;
    if (item.find(':') == std::string::npos) item = application.state.ApplicationRootFolder + item;
    const bool images = variable == kImageVariable;
    if (images && application.state.CollectImages == 1 && WriteImageRange(application) != app::kDone) {
      backup::WarnOfLoss(application, "Image range not written: " + item, section);
      return app::kFailed;
    }
    const std::int32_t code = Filter(application, *filter, item, images);
    if (code != 0) backup::WarnOfLoss(application, "Filter code " + std::to_string(code) + ": " + item, section);
    if (firstCode == 0) firstCode = code;
  }
  return app::kDone;
}

}  // namespace maintenance
