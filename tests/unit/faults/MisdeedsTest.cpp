// Programs that do not do what they say: they are missing, fail, crash, or succeed with less than they should.
#include "fakes/FaultyArchiver.h"
#include "unit/faults/Oracle.h"

namespace faults {
namespace {

using enum base::MessageId;
using enum fakes::ArchiveFlaw;

using fakes::Disk;
using fakes::FaultyArchiver;
using fakes::ProgramAction;
using fakes::Words;

constexpr const char* kRegistry = "C:\\Windows\\System32\\Reg.exe";
constexpr const char* kExporter = "C:\\Tarsus\\System\\BackupEventLog.exe";
constexpr const char* kBadCopy = "Copy is missing or has another size";
constexpr const char* kPatient = "PatientData.cab";
constexpr const char* kNotWhole = "PatientData.cab was not made";
constexpr const char* kDump = "C:\\Tarsus\\System\\DumpPatients.bat";

ProgramAction Ends(std::uint32_t code) {
  return [=](Disk&, const Words&) { return code; };
}

/// Something done to a file behind the program's back.
using Deed = void (*)(Disk&, const std::string& file);

void Cut(Disk& disk, const std::string& file) {
  disk.Write(file, disk.Read(file).substr(0, disk.Read(file).size() / 2));
}

void Rename(Disk& disk, const std::string& file) {
  disk.Move(file, file + ".x");
}

/// Packs as it should, and says that it has failed.
std::uint32_t PackAndFail(Disk& disk, const Words& words) {
  fakes::RunCabarc(disk, words);
  return 1;
}

/// Unpacks all but one file.
std::uint32_t UnpackLess(Disk& disk, const Words& words) {
  fakes::RunCabarc(disk, words);
  const auto files = disk.Tree(words[5]);
  if (!files.empty()) disk.Remove(words[5] + "\\" + files.begin()->first);
  return 0;
}

/// Copies, then does something to the copy of this file at the destination, and says that all is well.
ProgramAction Copies(const std::string& name, Deed then) {
  return [=](Disk& disk, const Words& words) {
    fakes::RunCommandInterpreter(disk, words);
    if (words[3].ends_with(name) && words[4] == kSetFolder) then(disk, kSetFolder + name);
    return 0u;
  };
}

struct Misdeed {
  const char* name;
  const char* program;
  ProgramAction action;     ///< empty: the program is missing
  std::string logged;       ///< part of a warning or an error; the message alone says it when empty
  base::MessageId message;  ///< that must be shown; None where the outcome may be the one or the other
  const char* route = "Folder";
};

const Misdeed kMisdeeds[] = {
    {"archiver missing", kArchiver, {}, "Not started: cabarc -r -p n PatientData.cab", BackupNotGathered},
    {"archiver fails but packs", kArchiver, PackAndFail, "Exit code 1: cabarc -r -p n PatientData.cab", BackupWarnings},
    {"archiver crashes", kArchiver, Ends(0xC0000005), "Exit code 3221225477: cabarc", BackupNotGathered},
    {"archiver is killed on its way", kArchiver, FaultyArchiver(Half, kPatient, 1), kNotWhole, BackupNotGathered},
    {"archiver makes nothing", kArchiver, Ends(0), kNotWhole, BackupNotGathered},
    {"archiver takes another name", kArchiver, FaultyArchiver(Missing, kPatient), kPatient, BackupNotGathered},
    {"unpacker missing", kArchiver, {}, "Not started: cabarc -r -p X", RestoreFailed, "RestoreFolder"},
    {"unpacker fails", kArchiver, Ends(1), "Exit code 1: cabarc -r -p X", RestoreFailed, "RestoreFolder"},
    {"unpacker leaves nothing", kArchiver, Ends(0), "", RestoreFailed, "RestoreFolder"},
    {"unpacker leaves less", kArchiver, UnpackLess, "", RestoreFailed, "RestoreFolder"},
    {"copier crashes", kInterpreter, Ends(0xC0000005), "Exit code 3221225477: CMD /C xcopy", None},
    {"copier cuts an archive", kInterpreter, Copies("UserData.cab", Cut), kBadCopy, BackupNotWritten},
    {"copier takes another name", kInterpreter, Copies("UserData.cab", Rename), kBadCopy, BackupNotWritten},
    {"copier cuts the descriptor", kInterpreter, Copies("BackupInfo.ini", Cut), kBadCopy, BackupNotWritten},
    {"copier does nothing in a restore", kInterpreter, Ends(0), "", RestoreFailed, "RestoreFolder"},
    {"registry not exported", kRegistry, Ends(1), "Exit code 1: Reg.exe save", BackupWarnings},
    {"event log not exported", kExporter, Ends(7), "Exit code 7: BackupEventLog.exe (LOG_BACKUP)", BackupWarnings},
    {"dump missing", kDump, {}, "Not started: DumpPatients.bat", BackupNotGathered},
    {"dump fails", kDump, Ends(2), "Exit code 2: DumpPatients.bat (PATIENT_BACKUP)", BackupWarnings},
};

bool HasWarningOrError(const std::string& log) {
  return log.find("[Warning]") != std::string::npos || log.find("[Error]") != std::string::npos;
}

const Flawless& FlawlessOf(const std::string& route) {
  static std::map<std::string, Flawless> runs;
  return runs.try_emplace(route, RouteNamed(route)).first->second;
}

TEST(ProgramMisdeeds, AreToldAndLoseNothing) {
  for (const Misdeed& misdeed : kMisdeeds) {
    SCOPED_TRACE(misdeed.name);
    Course course(RouteNamed(misdeed.route));
    misdeed.action ? course.processes.Install(misdeed.program, misdeed.action) : Gone(misdeed.program)(course);
    course.Travel();
    EXPECT_EQ(Judge(course, FlawlessOf(misdeed.route)), "");
    EXPECT_TRUE(misdeed.message == None || course.person.WasShown(misdeed.message));
    EXPECT_TRUE(misdeed.message == None || course.ReportedSuccess() == (misdeed.message == BackupWarnings));
    const std::string log = course.disk.Read(fakes::kLogFile);
    EXPECT_NE(log.find(misdeed.logged), std::string::npos) << log;
    EXPECT_TRUE(misdeed.logged.empty() || HasWarningOrError(log));
    if (!course.ReportedSuccess()) {
      EXPECT_EQ(course.HostFiles(), course.before);
    }
  }
}

// Whatever becomes of the archive of the logs: none is deleted, and the older set stays.
TEST(ProgramMisdeeds, AnArchiveThatIsNotWhatWasGatheredEndsTheBackup) {
  for (const auto flaw : {Missing, Stub, Half, OneFileLess, OtherContent}) {
    SCOPED_TRACE(static_cast<int>(flaw));
    Course course(RouteNamed("OlderSet"));
    course.processes.Install(kArchiver, FaultyArchiver(flaw, "LogData.cab"));
    const MediumFiles older = course.Destination();
    course.Travel();
    EXPECT_EQ(Judge(course, FlawlessOf("OlderSet")), "");
    EXPECT_TRUE(course.person.WasShown(BackupNotGathered) && !course.ReportedSuccess());
    EXPECT_EQ(course.HostFiles(), course.before);
    EXPECT_TRUE(course.Destination() == older);
    const std::string log = course.disk.Read(fakes::kLogFile);
    EXPECT_TRUE(log.find("LogData.cab") != std::string::npos && HasWarningOrError(log)) << log;
  }
}

// One archive less on the floppies than the descriptor names.
TEST(ProgramMisdeeds, AJoinedArchiveThatIsNotWholeGoesToNoDisk) {
  for (const auto flaw : {Missing, Stub, Half, OneFileLess, OtherContent}) {
    SCOPED_TRACE(static_cast<int>(flaw));
    Course course(RouteNamed("Floppies"));
    course.processes.Install(kArchiver, FaultyArchiver(flaw, "FDDivide.cab"));
    course.Travel();
    EXPECT_EQ(Judge(course, FlawlessOf("Floppies")), "");
    EXPECT_FALSE(course.ReportedSuccess());
    EXPECT_EQ(NamesOf(course.Destination()), Names());
    EXPECT_TRUE(HasWarningOrError(course.disk.Read(fakes::kLogFile)));
  }
}

}  // namespace
}  // namespace faults
