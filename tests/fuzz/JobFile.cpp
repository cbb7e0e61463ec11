// Any bytes as BackupList.ini. The input is the section to load, a line end, and the file.
#include "FuzzTarget.h"
#include "app/WindowsPath.h"
#include "backup/JobDefinitions.h"
#include "fakes/FakeHost.h"
#include "fakes/Text.h"

namespace {

using backup::JobKey;

constexpr const char* kKeyNames[backup::kJobKeys] = {"BatFile", "CommonFile", "EventLog",
                                                     "RegFile", "Folder",     "PersonalInfo"};
constexpr const char* kOtherSections[] = {"PATIENT_BACKUP", "LOG_DELETE", "REPORTSET_RESTORE"};

using Section = std::vector<std::vector<std::string>>;  // the items of each key

class Loader {
 public:
  Loader() { host_.disk.AddDrive('C', "", fakes::kUnlimited); }

  app::ResultCode Load(const std::string& file, const std::string& section) {
    host_.disk.Write("C:\\BackupList.ini", file);
    return definitions_.Load(application_, "C:", backup::kJobDefinitionFile, section);
  }

  Section Items(const std::string& section) const {
    Section items;
    for (std::size_t i = 0; i < backup::kJobKeys; ++i) {
      items.push_back(definitions_.Items(static_cast<JobKey>(i), section));
    }
    return items;
  }

 private:
  fakes::FakeHost host_;
  app::Application application_{host_.Contracts(), host_.toolkit};
  backup::JobDefinitions definitions_;
};

std::string Joined(const std::vector<std::string>& items) {
  std::string value;
  for (const std::string& item : items) value += (&item == items.data() ? "" : ";") + item;
  return value;
}

// The same section as the plainest possible file, between two others.
std::string Rewritten(const std::string& section, const Section& items) {
  std::string file = "BatFile=no\r\n[]\r\nFolder=no\r\n[" + section + "]\r\n";
  for (std::size_t i = 0; i < items.size(); ++i) {
    if (!items[i].empty()) file += std::string(kKeyNames[i]) + "=" + Joined(items[i]) + "\r\n";
  }
  return fakes::ToCodePage(file + "[OTHER]\r\nRegFile=no\r\n");
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const auto [name, file] = fuzz::SplitAt(fuzz::Text(data, size), '\n');
  const std::string section = app::Trim(name);
  Loader loader;
  const app::ResultCode code = loader.Load(file, name);
  fuzz::Require(code == app::kDone || code == app::kFailed, "loading answers done or failed");
  const Section items = loader.Items(section);
  for (const auto& list : items) {
    const std::string value = Joined(list);
    fuzz::Require(value == app::Trim(value), "a value has no blanks around it");
    fuzz::Require(value.find('\n') == std::string::npos, "a value is on one line");
  }
  for (const std::string other : kOtherSections) {
    fuzz::Require(other == section || loader.Items(other) == Section(backup::kJobKeys),
                  "a section takes nothing from another one");
  }
  if (code != app::kDone || backup::SectionIndex(section) < 0) return 0;
  Loader again;
  fuzz::Require(again.Load(Rewritten(section, items), section) == app::kDone, "a rewritten section loads");
  fuzz::Require(again.Items(section) == items, "a rewritten section says the same");
  return 0;
}
