// The deletion of the host's logs.
#include "jobs/LogDeletion.h"

#include "unit/Station.h"

namespace {

using base::Result;
using enum base::MessageId;

struct Deletion {
  const char* name;
  Names lines;
  Names kept;              ///< of C:\Logs
  const char* cause = "";  ///< of the failure, where there is one
};

const Names kAllLogs = {"Sub\\d.log", "a.log", "b.log", "c.txt"};
const char* const kExport = "EventLog=Reg.exe save K C:\\Logs\\e.log";
const char* const kUnknown = "Nowhere";
const Deletion kDeletions[] = {
    {"common files", {"CommonFile=C:\\Logs\\*.log"}, {"Sub\\d.log", "c.txt"}},
    {"common files that are not there", {"CommonFile=C:\\Nowhere\\*.log;C:\\Logs\\x*"}, kAllLogs},
    {"empty lists", {"CommonFile=", "Folder=;", "BatFile="}, kAllLogs},
    {"folder missing, the rest deleted", {"Folder=C:\\None;C:\\Logs"}, {"Sub\\d.log"}, "C:\\None"},
    {"variable", {"Folder=%System%\\..\\..\\Logs"}, {"Sub\\d.log"}},
    {"unknown variable ends the run", {"CommonFile=%Nowhere%\\a", "Folder=C:\\Logs"}, kAllLogs, kUnknown},
    {"batch file missing ends the run", {"BatFile=C:\\Logs\\none.bat", "Folder=C:\\Logs"}, kAllLogs, "none.bat"},
    {"commands run as they stand", {kExport, "CommonFile=C:\\Logs\\*.log"}, {"Sub\\d.log", "c.txt", "e.log"}},
};

TEST_F(JobTest, LogDeletionDeletesWhatItsSectionLists) {
  const auto run = [&] {
    return jobs::RunLogDeletion(tools, application.paths, definitions, fakes::kSystemFolder, kStaging);
  };
  for (const Deletion& each : kDeletions) {
    SCOPED_TRACE(each.name);
    host.disk.Remove("C:\\Logs");
    for (const std::string& name : kAllLogs) host.disk.Write("C:\\Logs\\" + name, "x");
    host.disk.Find("C:\\Logs\\b.log")->attributes = fakes::kReadOnly;
    host.disk.Write("C:\\root.txt", "stays");
    EXPECT_TRUE(LoadSection("LOG_DELETE", each.lines).IsDone());
    if (each.cause == kUnknown) host.person.ExpectMessage(PathEntryUnreadable);
    const base::Outcome deleted = run();
    EXPECT_EQ(deleted, *each.cause ? Result::Failed : Result::Done);
    EXPECT_PRED_FORMAT2(testing::IsSubstring, each.cause, deleted.cause);
    EXPECT_EQ(NamesBelow("C:\\Logs"), each.kept);
    EXPECT_TRUE(host.disk.IsFile("C:\\root.txt"));
    EXPECT_EQ(host.disk.CurrentFolder() + "\\", kStaging);
  }
  EXPECT_TRUE(LoadSection("USER_BACKUP", {}).IsDone());
  EXPECT_EQ(run(), Result::Failed) << "section missing";
}

}  // namespace
