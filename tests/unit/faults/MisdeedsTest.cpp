// Programs that do not do what they say: they are missing, fail, crash, or succeed with less than they should.
#include <gtest/gtest.h>

#include "fakes/CommandLineTools.h"
#include "unit/faults/Route.h"

namespace faults {
namespace {

using fakes::Disk;
using fakes::ProgramAction;
using fakes::Words;

constexpr const char* kArchiver = "C:\\Tarsus\\Backup\\cabarc.exe";
constexpr const char* kInterpreter = "C:\\Windows\\System32\\CMD.exe";
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

void PrintTo(const Misdeed& misdeed, std::ostream* out) {
  *out << misdeed.name;
}

const Misdeed kMisdeeds[] = {
    {"ArchiverMissing", "Folder", kArchiver, {}, 60371, "Not started: cabarc -r -p n PatientData.cab"},
    {"ArchiverFailsButPacks", "Folder", kArchiver, Packs(1, [](Disk&, auto&) {}), 65300,
     "Exit code 1: cabarc -r -p n PatientData.cab"},
    {"ArchiverCrashes", "Folder", kArchiver, Ends(0xC0000005), 60371, "Exit code 3221225477: cabarc"},
    {"ArchiverIsKilledOnItsWay", "Folder", kArchiver, Packs(1, Cut), 65300, "Archive is not whole"},
    {"ArchiverMakesNothing", "Folder", kArchiver, Ends(0), 60371, "Archive is not whole"},
    {"ArchiverMakesAnEmptyFile", "Folder", kArchiver,
     Packs(0, [](Disk& disk, const std::string& archive) { disk.Write(archive, ""); }), 65300,
     "PatientData.cab (PatientData)"},
    {"ArchiverCutsTheEnd", "Folder", kArchiver, Packs(0, Cut), 65300, "Archive is not whole"},
    {"ArchiverDropsAMember", "Folder", kArchiver, Packs(0, DropMember), 65300, "Archive holds 3 of 4 files"},
    {"ArchiverTakesAnotherName", "Folder", kArchiver,
     Packs(0, [](Disk& disk, const std::string& archive) { disk.Move(archive, "x" + archive); }), 60371,
     "No archive made: PatientData.cab"},
    {"JoinerDropsAMember", "Floppies", kArchiver,
     Packs(0,
           [](Disk& disk, const std::string& archive) {
             if (archive == "FDDivide.cab") DropMember(disk, archive);
           }),
     65300, "Archive holds 7 of 8 files"},
    {"UnpackerMissing", "RestoreFolder", kArchiver, {}, 60401, "Not started: cabarc -r -p X"},
    {"UnpackerFails", "RestoreFolder", kArchiver, Ends(1), 60401, "Exit code 1: cabarc -r -p X"},
    {"UnpackerLeavesNothing", "RestoreFolder", kArchiver, Ends(0), 60401, ""},
    {"UnpackerLeavesLess", "RestoreFolder", kArchiver, UnpackLess, 60401, ""},
    {"CopierCrashes", "Folder", kInterpreter, Ends(0xC0000005), 60371, "Exit code 3221225477: CMD /C xcopy"},
    {"CopierCutsTheEnd", "Folder", kInterpreter, CopyShort, 60351, "Copy is missing or has another size"},
    {"CopierDoesNothingInARestore", "RestoreFolder", kInterpreter, Ends(0), 60401, ""},
    {"RegistryNotExported", "Folder", kRegistry, Ends(1), 65300, "Exit code 1: Reg.exe save"},
    {"EventLogNotExported", "Folder", kExporter, Ends(7), 65300, "Exit code 7: BackupEventLog.exe (LOG_BACKUP)"},
    {"DumpMissing", "Folder", kDump, {}, 60371, "Not started: DumpPatients.bat"},
    {"DumpFails", "Folder", kDump, Ends(2), 65300, "Exit code 2: DumpPatients.bat (PATIENT_BACKUP)"},
};

class ProgramMisdeeds : public testing::TestWithParam<Misdeed> {};

TEST_P(ProgramMisdeeds, AreToldAndLoseNothing) {
  const Misdeed& misdeed = GetParam();
  Course course(RouteNamed(misdeed.route));
  if (misdeed.action)
    course.processes.Install(misdeed.program, misdeed.action);
  else
    course.disk.Remove(misdeed.program);
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

INSTANTIATE_TEST_SUITE_P(All, ProgramMisdeeds, testing::ValuesIn(kMisdeeds),
                         [](const auto& test) { return test.param.name; });

}  // namespace
}  // namespace faults
