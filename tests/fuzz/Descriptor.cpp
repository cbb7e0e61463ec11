// Any bytes as BackupInfo.ini and BackupVersion.ini, with a form feed between them: the set is judged as a second,
// plainer reader judges it.
#include "FuzzTarget.h"
#include "app/TextFormat.h"
#include "app/WindowsPath.h"
#include "fakes/FakeHost.h"
#include "fakes/Text.h"
#include "restore/BackupSet.h"

namespace {

// What is found out about a set; of one that is refused, the code alone.
struct Verdict {
  std::int32_t code = 0;
  std::string appVersion{}, date{};
  decltype(restore::BackupSet::offers) offers{};

  bool operator==(const Verdict&) const = default;
};

// The value of the first line that begins with the key and "=".
std::string Value(const std::string& file, const std::string& key) {
  for (std::string line : app::Split(file, '\n')) {
    if (line.ends_with('\r')) line.pop_back();
    if (line.starts_with(key + "=")) return app::Trim(fakes::FromCodePage(line.substr(key.size() + 1)));
  }
  return {};
}

Verdict Expected(const std::string& info, const std::string& versions) {
  const std::string type = Value(info, "AppType");
  Verdict verdict{0, Value(info, "AppVersion"), Value(info, "Date")};
  if (type.empty()) return {60427};
  if (type != "Tarsus") return {60429};
  if (verdict.appVersion.empty()) return {60427};
  if (!verdict.appVersion.starts_with("3.")) return {60430};
  if (verdict.date.empty()) return {60427};
  for (std::size_t i = 0; i < restore::kCategories; ++i) {
    const std::string key = restore::kCategoryTable[i].key;
    const std::string stamp = Value(info, key);
    verdict.offers[i] = stamp.empty()                   ? restore::Offer::Missing
                        : stamp == Value(versions, key) ? restore::Offer::Fits
                                                        : restore::Offer::OtherVersion;
  }
  return verdict;
}

Verdict Inspected(const std::string& info, const std::string& versions) {
  fakes::FakeHost host;
  host.disk.AddDrive('C', "", fakes::kUnlimited);
  host.disk.Write("C:\\Set\\BackupInfo.ini", info);
  host.disk.Write("C:\\System\\BackupVersion.ini", versions);
  app::Application application(host.Contracts(), host.toolkit);
  application.state.SelectedFolder = "C:\\Set\\";
  application.state.SystemFolder = "C:\\System\\";
  application.state.SoftwareVersion = "3.00";
  application.appearance.ApplicationName = "Tarsus.exe";
  restore::BackupSet set;
  if (const std::int32_t code = restore::InspectBackupSet(application, set); code != 0) return {code};
  return {0, set.appVersion, set.date, set.offers};
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const auto [info, versions] = fuzz::SplitAt(data, size, '\f');
  fuzz::Require(Inspected(info, versions) == Expected(info, versions), "both readers judge the set alike");
  return 0;
}
