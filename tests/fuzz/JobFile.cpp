// Any bytes as BackupList.ini. The input is the section to load, a line end, and the file.
#include "FuzzTarget.h"
#include "base/Text.h"
#include "fakes/FakeHost.h"
#include "fakes/Text.h"
#include "jobs/JobDefinitions.h"

namespace {

constexpr const char* kKeyNames[jobs::kJobKeys] = {"BatFile", "CommonFile", "EventLog",
                                                   "RegFile", "Folder",     "PersonalInfo"};

using Section = std::vector<std::vector<std::string>>;  // the items of each key

// What is loaded of a file, and how that ended.
std::pair<base::Result, jobs::JobDefinitions> Loaded(const std::string& file, const std::string& section) {
  fakes::FakeHost host;
  host.disk.AddDrive('C', "", fakes::kUnlimited);
  host.disk.Write("C:\\BackupList.ini", file);
  app::Application application(host.Contracts(), host.toolkit);
  jobs::JobDefinitions definitions;
  const base::Outcome loaded = definitions.Load(work::ToolsOf(application), "C:", jobs::kJobDefinitionFile, section);
  return {loaded.result, definitions};
}

Section Items(const jobs::JobDefinitions& definitions, const std::string& section) {
  Section items;
  for (std::size_t i = 0; i < jobs::kJobKeys; ++i) {
    items.push_back(definitions.Items(static_cast<jobs::JobKey>(i), section));
  }
  return items;
}

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
  const auto [name, file] = fuzz::SplitAt(data, size, '\n');
  const std::string section = base::Trim(name);
  const auto [code, definitions] = Loaded(file, name);
  fuzz::Require(code == base::Result::Done || code == base::Result::Failed, "loading answers done or failed");
  const Section items = Items(definitions, section);
  for (const auto& list : items) {
    const std::string value = Joined(list);
    fuzz::Require(value == base::Trim(value), "a value has no blanks around it");
    fuzz::Require(value.find('\n') == std::string::npos, "a value is on one line");
  }
  for (const std::string other : {"PATIENT_BACKUP", "LOG_DELETE", "REPORTSET_RESTORE"}) {
    fuzz::Require(other == section || Items(definitions, other) == Section(jobs::kJobKeys),
                  "a section takes nothing from another one");
  }
  if (code != base::Result::Done || jobs::SectionIndex(section) < 0) return 0;
  const auto [codeAgain, again] = Loaded(Rewritten(section, items), section);
  fuzz::Require(codeAgain == base::Result::Done, "a rewritten section loads");
  fuzz::Require(Items(again, section) == items, "a rewritten section says the same");
  return 0;
}
