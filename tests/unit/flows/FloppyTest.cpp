// Backups to floppies: pieces, disks, and every way in which a disk can be refused.
#include <gtest/gtest.h>

#include "fakes/Cabinet.h"
#include "unit/flows/Session.h"

namespace flows {
namespace {

constexpr const char* kBigFile = "C:\\Tarsus\\Report\\big.dat";

/// A report backup that goes to drive A:, up to the first disk's format dialog.
void BeginFloppies(Session& session, std::size_t bytes) {
  session.disk.Write(kBigFile, std::string(bytes, 'x'));
  session.BeginBackup({.report = true});
  session.AcceptFolder("A:\\");
  session.person.ExpectFormat(0);
}

/// The prompt for the next disk: keeps what is on the present one, and puts an empty one in.
void ExpectNextDisk(Session& session, std::vector<std::map<std::string, std::string>>& disks) {
  session.person.ExpectMessage(64306, app::kConsented, [&] {
    disks.push_back(session.disk.Tree("A:\\"));
    session.disk.Format("A:");
  });
  session.person.ExpectFormat(0);
}

std::string DiskNumberLines(const std::string& descriptor) {
  const std::size_t at = descriptor.find("CABFile=");
  return descriptor.substr(at, descriptor.find("\r\n\r\n") - at);
}

TEST(Floppies, CarryThePiecesInTheirOrder) {
  Session session;
  std::vector<std::map<std::string, std::string>> disks;
  BeginFloppies(session, 3000000);
  ExpectNextDisk(session, disks);
  ExpectNextDisk(session, disks);
  session.person.ExpectMessage(65300);
  session.EndMenu();
  session.Run();
  disks.push_back(session.disk.Tree("A:\\"));
  ASSERT_EQ(disks.size(), 3u);
  std::string joined;
  for (std::size_t i = 0; i < disks.size(); ++i) {
    const std::string number = std::to_string(i + 1);
    ASSERT_EQ(disks[i].size(), 2u);
    joined += disks[i]["FDDivide00" + number];
    EXPECT_EQ(DiskNumberLines(disks[i]["BackupInfo.ini"]), "CABFile=FDDivide.cab;\r\nFDCount=3\r\nFDNumber=" + number);
  }
  EXPECT_EQ(disks[0]["FDDivide001"].size(), 1400000u);
  const auto archives = fakes::ReadCabinet(joined);
  ASSERT_TRUE(archives && archives->contains("ReportData.cab.tmp"));
  const auto report = fakes::ReadCabinet(archives->at("ReportData.cab.tmp"));
  ASSERT_TRUE(report);
  EXPECT_EQ(report->at("Report\\big.dat"), session.disk.Read(kBigFile));
  EXPECT_EQ(session.disk.FindDrive("A:")->label, "BACKUP");
  EXPECT_EQ(session.shell.lastTitle, "Copying a disk");
  EXPECT_TRUE(session.IsTemporaryFolderEmpty());
}

/// Bytes of big.dat with which the joined archive has `joined` bytes.
std::size_t BytesForJoinedSize(std::size_t joined) {
  const std::size_t tried = joined - 1000;
  Session session;
  BeginFloppies(session, tried);
  session.person.ExpectMessage(65300);
  session.EndMenu();
  session.Run();
  return tried + joined - session.state.JoinedArchiveSize;
}

// The format counts a disk too many there, and that disk has a descriptor but no piece.
TEST(Floppies, ExactMultipleAsksForOneDiskMoreThanThereArePieces) {
  Session session;
  std::vector<std::map<std::string, std::string>> disks;
  BeginFloppies(session, BytesForJoinedSize(1400000));
  ExpectNextDisk(session, disks);
  session.person.ExpectMessage(63460);
  session.LeaveBackup();
  session.Run();
  ASSERT_EQ(disks.size(), 1u);
  EXPECT_EQ(disks[0]["FDDivide001"].size(), 1400000u);
  const std::string descriptor = session.disk.Read("A:\\BackupInfo.ini");
  EXPECT_EQ(DiskNumberLines(descriptor), "CABFile=FDDivide.cab;\r\nFDCount=2\r\nFDNumber=2");
  EXPECT_TRUE(session.IsTemporaryFolderEmpty());
}

TEST(Floppies, OneByteMoreMakesAPieceOfOneByte) {
  Session session;
  std::vector<std::map<std::string, std::string>> disks;
  BeginFloppies(session, BytesForJoinedSize(1400000) + 1);
  ExpectNextDisk(session, disks);
  session.person.ExpectMessage(65300);
  session.EndMenu();
  session.Run();
  EXPECT_EQ(session.disk.Read("A:\\FDDivide002").size(), 1u);
}

struct Refusal {
  const char* name;
  void (*arrange)(Session&);
  bool reachesFormat;
  std::int32_t formatResult;
  std::vector<std::int32_t> messages;
};

void PrintTo(const Refusal& refusal, std::ostream* out) {
  *out << refusal.name;
}

class FloppyRefused : public testing::TestWithParam<Refusal> {};

TEST_P(FloppyRefused, IsShownAndLeavesNoStagingFolder) {
  const Refusal& refusal = GetParam();
  Session session;
  refusal.arrange(session);
  session.BeginBackup({.report = true});
  session.AcceptFolder("A:\\");
  if (refusal.reachesFormat) session.person.ExpectFormat(refusal.formatResult);
  for (const std::int32_t message : refusal.messages) session.person.ExpectMessage(message, app::kRefused);
  if (refusal.messages.back() == 65301) session.CancelFolder();
  session.LeaveBackup();
  session.Run();
  EXPECT_EQ(session.qx32.texts.count("BackupDate"), 0u);
  EXPECT_EQ(session.ChangedHostFiles(), std::vector<std::string>());
  EXPECT_TRUE(session.IsTemporaryFolderEmpty());
}

const Refusal kRefusals[] = {
    {"Error", [](Session& s) { s.Told().mediaStatuses['A'] = {-1}; }, false, 0, {63310, 65301}},
    {"Unusable", [](Session& s) { s.Told().mediaStatuses['A'] = {0}; }, false, 0, {63311, 65301}},
    {"WriteProtected", [](Session& s) { s.Told().mediaStatuses['A'] = {2}; }, false, 0, {63312, 65301}},
    {"NoDisk", [](Session& s) { s.disk.FindDrive("A:")->ready = false; }, false, 0, {64300, 65301}},
    {"CannotFormat", [](Session&) {}, true, -3, {60382, 65301}},
    {"FormatCancelled", [](Session&) {}, true, -2, {60381, 65301}},
    {"FormatFailed", [](Session&) {}, true, -1, {65301}},
    {"NoLabel", [](Session& s) { s.calls.FailFrom("Drives", "SetVolumeLabel"); }, true, 0, {60383, 65301}},
    {"NoVersionFile",
     [](Session& s) { s.disk.Remove("C:\\Tarsus\\System\\BackupVersion.ini"); },
     true,
     0,
     {60326, 65301}},
    {"PieceCannotBeWritten",
     [](Session& s) { s.calls.FailFrom("FileSystem", "CreateBinary"); },
     false,
     0,
     {60326, 65301}},
    {"PieceNotCopied", [](Session& s) { s.calls.FailFrom("Shell", "CopyWithProgress"); }, true, 0, {63460}},
    {"DiskTooSmall", [](Session& s) { s.disk.FindDrive("A:")->capacity = 200; }, true, 0, {63460}},
};

INSTANTIATE_TEST_SUITE_P(All, FloppyRefused, testing::ValuesIn(kRefusals),
                         [](const auto& test) { return test.param.name; });

TEST(Floppies, RefusedNextDiskStopsTheBackup) {
  Session session;
  BeginFloppies(session, 1500000);
  session.person.ExpectMessage(64306, app::kRefused).ExpectMessage(65301);
  session.CancelFolder();
  session.LeaveBackup();
  session.Run();
  EXPECT_EQ(session.qx32.texts.count("BackupDate"), 0u);
  EXPECT_TRUE(session.IsTemporaryFolderEmpty());
}

}  // namespace
}  // namespace flows
