// The executors of the item kinds.
#include "jobs/Items.h"

#include "unit/Station.h"

namespace {

using base::Result;
using enum base::MessageId;

using Executor = base::Outcome (*)(const jobs::Job&, const std::string&);

base::Outcome RunFiles(const jobs::Job& job, const std::string& section) {
  jobs::Gathering gathering;
  return jobs::RunCommonFileItems(job, section, gathering);
}
base::Outcome RunFolders(const jobs::Job& job, const std::string& section) {
  jobs::Gathering gathering;
  return jobs::RunFolderItems(job, section, gathering);
}

constexpr Executor kFile = RunFiles;
constexpr Executor kFolder = RunFolders;
constexpr Executor kEvents = jobs::RunEventLogItems;
constexpr Executor kRegistry = jobs::RunRegFileItems;
constexpr Executor kBatch = jobs::RunBatFileItems;

struct Case {
  const char* name;
  Executor run;
  std::string line;
  Names staged = {};
  Result result = Result::Done;
  const char* cause = "";  ///< of a failure
};

const Case kCases[] = {
    {"no key", kFile, "; none", {}, Result::Stopped},
    {"text before the variable is lost", kFile, "CommonFile=junk%System%\\Tarsus.log", {"Tarsus.log"}},
    {"one of several", kFile, "CommonFile=C:\\none.x;;C:\\Tarsus\\Menu\\*.ini", {"menu.ini"}},
    {"no common file there", kFile, "CommonFile=C:\\none.x", {}, Result::Stopped},
    {"unknown variable", kFile, "CommonFile=%Nowhere%\\a;C:\\Tarsus\\Menu\\menu.ini", {}, Result::Failed, "Nowhere"},
    {"many separators at its end", kFolder, "Folder=C:\\Tarsus\\Menu\\\\", {"Menu\\menu.ini"}},
    {"one missing", kFolder, "Folder=Menu;None;%Data%\\..\\User\\", {"Menu\\menu.ini", "User\\users.dat"}},
    {"folder missing", kFolder, "Folder=None", {}, Result::Stopped},
    {"event log program missing", kEvents, "EventLog=%System%\\none.exe", {}, Result::Stopped},
    {"event log program that writes nothing", kEvents, "EventLog=%System%\\LoadPatients.bat", {}, Result::Stopped},
    {"event log without a folder", kEvents, "EventLog=BackupEventLog.exe", {}, Result::Stopped},
    {"registry program", kRegistry, "RegFile=%Temp%\\ExportKeys.exe;", {"Keys.reg"}},
    {"batch file missing", kBatch, "BatFile=%System%\\none.bat", {}, Result::Failed, "Not started: none.bat"},
    {"batch file in a missing folder", kBatch, "BatFile=C:\\none\\DumpPatients.bat", {}, Result::Failed, "C:\\none"},
    {"empty batch file", kBatch, "BatFile=", {}, Result::Stopped},
};

TEST(JobItems, GatherIntoTheStagingFolder) {
  for (const Case& each : kCases) {
    SCOPED_TRACE(each.name);
    JobStation station;
    station.host.processes.Install("C:\\Tarsus\\Temp\\ExportKeys.exe", [](fakes::Disk& disk, const fakes::Words&) {
      return disk.Write("Keys.reg", "k") ? 7u : 1u;
    });
    EXPECT_TRUE(station.LoadSection("LOG_BACKUP", {each.line}).IsDone());
    if (each.cause == std::string("Nowhere")) station.host.person.ExpectMessage(PathEntryUnreadable);
    const base::Outcome outcome = each.run(station.job, "LOG_BACKUP");
    EXPECT_EQ(outcome, each.result);
    EXPECT_PRED_FORMAT2(testing::IsSubstring, each.cause, outcome.cause);
    EXPECT_EQ(station.Staged(), each.staged);
    for (const fakes::StartRecord& start : station.host.processes.started) {
      EXPECT_EQ(start.commandLine.find("\"\""), std::string::npos) << "an empty piece of a list is no item";
    }
    EXPECT_NE(station.host.disk.CurrentFolder(), "C:\\Tarsus\\System") << "left where a program ran";
    EXPECT_EQ(station.WasWarnedOf("Exit code 7: ExportKeys.exe (LOG_BACKUP)"), each.staged == Names{"Keys.reg"});
  }
}

TEST_F(JobTest, EmptyFolderValueStandsForTheApplicationRoot) {
  EXPECT_TRUE(LoadSection("LOG_BACKUP", {"Folder="}).IsDone());
  application.state.ApplicationRootFolder = "C:\\Tarsus\\Explain\\";
  EXPECT_EQ(RunFolders(job, "LOG_BACKUP"), Result::Done);
  EXPECT_EQ(Staged(), Names{"Explain\\hand.txt"});
}

/// Items of which some bring one name into the archive, or not.
struct Meeting {
  const char* name;
  Names lines;
  std::string reported;  ///< both places, as the log has them; empty where nothing meets
};

const Meeting kMeetings[] = {
    {"two common files", {"CommonFile=C:\\A\\x.txt;C:\\B\\X.TXT"}, "C:\\A\\x.txt and C:\\B\\X.TXT"},
    {"a file of each of two patterns", {"CommonFile=C:\\A\\*.txt;C:\\B\\x*"}, "C:\\A\\x.txt and C:\\B\\X.TXT"},
    {"two folders", {"Folder=C:\\A\\Sub;C:\\B\\sub\\"}, "C:\\A\\Sub and C:\\B\\sub"},
    {"a folder and a common file's sub-folder",
     {"CommonFile=C:\\A\\*.txt", "Folder=C:\\B\\sub"},
     "C:\\A\\Sub and C:\\B\\sub"},
    {"sub-folders of two patterns", {"CommonFile=C:\\A\\y*;C:\\B\\y*"}, "C:\\A\\Sub and C:\\B\\sub"},
    {"a sub-folder that the pattern takes nothing of", {"CommonFile=C:\\A\\x*", "Folder=C:\\B\\sub"}, ""},
    {"the same file twice", {"CommonFile=C:\\A\\x.txt;c:\\a\\X.txt"}, ""},
    {"the same folder twice", {"Folder=C:\\A\\Sub;c:\\a\\sub\\"}, ""},
    {"the same sub-folder by two patterns", {"CommonFile=C:\\A\\*.txt;C:\\A\\y*"}, ""},
    {"names that differ", {"CommonFile=C:\\A\\x.txt", "Folder=C:\\B\\sub"}, ""},
};

// What one of them is would come back as the other.
TEST(JobItems, OneNameFromTwoPlacesIsReported) {
  for (const Meeting& each : kMeetings) {
    SCOPED_TRACE(each.name);
    JobStation station;
    for (const char* file : {"A\\x.txt", "A\\Sub\\y.txt", "B\\X.TXT", "B\\sub\\y.txt"})
      station.host.disk.Write(std::string("C:\\") + file, file);
    EXPECT_TRUE(station.LoadSection("LOG_BACKUP", each.lines).IsDone());
    jobs::Gathering gathering;
    static_cast<void>(jobs::RunCommonFileItems(station.job, "LOG_BACKUP", gathering));
    static_cast<void>(jobs::RunFolderItems(station.job, "LOG_BACKUP", gathering));
    EXPECT_EQ(station.WasWarnedOf("Two of one name meet in the archive: "), !each.reported.empty());
    EXPECT_TRUE(each.reported.empty() || station.WasWarnedOf(each.reported));
  }
}

// Only a maintenance log that wants some days' images may thin an image folder out.
TEST_F(JobTest, ImageFoldersAreOtherwiseTakenWhole) {
  host.disk.Write("C:\\Tarsus\\Image\\a.DDO\\1.dat", "x");
  EXPECT_TRUE(LoadSection("LOG_BACKUP", {"Folder=Image\\a.DDO"}).IsDone());
  for (const auto& maintenance : {std::optional(jobs::MaintenanceOptions()), {}}) {
    host.disk.Remove(std::string(kStaging) + "a.DDO");
    job.maintenance = maintenance;
    EXPECT_EQ(RunFolders(job, "LOG_BACKUP"), Result::Done);
    EXPECT_EQ(Staged(), Names{"a.DDO\\1.dat"});
  }
}

TEST_F(JobTest, MaintenanceTakesWhatABatchFileExports) {
  job.maintenance.emplace();
  for (const std::string name : {"a.txt", "b.BCP", "c.fmtt", "d.log", "e.dat"})
    host.disk.Write("C:\\Dump\\" + name, "x");
  host.disk.Write("C:\\Dump\\folder.txt\\inner.txt", "x");
  host.processes.Install("C:\\Dump\\dump.bat", DoNothing);
  host.disk.MakeFolders(kStaging + std::string("BCP"));
  EXPECT_TRUE(LoadSection("MAINTENANCE", {"BatFile=C:\\Dump\\dump.bat"}).IsDone());
  EXPECT_EQ(jobs::RunBatFileItems(job, "MAINTENANCE"), Result::Done);
  EXPECT_EQ(Staged(), (Names{"BCP\\a.txt", "BCP\\b.BCP", "BCP\\c.fmtt", "BCP\\d.log"}));
  EXPECT_EQ(NamesBelow("C:\\Dump"), (Names{"dump.bat", "e.dat", "folder.txt\\inner.txt"}));
  host.disk.Write("C:\\Dump\\a.txt", "again");
  const base::Outcome again = jobs::RunBatFileItems(job, "MAINTENANCE");
  EXPECT_EQ(again, Result::Failed) << "a.txt stands there already";
  EXPECT_PRED_FORMAT2(testing::IsSubstring, "C:\\Dump\\a.txt", again.cause);
}

}  // namespace
