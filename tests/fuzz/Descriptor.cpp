// Any bytes as BackupInfo.ini and BackupVersion.ini, with a form feed between them: the set is judged as a second,
// plainer reader judges it.
#include "FuzzTarget.h"
#include "app/TextFormat.h"
#include "app/WindowsPath.h"
#include "fakes/FakeHost.h"
#include "fakes/Text.h"
#include "restore/BackupSet.h"

namespace {

constexpr const char* kSoftwareVersion = "3.00";

// The value of the first line that begins with the key and "=".
std::string Value(const std::string& file, const std::string& key) {
  for (std::string line : app::Split(file, '\n')) {
    if (line.ends_with('\r')) line.pop_back();
    if (line.starts_with(key + "=")) return app::Trim(fakes::FromCodePage(line.substr(key.size() + 1)));
  }
  return {};
}

struct Verdict {
  std::int32_t code = 0;
  restore::BackupSet set;
};

bool SameVerdict(const Verdict& left, const Verdict& right) {
  return left.code == right.code &&
         (left.code != 0 || (left.set.appVersion == right.set.appVersion && left.set.date == right.set.date &&
                             left.set.offers == right.set.offers));
}

std::int32_t ExpectedCode(const std::string& type, const std::string& version, const std::string& date) {
  if (type.empty()) return 60427;
  if (type != "Tarsus") return 60429;
  if (version.empty()) return 60427;
  if (!version.starts_with("3.")) return 60430;
  return date.empty() ? 60427 : 0;
}

Verdict Expected(const std::string& info, const std::string& versions) {
  Verdict verdict;
  verdict.set.appVersion = Value(info, "AppVersion");
  verdict.set.date = Value(info, "Date");
  verdict.code = ExpectedCode(Value(info, "AppType"), verdict.set.appVersion, verdict.set.date);
  for (std::size_t i = 0; i < restore::kCategories; ++i) {
    const std::string key = restore::kCategoryTable[i].key;
    const std::string stamp = Value(info, key);
    verdict.set.offers[i] = stamp.empty()                   ? restore::Offer::Missing
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
  application.state.SoftwareVersion = kSoftwareVersion;
  application.appearance.ApplicationName = "Tarsus.exe";
  Verdict verdict;
  verdict.code = restore::InspectBackupSet(application, verdict.set);
  return verdict;
}

// The keys that count, in another order and between lines that do not.
std::string Rewritten(const std::string& info) {
  std::string text = "[VersionInfo]\r\n";
  for (const restore::Category& category : restore::kCategoryTable) {
    text += std::string(category.key) + "=" + Value(info, category.key) + "\r\n";
  }
  for (const std::string key : {"Date", "AppVersion", "AppType"}) {
    text += " " + key + "=no\r\n" + key + " =no\r\n" + key + "=" + Value(info, key) + "\r\n";
  }
  return fakes::ToCodePage(text + "AppType=second\r\n");
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const auto [info, versions] = fuzz::SplitAt(fuzz::Text(data, size), '\f');
  const Verdict verdict = Inspected(info, versions);
  fuzz::Require(SameVerdict(verdict, Expected(info, versions)), "both readers judge the set alike");
  fuzz::Require(SameVerdict(verdict, Inspected(Rewritten(info), versions)), "only the keys count");
  return 0;
}
