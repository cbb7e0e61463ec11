// Floppy sets: disks changed while a backup runs, and restores that gather the pieces again.
#include <gtest/gtest.h>

#include "fakes/CommandLineTools.h"
#include "unit/restore/RestoreSession.h"

namespace {

using Disks = std::vector<MediumFiles>;
using Paths = std::vector<std::string>;

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

/// Works on a set of three disks, the first of which goes into the drive.
using Arrangement = std::function<void(FloppySession&, Disks&)>;

Arrangement Count(const std::string& count) {
  return [=](FloppySession&, Disks& disks) { disks[0]["BackupInfo.ini"] = DiskDescriptor(count, "1"); };
}
Arrangement Number(std::size_t disk, const std::string& number) {
  return [=](FloppySession&, Disks& disks) { disks[disk]["BackupInfo.ini"] = DiskDescriptor("3", number); };
}
Arrangement Without(std::size_t disk, const std::string& file) {
  return [=](FloppySession&, Disks& disks) { disks[disk].erase(file); };
}
Arrangement Only(const std::string& piece) {
  return [=](FloppySession&, Disks& disks) {
    disks[0] = {{"BackupInfo.ini", DiskDescriptor("1", "1")}};
    if (!piece.empty()) disks[0]["FDDivide001"] = piece;
  };
}
Arrangement Status(std::int32_t status) {
  return [=](FloppySession& session, Disks&) { session.Told().mediaStatuses['A'] = {3, status}; };
}
Arrangement Fault(const char* contract, const char* method, std::size_t n, const std::string& detail = {}) {
  return [=](FloppySession& session, Disks&) { session.calls.FailFrom(contract, method, n, detail); };
}

// As the command interpreter does with a command beyond its limit.
void JoinNothing(FloppySession& session, Disks&) {
  session.processes.Install("C:\\Windows\\System32\\CMD.exe", [](fakes::Disk& disk, const fakes::Words& words) {
    return words[2] == "Copy" ? 0u : fakes::RunCommandInterpreter(disk, words);
  });
}

struct Failure {
  const char* name;
  Arrangement arrange;
  /// 64406 puts the next disk in, unless the restore stops there; every other prompt is refused.
  std::vector<std::int32_t> messages;
};

const Failure kFailures[] = {
    {"next disk refused", [](FloppySession&, Disks&) {}, {64406, 65401}},
    {"last disk refused", [](FloppySession&, Disks&) {}, {64406, 64406, 65401}},
    {"wrong disk", [](FloppySession&, Disks& disks) { std::swap(disks[0], disks[1]); }, {64401, 65401}},
    {"number written otherwise", Number(0, "01"), {64401, 65401}},
    {"drive error", Status(-1), {63410, 65401}},
    {"disk unusable", Status(0), {63411, 65401}},
    {"disk not for this", Status(2), {63412, 65401}},
    {"disk not inserted", Status(1), {64400, 65401}},
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
    {"piece not copied", Fault("Shell", "CopyWithProgress", 2), {64406, 63460}},
    {"piece shortened",
     [](FloppySession&, Disks& disks) { disks[1]["FDDivide002"].pop_back(); },
     {64406, 64406, 60421}},
    {"join writes nothing", JoinNothing, {64406, 64406, 60326, 65401}},
    {"join not started", Fault("Processes", "Start", 1, kJoinCommand), {64406, 64406, 60326, 65401}},
    {"category missing", Only(fakes::MakeCabinet({{"MenuData.cab.tmp", "menu"}})), {60401}},
};

TEST(FloppySets, RestoreThatFailsTouchesNothing) {
  for (const Failure& failure : kFailures) {
    SCOPED_TRACE(failure.name);
    const std::vector<std::int32_t>& messages = failure.messages;
    FloppySession session;
    Disks disks = CutIntoDisks(JoinedArchive(299), 100);
    ASSERT_EQ(disks.size(), 3u);
    failure.arrange(session, disks);
    session.InsertDisk(disks[0]);
    session.BeginRestore("A:\\");
    session.StartRestore("------x-");
    std::size_t next = 1;
    for (std::size_t i = 0; i < messages.size(); ++i) {
      if (messages[i] == 64406 && messages[i + 1] != 65401) {
        session.PromptForDisk(64406, disks[next++]);
      } else {
        session.person.ExpectMessage(messages[i], app::kRefused);
      }
    }
    if (messages.back() == 65401) session.CancelRestore();
    session.LeaveSelection();
    session.Run();
    EXPECT_EQ(session.ChangedHostFiles(), Paths());
    EXPECT_TRUE(session.IsTemporaryFolderEmpty());
    EXPECT_FALSE(session.state.RestoreDone);
  }
}

}  // namespace
