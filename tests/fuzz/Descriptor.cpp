// Any bytes as BackupInfo.ini and BackupVersion.ini, with a form feed between them: the set is judged as a second,
// plainer reader judges it.
#include "backupset/Descriptor.h"
#include "FuzzTarget.h"
#include "app/MessageIds.h"
#include "base/Text.h"
#include "fakes/FakeHost.h"
#include "fakes/Text.h"

namespace {

using enum base::MessageId;

// What is found out about a set; of one that is refused, its message alone.
struct Verdict {
  base::MessageId refusal{};
  std::string appVersion{}, date{};
  decltype(backupset::Inspection::offers) offers{};

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
  for (const backupset::Category category : backupset::kDescriptorOrder) {
    const std::string key = backupset::RowOf(category).versionKey;
    const std::string stamp = Value(info, key);
    verdict.offers[category] = stamp.empty()                   ? backupset::Offer::Missing
                               : stamp == Value(versions, key) ? backupset::Offer::Fits
                                                               : backupset::Offer::OtherVersion;
  }
  return verdict;
}

Verdict Inspected(const std::string& info, const std::string& versions) {
  fakes::FakeHost host;
  host.disk.AddDrive('C', "", fakes::kUnlimited);
  host.disk.Write("C:\\Set\\BackupInfo.ini", info);
  host.disk.Write("C:\\System\\BackupVersion.ini", versions);
  app::Application application(host.Contracts(), host.toolkit);
  const backupset::HostIdentity identity{"3.00", "Tarsus", "C:\\System\\"};
  backupset::Inspection inspection;
  const base::Outcome judged =
      backupset::InspectBackupSet(work::ToolsOf(application), identity, "C:\\Set\\", inspection);
  if (!judged.IsDone()) return {judged.PendingMessageId};
  return {None, inspection.set.appVersion, inspection.set.date, inspection.offers};
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const auto [info, versions] = fuzz::SplitAt(data, size, '\f');
  fuzz::Require(Inspected(info, versions) == Expected(info, versions), "both readers judge the set alike");
  return 0;
}
