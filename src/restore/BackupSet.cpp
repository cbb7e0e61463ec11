// What a backup set says of itself, and whether this system may restore it.
#include "restore/BackupSet.h"

#include <optional>

#include "app/External.h"
#include "backup/Descriptor.h"

namespace restore {
namespace {

constexpr std::int32_t kNoDescriptor = 60426;
constexpr std::int32_t kIncompleteDescriptor = 60427;
constexpr std::int32_t kOtherApplication = 60429;
constexpr std::int32_t kOtherVersion = 60430;

std::optional<std::string> MajorVersion(const std::string& version) {
  const std::size_t dot = version.find('.');
  if (dot == std::string::npos) return std::nullopt;
  return version.substr(0, dot);
}

// A version without a "." cannot be shown to fit, on either side, and so does not.
bool SameMajorVersion(const std::string& left, const std::string& right) {
  const auto leftMajor = MajorVersion(left);
  return leftMajor && leftMajor == MajorVersion(right);
}

Offer OfferFor(const std::string& setVersion, const std::string& systemVersion) {
  if (setVersion.empty()) return Offer::Missing;
  return setVersion == systemVersion ? Offer::Fits : Offer::OtherVersion;
}

}  // namespace

std::int32_t InspectBackupSet(app::Application& application, BackupSet& set) {
  const app::State& state = application.state;
  const auto setValue = [&](const std::string& key) {
    return app::ReadIniValue(application, state.SelectedFolder, backup::kDescriptorFile, key);
  };
  if (!application.host.files.FileExists(state.SelectedFolder + backup::kDescriptorFile)) return kNoDescriptor;

  const std::string appType = setValue("AppType");
  if (appType.empty()) return kIncompleteDescriptor;
  if (appType != backup::HostApplicationType(application)) return kOtherApplication;
  set.appVersion = setValue("AppVersion");
  if (set.appVersion.empty()) return kIncompleteDescriptor;
  if (!SameMajorVersion(set.appVersion, state.SoftwareVersion)) return kOtherVersion;
  set.date = setValue("Date");
  if (set.date.empty()) return kIncompleteDescriptor;

  for (std::size_t i = 0; i < kCategories; ++i) {
    const std::string key = kCategoryTable[i].key;
    set.offers[i] =
        OfferFor(setValue(key), app::ReadIniValue(application, state.SystemFolder, backup::kVersionFile, key));
  }
  return 0;
}

}  // namespace restore
