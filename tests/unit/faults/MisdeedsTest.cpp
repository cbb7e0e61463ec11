// Programs that do not do what they say: they are missing, fail, crash, or succeed with less than they should.
#include "fakes/CommandLineTools.h"
#include "unit/faults/Route.h"

namespace faults {
namespace {

using fakes::Disk;
using fakes::ProgramAction;
using fakes::Words;

constexpr const char* kRegistry = "C:\\Windows\\System32\\Reg.exe";
constexpr const char* kExporter = "C:\\Tarsus\\System\\BackupEventLog.exe";
constexpr const char* kDump = "C:\\Tarsus\\System\\DumpPatients.bat";

ProgramAction Ends(std::uint32_t code) {
  return [=](Disk&, const Words&) { return code; };
}

/// Does the work, then does something to the archive, and ends with `code`.
ProgramAction Packs(std::uint32_t code, std::function<void(Disk&, const std::string& archive)> then) {
  return [=](Disk& disk, const Words& words) {
    fakes::RunCabarc(disk, words);
    then(disk, words[4]);
    return code;
  };
}

void Cut(Disk& disk, const std::string& archive) {
  disk.Write(archive, disk.Read(archive).substr(0, disk.Read(archive).size() / 2));
}

void DropMember(Disk& disk, const std::string& archive) {
  auto contents = fakes::ReadCabinet(disk.Read(archive)).value();
  contents.erase(contents.begin());
  disk.Write(archive, fakes::MakeCabinet(contents));
}

/// Unpacks all but one file.
std::uint32_t UnpackLess(Disk& disk, const Words& words) {
  fakes::RunCabarc(disk, words);
  const auto files = disk.Tree(words[5]);
  if (!files.empty()) disk.Remove(words[5] + "\\" + files.begin()->first);
  return 0;
}

/// Copies, but says that it did when it did not reach the destination's end.
std::uint32_t CopyShort(Disk& disk, const Words& words) {
  const std::uint32_t code = fakes::RunCommandInterpreter(disk, words);
  if (words[4].starts_with("D:\\")) Cut(disk, words[4] + words[3].substr(words[3].rfind('\\') + 1));
  return code;
}

struct Misdeed {
  const char* name;
  const char* route;
  const char* program;
  ProgramAction action;  ///< empty: the program is missing
  std::int32_t message;
  std::string logged;  ///< part of a warning; the message alone says it when empty
};

const Misdeed kMisdeeds[] = {
    {"archiver missing", "Folder", kArchiver, {}, 60371, "Not started: cabarc -r -p n PatientData.cab"},
    {"archiver fails but packs", "Folder", kArchiver, Packs(1, [](Disk&, auto&) {}), 65300,
     "Exit code 1: cabarc -r -p n PatientData.cab"},
    {"archiver crashes", "Folder", kArchiver, Ends(0xC0000005), 60371, "Exit code 3221225477: cabarc"},
    {"archiver is killed on its way", "Folder", kArchiver, Packs(1, Cut), 65300, "Archive is not whole"},
    {"archiver makes nothing", "Folder", kArchiver, Ends(0), 60371, "Archive is not whole"},
    {"archiver makes an empty file", "Folder", kArchiver,
     Packs(0, [](Disk& disk, const std::string& archive) { disk.Write(archive, ""); }), 65300,
     "PatientData.cab (PatientData)"},
    {"archiver cuts the end", "Folder", kArchiver, Packs(0, Cut), 65300, "Archive is not whole"},
    {"archiver drops a member", "Folder", kArchiver, Packs(0, DropMember), 65300, "Archive holds 3 of 4 files"},
    {"archiver takes another name", "Folder", kArchiver,
     Packs(0, [](Disk& disk, const std::string& archive) { disk.Move(archive, "x" + archive); }), 60371,
     "No archive made: PatientData.cab"},
    {"joiner drops a member", "Floppies", kArchiver,
     Packs(0,
           [](Disk& disk, const std::string& archive) {
             if (archive == "FDDivide.cab") DropMember(disk, archive);
           }),
     65300, "Archive holds 7 of 8 files"},
    {"unpacker missing", "RestoreFolder", kArchiver, {}, 60401, "Not started: cabarc -r -p X"},
    {"unpacker fails", "RestoreFolder", kArchiver, Ends(1), 60401, "Exit code 1: cabarc -r -p X"},
    {"unpacker leaves nothing", "RestoreFolder", kArchiver, Ends(0), 60401, ""},
    {"unpacker leaves less", "RestoreFolder", kArchiver, UnpackLess, 60401, ""},
    {"copier crashes", "Folder", kInterpreter, Ends(0xC0000005), 60371, "Exit code 3221225477: CMD /C xcopy"},
    {"copier cuts the end", "Folder", kInterpreter, CopyShort, 60351, "Copy is missing or has another size"},
    {"copier does nothing in a restore", "RestoreFolder", kInterpreter, Ends(0), 60401, ""},
    {"registry not exported", "Folder", kRegistry, Ends(1), 65300, "Exit code 1: Reg.exe save"},
    {"event log not exported", "Folder", kExporter, Ends(7), 65300, "Exit code 7: BackupEventLog.exe (LOG_BACKUP)"},
    {"dump missing", "Folder", kDump, {}, 60371, "Not started: DumpPatients.bat"},
    {"dump fails", "Folder", kDump, Ends(2), 65300, "Exit code 2: DumpPatients.bat (PATIENT_BACKUP)"},
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
