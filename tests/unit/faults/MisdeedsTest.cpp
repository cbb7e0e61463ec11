// Programs that do not do what they say: they are missing, fail, crash, or succeed with less than they should.
#include "fakes/CommandLineTools.h"
#include "unit/faults/Route.h"

namespace faults {
namespace {

using enum base::MessageId;

using fakes::Disk;
using fakes::ProgramAction;
using fakes::Words;

constexpr const char* kRegistry = "C:\\Windows\\System32\\Reg.exe";
constexpr const char* kExporter = "C:\\Tarsus\\System\\BackupEventLog.exe";
constexpr const char* kBadCopy = "Copy is missing or has another size";
constexpr const char* kPatient = "PatientData.cab";
constexpr const char* kNotWhole = "Archive is not whole";
constexpr const char* kDump = "C:\\Tarsus\\System\\DumpPatients.bat";

ProgramAction Ends(std::uint32_t code) {
  return [=](Disk&, const Words&) { return code; };
}

/// Something done to a file behind the program's back.
using Deed = void (*)(Disk&, const std::string& file);

void Cut(Disk& disk, const std::string& file) {
  disk.Write(file, disk.Read(file).substr(0, disk.Read(file).size() / 2));
}

void Empty(Disk& disk, const std::string& file) {
  disk.Write(file, "");
}

void Rename(Disk& disk, const std::string& file) {
  disk.Move(file, file + ".x");
}

void DropMember(Disk& disk, const std::string& archive) {
  auto contents = fakes::ReadCabinet(disk.Read(archive)).value();
  contents.erase(contents.begin());
  disk.Write(archive, fakes::MakeCabinet(contents));
}

/// Packs, then does something to this archive, and ends with `code`.
ProgramAction Packs(std::uint32_t code, const std::string& archive = {}, Deed then = Rename) {
  return [=](Disk& disk, const Words& words) {
    fakes::RunCabarc(disk, words);
    if (words[4] == archive) then(disk, archive);
    return code;
  };
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
  ProgramAction action;  ///< empty: the program is missing
  std::string logged;    ///< part of a warning; the message alone says it when empty
  base::MessageId message = BackupComplete;
  const char* route = "Folder";
};

const Misdeed kMisdeeds[] = {
    {"archiver missing", kArchiver, {}, "Not started: cabarc -r -p n PatientData.cab", BackupNotGathered},
    {"archiver fails but packs", kArchiver, Packs(1), "Exit code 1: cabarc -r -p n PatientData.cab"},
    {"archiver crashes", kArchiver, Ends(0xC0000005), "Exit code 3221225477: cabarc", BackupNotGathered},
    {"archiver is killed on its way", kArchiver, Packs(1, kPatient, Cut), kNotWhole},
    {"archiver makes nothing", kArchiver, Ends(0), kNotWhole, BackupNotGathered},
    {"archiver makes an empty file", kArchiver, Packs(0, kPatient, Empty), kNotWhole},
    {"archiver cuts the end", kArchiver, Packs(0, kPatient, Cut), "PatientData.cab (PatientData)"},
    {"archiver drops a member", kArchiver, Packs(0, kPatient, DropMember), "holds 3 of 4 files"},
    {"another name", kArchiver, Packs(0, kPatient, Rename), "No archive made: Patient", BackupNotGathered},
    {"unpacker missing", kArchiver, {}, "Not started: cabarc -r -p X", RestoreFailed, "RestoreFolder"},
    {"unpacker fails", kArchiver, Ends(1), "Exit code 1: cabarc -r -p X", RestoreFailed, "RestoreFolder"},
    {"unpacker leaves nothing", kArchiver, Ends(0), "", RestoreFailed, "RestoreFolder"},
    {"unpacker leaves less", kArchiver, UnpackLess, "", RestoreFailed, "RestoreFolder"},
    {"copier crashes", kInterpreter, Ends(0xC0000005), "Exit code 3221225477: CMD /C xcopy", BackupNotGathered},
    {"copier cuts an archive", kInterpreter, Copies("UserData.cab", Cut), kBadCopy, BackupNotWritten},
    {"copier takes another name", kInterpreter, Copies("UserData.cab", Rename), kBadCopy, BackupNotWritten},
    {"copier cuts the descriptor", kInterpreter, Copies("BackupInfo.ini", Cut), kBadCopy, BackupNotWritten},
    {"copier does nothing in a restore", kInterpreter, Ends(0), "", RestoreFailed, "RestoreFolder"},
    {"registry not exported", kRegistry, Ends(1), "Exit code 1: Reg.exe save"},
    {"event log not exported", kExporter, Ends(7), "Exit code 7: BackupEventLog.exe (LOG_BACKUP)"},
    {"dump missing", kDump, {}, "Not started: DumpPatients.bat", BackupNotGathered},
    {"dump fails", kDump, Ends(2), "Exit code 2: DumpPatients.bat (PATIENT_BACKUP)"},
    // Of the floppies' joined archive.
    {"joiner", kArchiver, Packs(0, "FDDivide.cab", DropMember), "holds 7 of 8 files", BackupComplete, "Floppies"},
};

TEST(ProgramMisdeeds, AreToldAndLoseNothing) {
  for (const Misdeed& misdeed : kMisdeeds) {
    SCOPED_TRACE(misdeed.name);
    Course course(RouteNamed(misdeed.route));
    misdeed.action ? course.processes.Install(misdeed.program, misdeed.action) : Gone(misdeed.program)(course);
    const MediumFiles before = course.HostFiles();
    course.Travel();
    EXPECT_TRUE(course.person.WasShown(misdeed.message));
    const std::string log = course.disk.Read(fakes::kLogFile);
    EXPECT_NE(log.find(misdeed.logged), std::string::npos) << log;
    EXPECT_TRUE(misdeed.logged.empty() || log.find("[Warning]") != std::string::npos);
    EXPECT_TRUE(course.IsTemporaryFolderEmpty());
    if (course.route.IsRestore()) {
      EXPECT_EQ(course.HostFiles(), before);
    }
  }
}

}  // namespace
}  // namespace faults
