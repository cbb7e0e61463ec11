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
  const jobs::SavedLogs saved{{}, {}, UINT64_MAX};  // all logs are older than the gathering
  const auto run = [&] {
    return jobs::RunLogDeletion(tools, application.paths, definitions, saved, fakes::kSystemFolder, kStaging);
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

/// Each log, and whether it may go.
TEST_F(JobTest, LogsThatAreInNoSetStay) {
  const std::string folder = "C:\\Logs\\";
  for (const char* name : {"saved.log", "saved, longer now.log", "saved, written again.log", "exported before.log"})
    host.disk.Write(folder + name, "x");
  jobs::SavedLogs saved;
  const auto copied = work::CopyFilesChecked(tools, folder + "saved*", kStaging, "LOG_BACKUP", &saved.copied);
  EXPECT_EQ(copied.files, 3u);
  host.disk.Write("C:\\now", "");
  saved.gatheredAt = host.disk.Find("C:\\now")->modified;
  host.disk.Write(folder + "saved, longer now.log", "xx");
  host.disk.Write(folder + "saved, written again.log", "y");
  host.disk.Write(folder + "come since.log", "x");
  host.disk.Write(folder + "own.log", "x");
  saved.own = {"c:\\logs\\\\Own.log"};

  EXPECT_TRUE(LoadSection("LOG_DELETE", {"Folder=C:\\Logs"}).IsDone());
  EXPECT_EQ(jobs::RunLogDeletion(tools, application.paths, definitions, saved, fakes::kSystemFolder, kStaging),
            Result::Failed);
  const Names kept = {"come since.log", "own.log", "saved, longer now.log", "saved, written again.log"};
  EXPECT_EQ(NamesBelow("C:\\Logs"), kept);
  for (const std::string& name : kept)
    EXPECT_EQ(WasWarnedOf("Not deleted: " + folder + name), name != "own.log") << name;
}

}  // namespace
