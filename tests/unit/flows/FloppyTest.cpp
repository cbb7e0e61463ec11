// Floppy sets: disks changed while a backup runs, and restores that gather the pieces again.
#include "unit/Session.h"

namespace {

constexpr const char* kReport = "C:\\Tarsus\\Report\\big.dat";
constexpr std::size_t kPiece = 1'400'000;
constexpr const char* kJoinCommand = "CMD /C Copy /B FDDivide001 + FDDivide002 + FDDivide003 FDDivide.cab";

/// A joined archive with nothing in it but so many bytes of report data.
std::string Join(std::size_t bytes) {
  const std::string report = fakes::MakeCabinet({{"Report\\big.dat", std::string(bytes, 'x')}});
  return fakes::MakeCabinet({{"ReportData.cab.tmp", report}});
}

/// How much report data makes a joined archive of `size` bytes.
std::size_t ReportFor(std::size_t size) {
  return size - (Join(size).size() - size);
}

std::string DiskLines(const std::string& count, const std::string& number) {
  return "CABFile=FDDivide.cab;\r\nFDCount=" + count + "\r\nFDNumber=" + number + "\r\n";
}
std::string DiskDescriptor(const std::string& count, const std::string& number) {
  return Lines(DescriptorLines()) + DiskLines(count, number) + "ReportData=V2.1\r\n";
}

struct FloppySession : Session {
  using Session::Session;

  /// Makes the disks of a set whose joined archive has `size` bytes, in pieces of `pieceSize`.
  void CutIntoDisks(std::size_t size, std::size_t pieceSize) {
    const std::string joined = Join(ReportFor(size));
    EXPECT_EQ(joined.size(), size);
    const std::string count = std::to_string(size / pieceSize + 1);
    for (std::size_t at = 0; at <= size; at += pieceSize) {
      const std::string number = std::to_string(disks.size() + 1);
      disks.push_back({{"BackupInfo.ini", DiskDescriptor(count, number)}});
      if (at < size) disks.back()["FDDivide00" + number] = joined.substr(at, pieceSize);
    }
  }
  void PromptForDisk(std::int32_t id, const MediumFiles& contents) {
    person.ExpectMessage(id, app::kConsented, [this, contents] { InsertDisk(contents); });
  }
  void EmptyDrive() { disk.FindDrive("A:")->ready = false; }
  void TakeDiskOut() {
    disks.push_back(disk.Tree("A:\\"));
    EmptyDrive();
  }

  std::vector<MediumFiles> disks;
};

// Every prompt is answered, an empty drive is said twice, and the set comes back from its disks
// though they are offered in the wrong order and the restore is stopped once.
TEST(FloppySets, ComeBackAsTheyWere) {
  FloppySession session(File(kReport, std::string(2'900'000, 'x')));
  const auto& disks = session.disks;
  session.EmptyDrive();
  session.BackUpTo("A:\\", kEverything);
  for (int disk = 1; disk <= 3; ++disk) {
    if (disk > 1) session.person.ExpectMessage(64306, app::kConsented, [&] { session.TakeDiskOut(); });
    session.See({64300});
    session.PromptForDisk(64300, {{"stranger.txt", "goes"}});
    session.person.ExpectFormat(0);
  }
  session.EndAfter({65300});
  EXPECT_EQ(session.disk.FindDrive("A:")->label, "BACKUP");
  session.TakeDiskOut();
  ASSERT_EQ(disks.size(), 3u);
  session.InsertDisk(disks[2]);
  for (std::size_t i = 0; i < disks.size(); ++i) {
    const std::string number = std::to_string(i + 1);
    EXPECT_EQ(disks[i].size(), 2u);
    EXPECT_EQ(disks[i].at("FDDivide00" + number).size() == kPiece, i < 2);
    EXPECT_NE(disks[i].at("BackupInfo.ini").find(DiskLines("3", number)), std::string::npos);
  }
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
  session.person.ExpectMessage(64401, app::kConsented, [&] { session.EmptyDrive(); });
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
    FloppySession session;
    session.CutIntoDisks(size, kPiece);
    ASSERT_EQ(session.disks.size(), size / kPiece + 1);
    session.InsertDisk(session.disks[0]);
    session.BeginRestore("A:\\");
    session.StartRestore("------x-");
    for (std::size_t i = 1; i < session.disks.size(); ++i) session.PromptForDisk(64406, session.disks[i]);
    session.EndAfter({65400});
    EXPECT_EQ(session.ChangedHostFiles(), Paths{"Report\\big.dat"});
  }
}

