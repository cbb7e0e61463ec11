// Floppy sets: disks changed while a backup runs, and restores that gather the pieces again.
#include "unit/Session.h"

namespace {

using Disks = std::vector<MediumFiles>;

constexpr const char* kReport = "C:\\Tarsus\\Report\\big.dat";
constexpr std::size_t kPiece = 1'400'000;
constexpr const char* kJoinCommand = "CMD /C Copy /B FDDivide001 + FDDivide002 + FDDivide003 FDDivide.cab";

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

std::string DiskLines(const std::string& count, const std::string& number) {
  return "CABFile=FDDivide.cab;\r\nFDCount=" + count + "\r\nFDNumber=" + number + "\r\n";
}
std::string DiskDescriptor(const std::string& count, const std::string& number) {
  return Lines(DescriptorLines()) + DiskLines(count, number) + "ReportData=V2.1\r\n";
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

struct FloppySession : Session {
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
  session.BeginBackup(kEverything);
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
  session.EndAfter({65300});
  disks.push_back(session.disk.Tree("A:\\"));
  ASSERT_EQ(disks.size(), 3u);
  for (std::size_t i = 0; i < disks.size(); ++i) {
    const std::string number = std::to_string(i + 1);
    EXPECT_EQ(disks[i].size(), 2u);
    EXPECT_EQ(disks[i]["FDDivide00" + number].size() == kPiece, i < 2);
    EXPECT_NE(disks[i]["BackupInfo.ini"].find(DiskLines("3", number)), std::string::npos);
  }
  EXPECT_EQ(session.disk.FindDrive("A:")->label, "BACKUP");
  EXPECT_EQ(session.shell.lastTitle, "Copying a disk");

  const auto expected = session.disk.Tree("C:\\Tarsus\\Report");
  for (const char* lost : {"Report", "Menu", "Patient"}) session.disk.Remove(std::string("C:\\Tarsus\\") + lost);
  session.BeginRestore("A:\\");
  session.StartRestore("xx----x-");
  session.PromptForDisk(64401, disks[1]);
  session.See({64401}, app::kRefused);
  session.person.ExpectMessage(65401, 0, [&] {
    EXPECT_TRUE(session.IsTemporaryFolderEmpty());
    session.InsertDisk(disks[0]);
    session.shell.lastTitle.clear();
  });
  session.StartRestore("xx----x-");
  session.PromptForDisk(64406, disks[2]);
  session.Prompt(64401, [&] { session.EmptyDrive(); });
  session.PromptForDisk(64400, disks[1]);
  session.PromptForDisk(64406, disks[2]);
  session.EndAfter({65400});
  EXPECT_EQ(session.disk.Tree("C:\\Tarsus\\Report"), expected);
  EXPECT_EQ(session.disk.Read("C:\\Tarsus\\Menu\\menu.ini"), "menu=1");
  EXPECT_EQ(session.disk.Tree("C:\\Tarsus\\Patient").size(), 3u);
  EXPECT_EQ(session.processes.CountStarted(kJoinCommand), 1);
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
    session.EndAfter({65400});
    EXPECT_EQ(session.ChangedHostFiles(), Paths{"Report\\big.dat"});
  }
}

// The format counts a disk too many there, and that disk has a descriptor but no piece.
TEST(FloppySets, ExactMultipleAsksForOneDiskMoreThanThereArePieces) {
  std::size_t bytes = kPiece - 1000;
  for (const bool exact : {false, true}) {
    FloppySession session;
    session.disk.Write(kReport, std::string(bytes, 'x'));
    session.BeginBackup(kReportOnly);
    session.AcceptFolder("A:\\");
    session.person.ExpectFormat(0);
    if (!exact) {
      session.EndAfter({65300});
      bytes += kPiece - session.state.JoinedArchiveSize;
      continue;
    }
    session.Prompt(64306, [&] {
      EXPECT_EQ(session.disk.Read("A:\\FDDivide001").size(), kPiece);
      session.disk.Format("A:");
    });
    session.person.ExpectFormat(0);
    session.LeaveBackupAfter({63460});
    EXPECT_NE(session.disk.Read("A:\\BackupInfo.ini").find(DiskLines("2", "2")), std::string::npos);
  }
}

TEST(FloppySets, SmallLetterMeansAFolder) {
  FloppySession session;
  const std::string cabinet = fakes::MakeCabinet({{"Report\\big.dat", "whole"}});
  session.InsertDisk({{"BackupInfo.ini", DiskDescriptor("2", "1")}, {"ReportData.cab", cabinet}});
  session.BeginRestore("a:\\");
  session.StartRestore("------x-");
  session.EndAfter({65400});
  EXPECT_EQ(session.disk.Read(kReport), "whole");
}

struct Refusal {
  const char* name;
  Arrangement arrange;
  Ids messages;
  std::int32_t formatResult = 1;  ///< 1: there is no format dialog
};

const Refusal kRefusals[] = {
    {"error", Statuses('A', {-1}), {63310, 65301}},
    {"unusable", Statuses('A', {0}), {63311, 65301}},
    {"write-protected", Statuses('A', {2}), {63312, 65301}},
    {"not inserted", Statuses('A', {1}), {64300, 65301}},
    {"cannot be formatted", Nothing, {60382, 65301}, -3},
    {"formatting cancelled", Nothing, {60381, 65301}, -2},
    {"formatting failed", Nothing, {65301}, -1},
    {"no label", Fails("Drives", "SetVolumeLabel"), {60383, 65301}, 0},
    {"no descriptor", Fails("FileSystem", "AppendText"), {60326, 65301}, 0},
    {"piece not copied", Fails("Shell", "CopyWithProgress"), {63460}, 0},
    {"disk too small", Capacity("A:", 200), {63460}, 0},
};

// A first disk that is written by then stays as it is.
TEST(FloppySets, RefusedDiskStopsTheBackup) {
  for (const bool second : {false, true}) {
    for (const Refusal& refusal : kRefusals) {
      SCOPED_TRACE(refusal.name);
      FloppySession session;
      MediumFiles before;
      const auto refuse = [&] {
        before = session.disk.Tree("A:\\");
        refusal.arrange(session);
      };
      session.disk.Write(kReport, std::string(second ? kPiece : 1, 'x'));
      session.BeginBackup(kReportOnly);
      session.AcceptFolder("A:\\");
      if (second) session.person.ExpectFormat(0);
      second ? session.Prompt(64306, refuse) : refuse();
      if (refusal.formatResult != 1) session.person.ExpectFormat(refusal.formatResult);
      session.LeaveBackupAfter(refusal.messages, app::kRefused);
      EXPECT_EQ(before.size(), second ? 2u : 0u);
      EXPECT_TRUE(refusal.formatResult == 0 || session.disk.Tree("A:\\") == before);
      EXPECT_FALSE(session.IsBackupDated());
      EXPECT_EQ(session.ChangedHostFiles(), Paths());
    }
  }
}

TEST(FloppySets, AreNotBegunOrNotContinued) {
  FloppySession session;
  session.disk.Write(kReport, std::string(kPiece, 'x'));
  session.BeginBackup(kReportOnly);
  session.calls.FailFrom("FileSystem", "CreateBinary");
  session.AcceptFolder("A:\\");
  session.See({60326});
  session.person.ExpectMessage(65301, 0, [&] { session.calls.Reset(); });
  session.AcceptFolder("A:\\");
  session.person.ExpectFormat(0);
  session.LeaveBackupAfter({64306, 65301}, app::kRefused);
  EXPECT_FALSE(session.IsBackupDated());
}

/// Works on a set of three disks, the first of which goes into the drive.
using DiskArrangement = std::function<void(FloppySession&, Disks&)>;

DiskArrangement Count(const std::string& count) {
  return [=](FloppySession&, Disks& disks) { disks[0]["BackupInfo.ini"] = DiskDescriptor(count, "1"); };
}
DiskArrangement Number(std::size_t disk, const std::string& number) {
  return [=](FloppySession&, Disks& disks) { disks[disk]["BackupInfo.ini"] = DiskDescriptor("3", number); };
}
DiskArrangement Without(std::size_t disk, const std::string& file) {
  return [=](FloppySession&, Disks& disks) { disks[disk].erase(file); };
}
DiskArrangement Only(const std::string& piece) {
  return [=](FloppySession&, Disks& disks) {
    disks[0] = {{"BackupInfo.ini", DiskDescriptor("1", "1")}};
    if (!piece.empty()) disks[0]["FDDivide001"] = piece;
  };
}
DiskArrangement OnHost(const Arrangement& arrange) {
  return [=](FloppySession& session, Disks&) { arrange(session); };
}
// As the command interpreter does with a command beyond its limit.
std::uint32_t JoinNothing(fakes::Disk& disk, const fakes::Words& words) {
  return words[2] == "Copy" ? 0u : fakes::RunCommandInterpreter(disk, words);
}

struct Failure {
  const char* name;
  DiskArrangement arrange;
  /// 64406 puts the next disk in, unless the restore stops there; every other prompt is refused.
  Ids messages;
};

const Failure kFailures[] = {
    {"next disk refused", OnHost(Nothing), {64406, 65401}},
    {"last disk refused", OnHost(Nothing), {64406, 64406, 65401}},
    {"wrong disk", [](FloppySession&, Disks& disks) { std::swap(disks[0], disks[1]); }, {64401, 65401}},
    {"number written otherwise", Number(0, "01"), {64401, 65401}},
    {"drive error", OnHost(Statuses('A', {3, -1})), {63410, 65401}},
    {"disk unusable", OnHost(Statuses('A', {3, 0})), {63411, 65401}},
    {"disk not for this", OnHost(Statuses('A', {3, 2})), {63412, 65401}},
    {"disk not inserted", OnHost(Statuses('A', {3, 1})), {64400, 65401}},
    {"count zero", Count("0"), {60427}},
    {"count negative", Count("-1"), {60427}},
    {"count beyond 16 bits", Count("99999"), {60427}},
    {"count as text", Count("three"), {60427}},
    {"count that begins as a number", Count("3 disks"), {60427}},
    {"count missing", Count(""), {60427}},
    {"number missing", Number(1, ""), {64406, 60427}},
    {"next disk without descriptor", Without(1, "BackupInfo.ini"), {64406, 60427}},
    {"first piece missing", Without(0, "FDDivide001"), {63460}},
    {"last piece missing", Without(2, "FDDivide003"), {64406, 64406, 63460}},
    {"only piece missing", Only(""), {63460}},
    {"piece not copied", OnHost(Fails("Shell", "CopyWithProgress", 2)), {64406, 63460}},
    {"piece shortened", [](auto&, Disks& disks) { disks[1]["FDDivide002"].pop_back(); }, {64406, 64406, 60421}},
    {"join writes nothing", OnHost(Program(kInterpreter, JoinNothing)), {64406, 64406, 60326, 65401}},
    {"join not started", OnHost(Fails("Processes", "Start", 1, kJoinCommand)), {64406, 64406, 60326, 65401}},
    {"category missing", Only(fakes::MakeCabinet({{"MenuData.cab.tmp", "menu"}})), {60401}},
};

TEST(FloppySets, RestoreThatFailsTouchesNothing) {
  for (const Failure& failure : kFailures) {
    SCOPED_TRACE(failure.name);
    FloppySession session;
    Disks disks = CutIntoDisks(JoinedArchive(299), 100);
    ASSERT_EQ(disks.size(), 3u);
    failure.arrange(session, disks);
    session.InsertDisk(disks[0]);
    session.BeginRestore("A:\\");
    session.StartRestore("------x-");
    Ids messages = failure.messages;
    for (std::size_t disk = 1; messages[0] == 64406 && messages[1] != 65401; ++disk) {
      session.PromptForDisk(64406, disks[disk]);
      messages.erase(messages.begin());
    }
    session.LeaveRestoreAfter(messages, app::kRefused);
    EXPECT_EQ(session.ChangedHostFiles(), Paths());
    EXPECT_FALSE(session.state.RestoreDone);
  }
}

}  // namespace
