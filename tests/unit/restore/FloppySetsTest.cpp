// Floppy sets: disks changed while a backup runs, and restores that gather the pieces again.
#include <gtest/gtest.h>

#include "fakes/CommandLineTools.h"
#include "unit/restore/RestoreSession.h"

namespace {

using Disks = std::vector<MediumFiles>;
using Paths = std::vector<std::string>;

constexpr const char* kReport = "C:\\Tarsus\\Report\\big.dat";
constexpr std::size_t kPiece = 1'400'000;

/// A joined archive of `size` bytes with nothing in it but the report data.
std::string JoinedArchive(std::size_t size) {
  const auto pack = [](std::size_t bytes) {
    const std::string report = fakes::MakeCabinet({{"Report\\big.dat", std::string(bytes, 'x')}});
    return fakes::MakeCabinet({{"ReportData.cab.tmp", report}});
  };
  std::size_t bytes = size;
  while (pack(bytes).size() > size) bytes -= std::max<std::size_t>(1, (pack(bytes).size() - size) / 2);
  return pack(bytes);
}

std::string DiskDescriptor(const std::string& count, const std::string& number) {
  return Lines(DescriptorLines({"CABFile=FDDivide.cab;", "FDCount=" + count, "FDNumber=" + number, "ReportData=V2.1"}));
}

/// The disks of a set that holds `joined`, in pieces of `pieceSize` bytes.
Disks CutIntoDisks(const std::string& joined, std::size_t pieceSize) {
  const std::string count = std::to_string(joined.size() / pieceSize + 1);
  Disks disks;
  for (std::size_t at = 0; at <= joined.size(); at += pieceSize) {
    const std::string number = std::to_string(disks.size() + 1);
    disks.push_back({{"BackupInfo.ini", DiskDescriptor(count, number)}});
    if (at < joined.size()) disks.back()["FDDivide00" + number] = joined.substr(at, pieceSize);
  }
  return disks;
}

struct FloppySession : RestoreSession {
  void Prompt(std::int32_t id, std::function<void()> before = {}) {
    person.ExpectMessage(id, app::kConsented, std::move(before));
  }
  void PromptForDisk(std::int32_t id, const MediumFiles& contents) {
    Prompt(id, [this, contents] { InsertDisk(contents); });
  }
  void EmptyDrive() { disk.FindDrive("A:")->ready = false; }
};

// Every prompt is answered, an empty drive is said twice, and the set comes back from its disks
// though they are offered in the wrong order and the restore is stopped once.
TEST(FloppySets, ComeBackAsTheyWere) {
  FloppySession session;
  Disks disks;
  session.disk.Write(kReport, std::string(2'900'000, 'x'));
  const auto keepDisk = [&] {
    disks.push_back(session.disk.Tree("A:\\"));
    session.EmptyDrive();
  };
  session.EmptyDrive();
  session.BeginBackup(flows::kEverything);
  session.AcceptFolder("A:\\");
  session.Prompt(64300);
  session.PromptForDisk(64300, {{"stranger.txt", "goes"}});
  session.person.ExpectFormat(0);
  for (int disk = 2; disk <= 3; ++disk) {
    session.Prompt(64306, keepDisk);
    session.Prompt(64300);
    session.PromptForDisk(64300, {});
    session.person.ExpectFormat(0);
  }
  session.person.ExpectMessage(65300);
  session.EndMenu();
  session.Run();
  disks.push_back(session.disk.Tree("A:\\"));
  ASSERT_EQ(disks.size(), 3u);
  for (const MediumFiles& disk : disks) EXPECT_EQ(disk.size(), 2u);

  const auto expected = session.disk.Tree("C:\\Tarsus\\Report");
  for (const char* lost : {"Report", "Menu", "Patient"}) session.disk.Remove(std::string("C:\\Tarsus\\") + lost);
  session.BeginRestore("A:\\");
  session.StartRestore("xx----x-");
  session.PromptForDisk(64401, disks[1]);
  session.person.ExpectMessage(64401, app::kRefused).ExpectMessage(65401, 0, [&] {
    EXPECT_TRUE(session.IsTemporaryFolderEmpty());
    session.InsertDisk(disks[0]);
  });
  session.StartRestore("xx----x-");
  session.PromptForDisk(64406, disks[2]);
  session.Prompt(64401, [&] { session.EmptyDrive(); });
  session.PromptForDisk(64400, disks[1]);
  session.PromptForDisk(64406, disks[2]);
  session.person.ExpectMessage(65400);
  session.EndMenu();
  session.Run();
  EXPECT_EQ(session.disk.Tree("C:\\Tarsus\\Report"), expected);
  EXPECT_EQ(session.disk.Read("C:\\Tarsus\\Menu\\menu.ini"), "menu=1");
  EXPECT_EQ(session.disk.Tree("C:\\Tarsus\\Patient").size(), 3u);
  EXPECT_TRUE(session.IsTemporaryFolderEmpty());
  EXPECT_EQ(session.processes.CountStarted("CMD /C Copy /B FDDivide001 + FDDivide002 + FDDivide003 FDDivide.cab"), 1);
  EXPECT_EQ(session.shell.lastTitle, "Copying a disk");
}

// Around the piece size; an exact multiple declares one disk more, which holds no piece.
TEST(FloppySets, AreGatheredWhateverTheirSize) {
  for (const std::size_t size : {std::size_t{300}, kPiece - 1, kPiece, kPiece + 1, 2 * kPiece}) {
    SCOPED_TRACE(size);
    const Disks disks = CutIntoDisks(JoinedArchive(size), kPiece);
    ASSERT_EQ(disks.size(), size / kPiece + 1);
    ASSERT_EQ(disks[0].at("FDDivide001").size(), std::min(size, kPiece));
    FloppySession session;
    session.InsertDisk(disks[0]);
    session.BeginRestore("A:\\");
    session.StartRestore("------x-");
    for (std::size_t i = 1; i < disks.size(); ++i) session.PromptForDisk(64406, disks[i]);
    session.person.ExpectMessage(65400);
    session.EndMenu();
    session.Run();
    EXPECT_EQ(session.ChangedHostFiles(), Paths{"Report\\big.dat"});
    EXPECT_TRUE(session.IsTemporaryFolderEmpty());
  }
}

TEST(FloppySets, SmallLetterMeansAFolder) {
  FloppySession session;
  const std::string cabinet = fakes::MakeCabinet({{"Report\\big.dat", "whole"}});
  session.InsertDisk({{"BackupInfo.ini", DiskDescriptor("2", "1")}, {"ReportData.cab", cabinet}});
  session.BeginRestore("a:\\");
  session.StartRestore("------x-");
  session.person.ExpectMessage(65400);
  session.EndMenu();
  session.Run();
  EXPECT_EQ(session.disk.Read(kReport), "whole");
}

struct Refusal {
  const char* name;
  std::deque<std::int32_t> statuses;
  std::int32_t formatResult;  ///< 1: there is no format dialog
  std::vector<std::pair<std::int32_t, std::int32_t>> messages;
};

const Refusal kRefusals[] = {
    {"error", {-1}, 1, {{63310, 0}, {65301, 0}}},
    {"unusable", {0}, 1, {{63311, 0}, {65301, 0}}},
    {"write-protected", {2}, 1, {{63312, 0}, {65301, 0}}},
    {"not inserted", {1}, 1, {{64300, app::kRefused}, {65301, 0}}},
    {"unusable after a prompt", {1, 0}, 1, {{64300, app::kConsented}, {63311, 0}, {65301, 0}}},
    {"cannot be formatted", {3}, -3, {{60382, 0}, {65301, 0}}},
    {"formatting cancelled", {3}, -2, {{60381, 0}, {65301, 0}}},
    {"formatting failed", {3}, -1, {{65301, 0}}},
};

// The first disk is written by then and stays as it is.
TEST(FloppySets, RefusedSecondDiskStopsTheBackup) {
  for (const Refusal& refusal : kRefusals) {
    SCOPED_TRACE(refusal.name);
    FloppySession session;
    MediumFiles first;
    session.disk.Write(kReport, std::string(kPiece, 'x'));
    session.BeginBackup({.report = true});
    session.AcceptFolder("A:\\");
    session.person.ExpectFormat(0);
    session.Prompt(64306, [&] {
      first = session.disk.Tree("A:\\");
      session.Told().mediaStatuses['A'] = refusal.statuses;
    });
    if (refusal.formatResult != 1) session.person.ExpectFormat(refusal.formatResult);
    for (const auto& [id, answer] : refusal.messages) session.person.ExpectMessage(id, answer);
    session.CancelFolder();
    session.LeaveBackup();
    session.Run();
    EXPECT_EQ(first["FDDivide001"].size(), kPiece);
    EXPECT_EQ(session.disk.Tree("A:\\"), first);
    EXPECT_EQ(session.qx32.texts.count("BackupDate"), 0u);
    EXPECT_TRUE(session.IsTemporaryFolderEmpty());
  }
}

struct Failure {
  const char* name;
  /// Works on a set of three disks, the first of which goes into the drive.
  void (*arrange)(FloppySession&, Disks&);
  /// 64406 puts the next disk in, unless the restore stops there; every other prompt is refused.
  std::vector<std::int32_t> messages;
};

void PrintTo(const Failure& failure, std::ostream* out) {
  *out << failure.name;
}

class FloppyRestoreFailure : public testing::TestWithParam<Failure> {};

TEST_P(FloppyRestoreFailure, IsShownAndTouchesNothing) {
  const std::vector<std::int32_t>& messages = GetParam().messages;
  FloppySession session;
  Disks disks = CutIntoDisks(JoinedArchive(299), 100);
  ASSERT_EQ(disks.size(), 3u);
  GetParam().arrange(session, disks);
  session.InsertDisk(disks[0]);
  session.BeginRestore("A:\\");
  session.StartRestore("------x-");
  const bool stopped = messages.back() == 65401;
  std::size_t next = 1;
  for (std::size_t i = 0; i < messages.size(); ++i) {
    if (messages[i] == 64406 && messages[i + 1] != 65401) {
      session.PromptForDisk(64406, disks[next++]);
    } else {
      session.person.ExpectMessage(messages[i], app::kRefused);
    }
  }
  if (stopped) session.CancelRestore();
  session.LeaveSelection();
  session.Run();
  EXPECT_EQ(session.ChangedHostFiles(), Paths());
  EXPECT_TRUE(session.IsTemporaryFolderEmpty());
  EXPECT_FALSE(session.state.RestoreDone);
}

template <std::int32_t status>
void AnswerAtDisk(FloppySession& session, Disks&) {
  session.Told().mediaStatuses['A'] = {3, status};
}

void SetCount(Disks& disks, const std::string& count) {
  disks[0]["BackupInfo.ini"] = DiskDescriptor(count, "1");
}

const Failure kFailures[] = {
    {"NextDiskRefused", [](FloppySession&, Disks&) {}, {64406, 65401}},
    {"LastDiskRefused", [](FloppySession&, Disks&) {}, {64406, 64406, 65401}},
    {"WrongDisk", [](FloppySession&, Disks& d) { std::swap(d[0], d[1]); }, {64401, 65401}},
    {"NumberIsText",
     [](FloppySession&, Disks& d) { d[0]["BackupInfo.ini"] = DiskDescriptor("3", "01"); },
     {64401, 65401}},
    {"DriveError", AnswerAtDisk<-1>, {63410, 65401}},
    {"DiskUnusable", AnswerAtDisk<0>, {63411, 65401}},
    {"DiskNotForThis", AnswerAtDisk<2>, {63412, 65401}},
    {"DiskNotInserted", AnswerAtDisk<1>, {64400, 65401}},
    {"CountZero", [](FloppySession&, Disks& d) { SetCount(d, "0"); }, {60427}},
    {"CountNegative", [](FloppySession&, Disks& d) { SetCount(d, "-1"); }, {60427}},
    {"CountBeyond16Bits", [](FloppySession&, Disks& d) { SetCount(d, "99999"); }, {60427}},
    {"CountIsText", [](FloppySession&, Disks& d) { SetCount(d, "three"); }, {60427}},
    {"CountBeginsAsNumber", [](FloppySession&, Disks& d) { SetCount(d, "3 disks"); }, {60427}},
    {"CountMissing", [](FloppySession&, Disks& d) { SetCount(d, ""); }, {60427}},
    {"NumberMissing",
     [](FloppySession&, Disks& d) { d[1]["BackupInfo.ini"] = DiskDescriptor("3", ""); },
     {64406, 60427}},
    {"NextDiskHasNoDescriptor", [](FloppySession&, Disks& d) { d[1].erase("BackupInfo.ini"); }, {64406, 60427}},
    {"FirstPieceMissing", [](FloppySession&, Disks& d) { d[0].erase("FDDivide001"); }, {63460}},
    {"LastPieceMissing", [](FloppySession&, Disks& d) { d[2].erase("FDDivide003"); }, {64406, 64406, 63460}},
    {"OnlyPieceMissing",
     [](FloppySession&, Disks& d) {
       SetCount(d, "1");
       d[0].erase("FDDivide001");
     },
     {63460}},
    {"PieceNotCopied",
     [](FloppySession& s, Disks&) { s.calls.FailFrom("Shell", "CopyWithProgress", 2); },
     {64406, 63460}},
    {"PieceShortened", [](FloppySession&, Disks& d) { d[1]["FDDivide002"].pop_back(); }, {64406, 64406, 60421}},
    {"JoinWritesNothing",
     [](FloppySession& s, Disks&) {
       s.processes.Install("C:\\Windows\\System32\\CMD.exe", [](fakes::Disk& disk, const fakes::Words& words) {
         return words[2] == "Copy" ? 0u : fakes::RunCommandInterpreter(disk, words);
       });
     },
     {64406, 64406, 60326, 65401}},
    {"JoinNotStarted",
     [](FloppySession& s, Disks&) {
       s.calls.FailFrom("Processes", "Start", 1, "CMD /C Copy /B FDDivide001 + FDDivide002 + FDDivide003 FDDivide.cab");
     },
     {64406, 64406, 60326, 65401}},
    {"ArchiveHoldsAnotherCategory",
     [](FloppySession&, Disks& d) {
       SetCount(d, "1");
       d[0]["FDDivide001"] = fakes::MakeCabinet({{"MenuData.cab.tmp", fakes::MakeCabinet({{"a", "b"}})}});
     },
     {60401}},
};

INSTANTIATE_TEST_SUITE_P(All, FloppyRestoreFailure, testing::ValuesIn(kFailures),
                         [](const auto& test) { return test.param.name; });

}  // namespace
