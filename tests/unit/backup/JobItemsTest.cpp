// The executors of the item kinds, and the deletion of logs.
#include "backup/JobItems.h"

#include "backup/LogDeletion.h"
#include "unit/Station.h"

namespace {

using base::Result;
using enum base::MessageId;

using Executor = Result (*)(const backup::JobContext&, const std::string&);
constexpr Executor kFile = backup::RunCommonFileItems;
constexpr Executor kFolder = backup::RunFolderItems;
constexpr Executor kEvents = backup::RunEventLogItems;
constexpr Executor kRegistry = backup::RunRegFileItems;
constexpr Executor kBatch = backup::RunBatFileItems;

/// A variable that the host does not know is complained of.
void ExpectComplaint(fakes::FakeHost& host, const std::string& line) {
  if (line.find("%Nowhere%") != std::string::npos) host.person.ExpectMessage(PathEntryUnreadable);
}

struct Case {
  const char* name;
  Executor run;
  std::string line;
  Names staged = {};
  Result result = Result::Done;
};

const Case kCases[] = {
    {"no key", kFile, "; none", {}, Result::Stopped},
    {"common file", kFile, "CommonFile=%System%\\Tarsus.log", {"Tarsus.log"}},
    {"text before the variable is lost", kFile, "CommonFile=junk%System%\\Tarsus.log", {"Tarsus.log"}},
    {"one of several", kFile, "CommonFile=C:\\none.x;;C:\\Tarsus\\Menu\\*.ini", {"menu.ini"}},
    {"no common file there", kFile, "CommonFile=C:\\none.x", {}, Result::Stopped},
    {"unknown variable", kFile, "CommonFile=%Nowhere%\\a;C:\\Tarsus\\Menu\\menu.ini", {}, Result::Failed},
    {"folder below the root", kFolder, "Folder=Menu", {"Menu\\menu.ini"}},
    {"many separators at its end", kFolder, "Folder=C:\\Tarsus\\Menu\\\\", {"Menu\\menu.ini"}},
    {"one missing", kFolder, "Folder=Menu;None;%Data%\\..\\User\\", {"Menu\\menu.ini", "User\\users.dat"}},
    {"folder missing", kFolder, "Folder=None", {}, Result::Stopped},
    {"unknown variable of a folder", kFolder, "Folder=%Nowhere%\\a", {}, Result::Failed},
    {"event log", kEvents, "EventLog=", {"Application.evt"}},
    {"event log program missing", kEvents, "EventLog=%System%\\none.exe", {}, Result::Stopped},
    {"event log program that writes nothing", kEvents, "EventLog=%System%\\LoadPatients.bat", {}, Result::Stopped},
    {"event log without a folder", kEvents, "EventLog=BackupEventLog.exe", {}, Result::Stopped},
    {"default registry export", kRegistry, "RegFile=", {"Tarsus.reg"}},
    {"registry program", kRegistry, "RegFile=%Temp%\\ExportKeys.exe;", {"Keys.reg"}},
    {"batch file", kBatch, "BatFile=%System%\\DumpPatients.bat", {}},
    {"batch file missing", kBatch, "BatFile=%System%\\none.bat", {}, Result::Failed},
    {"batch file in a missing folder", kBatch, "BatFile=C:\\none\\DumpPatients.bat", {}, Result::Failed},
    {"empty batch file", kBatch, "BatFile=", {}, Result::Stopped},
};

TEST(JobItems, GatherIntoTheStagingFolder) {
  for (const Case& each : kCases) {
    SCOPED_TRACE(each.name);
    JobStation station;
    station.host.processes.Install("C:\\Tarsus\\Temp\\ExportKeys.exe", [](fakes::Disk& disk, const fakes::Words&) {
      return disk.Write("Keys.reg", "k") ? 7u : 1u;
    });
    station.LoadSection("LOG_BACKUP", {each.line});
    ExpectComplaint(station.host, each.line);
    EXPECT_EQ(each.run(station.job, "LOG_BACKUP"), each.result);
    EXPECT_EQ(station.Staged(), each.staged);
    for (const fakes::StartRecord& start : station.host.processes.started) {
      EXPECT_EQ(start.commandLine.find("\"\""), std::string::npos) << "an empty piece of a list is no item";
    }
    EXPECT_NE(station.host.disk.CurrentFolder(), "C:\\Tarsus\\System") << "left where a program ran";
    EXPECT_FALSE(station.host.disk.IsFile("C:\\Tarsus\\System\\Application.evt")) << "moved, not copied";
    EXPECT_EQ(station.WasWarnedOf("Exit code 7: ExportKeys.exe (LOG_BACKUP)"), each.staged == Names{"Keys.reg"});
  }
}

TEST_F(JobTest, EmptyFolderValueStandsForTheApplicationRoot) {
  LoadSection("LOG_BACKUP", {"Folder="});
  application.state.ApplicationRootFolder = "C:\\Tarsus\\Explain\\";
  EXPECT_EQ(backup::RunFolderItems(job, "LOG_BACKUP"), Result::Done);
  EXPECT_EQ(Staged(), Names{"Explain\\hand.txt"});
}

// The choice outlives the maintenance log, and must not thin out a backup after it.
TEST_F(JobTest, ImageFoldersGoToTheCollectorWhenAMaintenanceLogWantsImages) {
  host.disk.Write("C:\\Tarsus\\Image\\a.DDO\\1.dat", "x");
  LoadSection("LOG_BACKUP", {"Folder=Image\\a.DDO"});
  application.state.CollectImages = 1;
  EXPECT_EQ(backup::RunFolderItems(job, "LOG_BACKUP"), Result::Done);
  EXPECT_EQ(Staged(), Names{"a.DDO\\1.dat"});
  application.state.CurrentOperation = app::Operation::MaintenanceLogBackup;
  EXPECT_EQ(backup::RunFolderItems(job, "LOG_BACKUP"), Result::Stopped);
  EXPECT_EQ(collectors.asked, Names{"images to C:\\Work\\"});
}

TEST_F(JobTest, MaintenanceTakesWhatABatchFileExports) {
  application.state.CurrentOperation = app::Operation::MaintenanceLogBackup;
  for (const std::string name : {"a.txt", "b.BCP", "c.fmtt", "d.log", "e.dat"})
    host.disk.Write("C:\\Dump\\" + name, "x");
  host.disk.Write("C:\\Dump\\folder.txt\\inner.txt", "x");
  host.processes.Install("C:\\Dump\\dump.bat", DoNothing);
  host.disk.MakeFolders("C:\\Work\\BCP");
  LoadSection("MAINTENANCE", {"BatFile=C:\\Dump\\dump.bat"});
  EXPECT_EQ(backup::RunBatFileItems(job, "MAINTENANCE"), Result::Done);
  EXPECT_EQ(Staged(), (Names{"BCP\\a.txt", "BCP\\b.BCP", "BCP\\c.fmtt", "BCP\\d.log"}));
  EXPECT_EQ(NamesBelow("C:\\Dump"), (Names{"dump.bat", "e.dat", "folder.txt\\inner.txt"}));
  host.disk.Write("C:\\Dump\\a.txt", "again");
  EXPECT_EQ(backup::RunBatFileItems(job, "MAINTENANCE"), Result::Failed) << "a.txt stands there already";
  EXPECT_EQ(host.disk.Read("C:\\Work\\BCP\\a.txt") + host.disk.Read("C:\\Dump\\a.txt"), "xagain");
}

struct Deletion {
  const char* name;
  Names lines;
  Names kept;  ///< of C:\Logs
  Result result = Result::Done;
};

const Names kAllLogs = {"Sub\\d.log", "a.log", "b.log", "c.txt"};
const char* const kExport = "EventLog=Reg.exe save K C:\\Logs\\e.log";
const Deletion kDeletions[] = {
    {"common files", {"CommonFile=C:\\Logs\\*.log"}, {"Sub\\d.log", "c.txt"}},
    {"common files that are not there", {"CommonFile=C:\\Nowhere\\*.log;C:\\Logs\\x*"}, kAllLogs},
    {"plain files of a folder", {"Folder=C:\\Logs"}, {"Sub\\d.log"}},
    {"nothing listed", {"; none"}, kAllLogs},
    {"empty lists", {"CommonFile=", "Folder=;", "BatFile="}, kAllLogs},
    {"folder missing, the rest deleted", {"Folder=C:\\Nowhere;C:\\Logs"}, {"Sub\\d.log"}, Result::Failed},
    {"variable", {"Folder=%System%\\..\\..\\Logs"}, {"Sub\\d.log"}},
    {"unknown variable ends the run", {"CommonFile=%Nowhere%\\a", "Folder=C:\\Logs"}, kAllLogs, Result::Failed},
    {"batch file missing ends the run", {"BatFile=C:\\Logs\\none.bat", "Folder=C:\\Logs"}, kAllLogs, Result::Failed},
    {"commands run as they stand", {kExport, "CommonFile=C:\\Logs\\*.log"}, {"Sub\\d.log", "c.txt", "e.log"}},
};

TEST_F(JobTest, LogDeletionDeletesWhatItsSectionLists) {
  for (const Deletion& each : kDeletions) {
    SCOPED_TRACE(each.name);
    host.disk.Remove("C:\\Logs");
    for (const std::string& name : kAllLogs) host.disk.Write("C:\\Logs\\" + name, "x");
    host.disk.Find("C:\\Logs\\b.log")->attributes = fakes::kReadOnly;
    host.disk.Write("C:\\root.txt", "stays");
    LoadSection("LOG_DELETE", each.lines);
    ExpectComplaint(host, each.lines.front());
    EXPECT_EQ(backup::RunLogDeletion(job), each.result);
    EXPECT_EQ(NamesBelow("C:\\Logs"), each.kept);
    EXPECT_TRUE(host.disk.IsFile("C:\\root.txt"));
    EXPECT_EQ(host.disk.CurrentFolder(), "C:\\Work");
  }
  LoadSection("USER_BACKUP", {});
  EXPECT_EQ(backup::RunLogDeletion(job), Result::Failed) << "section missing";
}

}  // namespace