// The format counts a disk too many there, and that disk has a descriptor but no piece.
TEST(FloppySets, ExactMultipleAsksForOneDiskMoreThanThereArePieces) {
  FloppySession session(Gone("C:\\Tarsus\\Report"));
  session.disk.Write(kReport, std::string(ReportFor(kPiece), 'x'));
  session.BackUpTo("A:\\");
  session.person.ExpectFormat(0);
  session.person.ExpectMessage(64306, app::kConsented, [&] {
    EXPECT_EQ(session.disk.Read("A:\\FDDivide001").size(), kPiece);
    session.disk.Format("A:");
  });
  session.person.ExpectFormat(0);
  session.LeaveBackupAfter({63460});
  EXPECT_NE(session.disk.Read("A:\\BackupInfo.ini").find(DiskLines("2", "2")), std::string::npos);
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
      FloppySession session(File(kReport, std::string(second ? kPiece : 1, 'x')));
      MediumFiles before;
      const auto refuse = [&] {
        before = session.disk.Tree("A:\\");
        refusal.arrange(session);
      };
      session.BackUpTo("A:\\");
      if (second) session.person.ExpectFormat(0).ExpectMessage(64306, app::kConsented, refuse);
      if (!second) refuse();
      if (refusal.formatResult != 1) session.person.ExpectFormat(refusal.formatResult);
      session.LeaveBackupAfter(refusal.messages, app::kRefused);
      EXPECT_EQ(before.size(), second ? 2u : 0u);
      EXPECT_TRUE(refusal.formatResult == 0 || session.disk.Tree("A:\\") == before);
    }
  }
}

TEST(FloppySets, AreNotBegunOrNotContinued) {
  FloppySession session(File(kReport, std::string(kPiece, 'x')));
  session.calls.FailFrom("FileSystem", "CreateBinary");
  session.BackUpTo("A:\\");
  session.See({60326});
  session.person.ExpectMessage(65301, 0, [&] { session.calls.Reset(); });
  session.AcceptFolder("A:\\");
  session.person.ExpectFormat(0);
  session.LeaveBackupAfter({64306, 65301}, app::kRefused);
}

/// Works on a set of three disks, the first of which goes into the drive, or on the host.
using DiskArrangement = std::function<void(FloppySession&)>;

DiskArrangement Descriptor(std::size_t disk, const std::string& count, const std::string& number) {
  return [=](FloppySession& session) { session.disks[disk]["BackupInfo.ini"] = DiskDescriptor(count, number); };
}
DiskArrangement Without(std::size_t disk, const std::string& file) {
  return [=](FloppySession& session) { session.disks[disk].erase(file); };
}
DiskArrangement OneDisk(const MediumFiles& pieces) {
  return [=](FloppySession& session) {
    session.disks[0] = pieces;
    session.disks[0]["BackupInfo.ini"] = DiskDescriptor("1", "1");
  };
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
    {"next disk refused", Nothing, {64406, 65401}},
    {"last disk refused", Nothing, {64406, 64406, 65401}},
    {"wrong disk", [](auto& session) { std::swap(session.disks[0], session.disks[1]); }, {64401, 65401}},
    {"number written otherwise", Descriptor(0, "3", "01"), {64401, 65401}},
    {"drive error", Statuses('A', {3, -1}), {63410, 65401}},
    {"disk unusable", Statuses('A', {3, 0}), {63411, 65401}},
    {"disk not for this", Statuses('A', {3, 2}), {63412, 65401}},
    {"disk not inserted", Statuses('A', {3, 1}), {64400, 65401}},
    {"count zero", Descriptor(0, "0", "1"), {60427}},
    {"count negative", Descriptor(0, "-1", "1"), {60427}},
    {"count beyond 16 bits", Descriptor(0, "99999", "1"), {60427}},
    {"count as text", Descriptor(0, "three", "1"), {60427}},
    {"count that begins as a number", Descriptor(0, "3 disks", "1"), {60427}},
    {"count missing", Descriptor(0, "", "1"), {60427}},
    {"number missing", Descriptor(1, "3", ""), {64406, 60427}},
    {"next disk without descriptor", Without(1, "BackupInfo.ini"), {64406, 60427}},
    {"first piece missing", Without(0, "FDDivide001"), {63460}},
    {"last piece missing", Without(2, "FDDivide003"), {64406, 64406, 63460}},
    {"only piece missing", OneDisk({}), {63460}},
    {"piece not copied", Fails("Shell", "CopyWithProgress", 2), {64406, 63460}},
    {"piece shortened", [](auto& session) { session.disks[1]["FDDivide002"].pop_back(); }, {64406, 64406, 60421}},
    {"join writes nothing", Program(kInterpreter, JoinNothing), {64406, 64406, 60326, 65401}},
    {"join not started", Fails("Processes", "Start", 1, kJoinCommand), {64406, 64406, 60326, 65401}},
    {"category missing", OneDisk({{"FDDivide001", fakes::MakeCabinet({{"MenuData.cab.tmp", "menu"}})}}), {60401}},
};

TEST(FloppySets, RestoreThatFailsTouchesNothing) {
  for (const Failure& failure : kFailures) {
    SCOPED_TRACE(failure.name);
    FloppySession session;
    session.CutIntoDisks(299, 100);
    ASSERT_EQ(session.disks.size(), 3u);
    failure.arrange(session);
    session.InsertDisk(session.disks[0]);
    session.BeginRestore("A:\\");
    session.StartRestore("------x-");
    Ids messages = failure.messages;
    for (std::size_t disk = 1; messages[0] == 64406 && messages[1] != 65401; ++disk) {
      session.PromptForDisk(64406, session.disks[disk]);
      messages.erase(messages.begin());
    }
    session.LeaveRestoreAfter(messages, app::kRefused);
    EXPECT_EQ(session.ChangedHostFiles(), Paths());
    EXPECT_FALSE(session.state.RestoreDone);
  }
}

}  // namespace
