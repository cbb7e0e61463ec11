// Any bytes as BackupInfo.ini and BackupVersion.ini, with a form feed between them: the set is judged as a second,
// plainer reader judges it.
#include "FuzzTarget.h"
#include "app/MessageIds.h"
#include "base/Text.h"
#include "fakes/FakeHost.h"
#include "fakes/Text.h"
#include "restore/BackupSet.h"

namespace {

using enum base::MessageId;

// What is found out about a set; of one that is refused, its message alone.
struct Verdict {
  base::MessageId refusal{};
  std::string appVersion{}, date{};
  decltype(restore::BackupSet::offers) offers{};

  bool operator==(const Verdict&) const = default;
};

// The value of the first line that begins with the key and "=".
std::string Value(const std::string& file, const std::string& key) {
  for (std::string line : base::Split(file, '\n')) {
    if (line.ends_with('\r')) line.pop_back();
    if (line.starts_with(key + "=")) return base::Trim(fakes::FromCodePage(line.substr(key.size() + 1)));
  }
  return {};
}

Verdict Expected(const std::string& info, const std::string& versions) {
  const std::string type = Value(info, "AppType");
  Verdict verdict{None, Value(info, "AppVersion"), Value(info, "Date")};
  if (type.empty()) return {DescriptorIncomplete};
  if (type != "Tarsus") return {OtherApplication};
  if (verdict.appVersion.empty()) return {DescriptorIncomplete};
  if (!verdict.appVersion.starts_with("3.")) return {OtherVersion};
  if (verdict.date.empty()) return {DescriptorIncomplete};
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
  if (const base::MessageId refusal = restore::InspectBackupSet(application, set); refusal != None) return {refusal};
  return {None, set.appVersion, set.date, set.offers};
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const auto [info, versions] = fuzz::SplitAt(data, size, '\f');
  fuzz::Require(Inspected(info, versions) == Expected(info, versions), "both readers judge the set alike");
  return 0;
}
