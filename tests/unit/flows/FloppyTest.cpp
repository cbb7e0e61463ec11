// Floppy sets: disks changed while a backup runs, and restores that gather the pieces again.
#include "unit/Session.h"
#include "unit/Station.h"

namespace {

using enum base::MessageId;
using enum host::DriveStatus;

constexpr auto kFormatted = host::FormatAnswer::Done;
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
  void PromptForDisk(base::MessageId id, const MediumFiles& contents) {
    person.ExpectMessage(id, host::Answer::Consented, [this, contents] { InsertDisk(contents); });
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
    if (disk > 1)
      session.person.ExpectMessage(AskNextBackupDisk, host::Answer::Consented, [&] { session.TakeDiskOut(); });
    session.See({AskInsertBackupMedium});
    session.PromptForDisk(AskInsertBackupMedium, {{"stranger.txt", "goes"}});
    session.person.ExpectFormat(kFormatted);
  }
  session.EndAfter({BackupComplete});
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
  session.StartRestore({Box::Patient, Box::Menu, Box::Report});
  session.PromptForDisk(AskRightDisk, disks[1]);
  session.See({AskRightDisk}, host::Answer::Refused);
  session.person.ExpectMessage(RestoreStopped, [&] {
    EXPECT_TRUE(session.IsTemporaryFolderEmpty());
    session.InsertDisk(disks[0]);
    session.shell.lastTitle.clear();
  });
  session.StartRestore({Box::Patient, Box::Menu, Box::Report});
  session.PromptForDisk(AskNextSourceDisk, disks[2]);
  session.person.ExpectMessage(AskRightDisk, host::Answer::Consented, [&] { session.EmptyDrive(); });
  session.PromptForDisk(AskInsertSourceMedium, disks[1]);
  session.PromptForDisk(AskNextSourceDisk, disks[2]);
  session.EndAfter({RestoreComplete});
  EXPECT_EQ(session.disk.Tree("C:\\Tarsus\\Report"), expected);
  EXPECT_EQ(session.disk.Read("C:\\Tarsus\\Menu\\menu.ini"), "menu=1");
  EXPECT_EQ(session.disk.Tree("C:\\Tarsus\\Patient").size(), 3u);
  EXPECT_EQ(session.processes.CountStarted(kJoinCommand), 1);
  EXPECT_EQ(session.shell.lastTitle, "Copying a disk");
}

// Nothing but the unpacking can tell it from a set whose size is an exact multiple.
TEST(FloppySets, LostLastPieceBehindFullOnesIsNoWholeSet) {
  FloppySession session;
  session.CutIntoDisks(2 * kPiece + 1, kPiece);
  session.disks[2].erase("FDDivide003");
  session.InsertDisk(session.disks[0]);
  session.BeginRestore("A:\\");
  session.StartRestore({Box::Report});
  for (std::size_t i = 1; i <= 2; ++i) session.PromptForDisk(AskNextSourceDisk, session.disks[i]);
  session.LeaveRestoreAfter({ArchiveNotUnpacked});
  EXPECT_EQ(session.ChangedHostFiles(), Paths());
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
    session.StartRestore({Box::Report});
    for (std::size_t i = 1; i < session.disks.size(); ++i) session.PromptForDisk(AskNextSourceDisk, session.disks[i]);
    session.EndAfter({RestoreComplete});
    EXPECT_EQ(session.ChangedHostFiles(), Paths{"Report\\big.dat"});
  }
}

// The format counts a disk too many there, and that disk has a descriptor but no piece.
TEST(FloppySets, ExactMultipleAsksForOneDiskMoreThanThereArePieces) {
  FloppySession session(Gone("C:\\Tarsus\\Report"));
  session.disk.Write(kReport, std::string(ReportFor(kPiece), 'x'));
  session.BackUpTo("A:\\");
  session.person.ExpectFormat(kFormatted);
  session.person.ExpectMessage(AskNextBackupDisk, host::Answer::Consented, [&] {
    EXPECT_EQ(session.disk.Read("A:\\FDDivide001").size(), kPiece);
    session.disk.Format("A:");
  });
  session.person.ExpectFormat(kFormatted);
  session.LeaveBackupAfter({MaintenanceDriveError});
  EXPECT_NE(session.disk.Read("A:\\BackupInfo.ini").find(DiskLines("2", "2")), std::string::npos);
}

TEST(FloppySets, SmallLetterMeansAFolder) {
  FloppySession session;
  const std::string cabinet = fakes::MakeCabinet({{"Report\\big.dat", "whole"}});
  session.InsertDisk({{"BackupInfo.ini", DiskDescriptor("2", "1")}, {"ReportData.cab", cabinet}});
  session.BeginRestore("a:\\");
  session.StartRestore({Box::Report});
  session.EndAfter({RestoreComplete});
  EXPECT_EQ(session.disk.Read(kReport), "whole");
}

struct Refusal {
  const char* name;
  Arrangement arrange;
  Ids messages;
  std::optional<host::FormatAnswer> format = {};  ///< of the format dialog, where it comes to one
};

const Refusal kRefusals[] = {
    {"error", Statuses('A', {Error}), {BackupDriveError, BackupStopped}},
    {"unusable", Statuses('A', {Unusable}), {BackupDriveUnusable, BackupStopped}},
    {"write-protected", Statuses('A', {Readable}), {BackupFloppyUnusable, BackupStopped}},
    {"not inserted", Statuses('A', {NoMedium}), {AskInsertBackupMedium, BackupStopped}},
    {"cannot be formatted", Nothing, {BackupFormatFailed, BackupStopped}, host::FormatAnswer::NotPossible},
    {"formatting cancelled", Nothing, {BackupFormatCancelled, BackupStopped}, host::FormatAnswer::Cancelled},
    {"formatting failed", Nothing, {BackupStopped}, host::FormatAnswer::Failed},
    {"no label", Fails("Drives", "SetVolumeLabel"), {BackupLabelFailed, BackupStopped}, kFormatted},
    {"no descriptor", Fails("FileSystem", "AppendText"), {PathEntryUnreadable, BackupStopped}, kFormatted},
    {"piece not copied", Fails("Shell", "CopyWithProgress"), {MaintenanceDriveError}, kFormatted},
    {"disk too small", Capacity("A:", 200), {MaintenanceDriveError}, kFormatted},
};

// A first disk is written by then.
TEST(FloppySets, RefusedDiskStopsTheBackup) {
  for (const bool second : {false, true}) {
    for (const Refusal& refusal : kRefusals) {
      SCOPED_TRACE(refusal.name);
      FloppySession session(File(kReport, std::string(second ? kPiece : 1, 'x')));
      MediumFiles before;
      const auto refuse = [&] {
        before = session.disk.Tree("A:\\");
        session.InsertDisk({});
        refusal.arrange(session);
      };
      session.BackUpTo("A:\\");
      if (second)
        session.person.ExpectFormat(kFormatted).ExpectMessage(AskNextBackupDisk, host::Answer::Consented, refuse);
      if (!second) refuse();
      if (refusal.format) session.person.ExpectFormat(*refusal.format);
      session.LeaveBackupAfter(refusal.messages, host::Answer::Refused);
      EXPECT_EQ(before.size(), second ? 2u : 0u);
      EXPECT_TRUE(refusal.format == kFormatted || session.disk.Tree("A:\\").empty());
    }
  }
}

// Formatted once more, it would take its piece of the set with it, and nobody would know before a restore.
TEST(FloppySets, DiskThatWasNotChangedIsNotFormatted) {
  FloppySession session(File(kReport, std::string(2 * kPiece, 'x')));
  session.BackUpTo("A:\\");
  session.person.ExpectFormat(kFormatted);
  session.See({AskNextBackupDisk, AskNextBackupDisk}, host::Answer::Consented);
  session.person.ExpectMessage(AskNextBackupDisk, host::Answer::Consented, [&] { session.TakeDiskOut(); });
  session.See({AskInsertBackupMedium}, host::Answer::Consented);
  session.PromptForDisk(AskInsertBackupMedium, {{"BackupInfo.ini", DiskDescriptor("3", "1")}});
  session.person.ExpectFormat(kFormatted);
  session.PromptForDisk(AskNextBackupDisk, {});
  session.person.ExpectFormat(kFormatted);
  session.EndAfter({BackupComplete});
  EXPECT_EQ(NamesOf(session.disks.at(0)), (Names{"BackupInfo.ini", "FDDivide001"}));
  for (const auto& message : session.person.Messages())
    EXPECT_EQ(message.text3 == "2", message.id == AskNextBackupDisk || message.id == AskInsertBackupMedium);
}

/// Notes what the format dialog is opened for.
struct NotingShell : fakes::FakeShell {
  using FakeShell::FakeShell;
  host::FormatAnswer FormatDrive(std::uint32_t drive, std::uint32_t formatId, std::uint32_t options) override {
    formats.push_back(std::to_string(drive) + "," + std::to_string(formatId) + "," + std::to_string(options));
    return FakeShell::FormatDrive(drive, formatId, options);
  }
  Names formats;
};

// Always the first floppy drive, in the medium's own format, and quickly.
TEST_F(JobTest, FloppiesAreFormattedInTheFirstDrive) {
  NotingShell shell(host.disk, host.calls, host.person);
  const host::Host outside = {host.qx32,      host.qx32lib,   host.qxNetDB, host.components,
                              host.catalogue, host.compactor, host.files,   host.drives,
                              host.processes, shell,          host.clock,   host.messageLoop};
  app::Application other(outside, host.toolkit);
  other.state = application.state;
  other.appearance = application.appearance;
  other.state.SelectedFolder = "A:\\";
  const std::string archive = fakes::MakeCabinet({{"r.txt", "r"}});
  host.disk.Write(kStaging + std::string("ReportData.cab"), archive);
  packed.set.archives = {{"ReportData.cab", archive.size(), 1}};
  packed.set.categories = {backupset::Category::ReportData};
  host.person.ExpectFormat(kFormatted);
  const auto& messages = backupset::MessagesOf(app::Operation::Backup);
  EXPECT_TRUE(backupset::WriteBackupSet(other, drives, packed, messages).IsDone());
  EXPECT_EQ(shell.formats, Names{"0,0,1"});
  EXPECT_EQ(host.disk.FindDrive("A:")->label, "BACKUP");
}

// The proposal names a folder, which no disk has that was just formatted.
TEST(FloppySets, DescriptorStandsBesideItsPieceWhateverFolderIsNamed) {
  FloppySession session;
  session.BackUpTo("A:\\20120315093012\\");
  session.person.ExpectFormat(kFormatted);
  session.EndAfter({BackupComplete});
  EXPECT_EQ(NamesOf(session.disk.Tree("A:\\")), (Names{"BackupInfo.ini", "FDDivide001"}));
  session.disk.Remove(kReport);
  session.BeginRestore("A:\\");
  session.StartRestore({Box::Report});
  session.EndAfter({RestoreComplete});
}

TEST(FloppySets, AreNotBegunOrNotContinued) {
  FloppySession session(File(kReport, std::string(kPiece, 'x')));
  session.calls.FailFrom("FileSystem", "CreateBinary");
  session.BackUpTo("A:\\");
  session.See({PathEntryUnreadable});
  session.person.ExpectMessage(BackupStopped, [&] { session.calls.Reset(); });
  session.AcceptFolder("A:\\");
  session.person.ExpectFormat(kFormatted);
  session.LeaveBackupAfter({AskNextBackupDisk, BackupStopped}, host::Answer::Refused);
}

/// Works on a set of three disks, the first of which goes into the drive, or on the host.
using DiskArrangement = std::function<void(FloppySession&)>;

DiskArrangement Descriptor(std::size_t disk, const std::string& count, const std::string& number) {
  return [=](FloppySession& session) { session.disks[disk]["BackupInfo.ini"] = DiskDescriptor(count, number); };
}
/// Of a set that was made by another version, of other data, or cut otherwise.
DiskArrangement Foreign(std::size_t disk, const std::string& from, const std::string& to) {
  return [=](FloppySession& session) {
    std::string& text = session.disks[disk]["BackupInfo.ini"];
    text = text.replace(text.find(from), from.size(), to);
  };
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
  Ids messages;           ///< after the other disks; every prompt is refused
  std::size_t disks = 0;  ///< that are put in, as they are asked for, behind the first one
};

const Ids kNotJoined = {PathEntryUnreadable, RestoreStopped};
const MediumFiles kOtherCategory = {{"FDDivide001", fakes::MakeCabinet({{"MenuData.cab.tmp", "menu"}})}};

void SwapTwo(FloppySession& session) {
  std::swap(session.disks[0], session.disks[1]);
}
void ShortenOne(FloppySession& session) {
  session.disks[1]["FDDivide002"].pop_back();
}

const Failure kFailures[] = {
    {"next disk refused", Nothing, {AskNextSourceDisk, RestoreStopped}},
    {"last disk refused", Nothing, {AskNextSourceDisk, RestoreStopped}, 1},
    {"wrong disk", SwapTwo, {AskRightDisk, RestoreStopped}},
    {"number written otherwise", Descriptor(0, "3", "01"), {AskRightDisk, RestoreStopped}},
    {"disk of another version", Foreign(1, "=3.00", "=3.10"), {AskRightDisk, RestoreStopped}, 1},
    {"disk of another application", Foreign(1, "=Tarsus", "=Taurus"), {AskRightDisk, RestoreStopped}, 1},
    {"disk of a set cut otherwise", Descriptor(1, "4", "2"), {AskRightDisk, RestoreStopped}, 1},
    {"disk of a set of other archives", Foreign(2, "FDDivide.cab;", "Other.cab;"), {AskRightDisk, RestoreStopped}, 2},
    {"disk of a set of other data", Foreign(2, "ReportData=V2.1", "ReportData=V2"), {AskRightDisk, RestoreStopped}, 2},
    {"drive error", Statuses('A', {Ready, Error}), {SourceDriveError, RestoreStopped}},
    {"disk unusable", Statuses('A', {Ready, Unusable}), {SourceDriveUnusable, RestoreStopped}},
    {"disk not for this", Statuses('A', {Ready, Readable}), {SourceMediumUnusable, RestoreStopped}},
    {"disk not inserted", Statuses('A', {Ready, NoMedium}), {AskInsertSourceMedium, RestoreStopped}},
    {"count zero", Descriptor(0, "0", "1"), {DescriptorIncomplete}},
    {"count negative", Descriptor(0, "-1", "1"), {DescriptorIncomplete}},
    {"count beyond 16 bits", Descriptor(0, "99999", "1"), {DescriptorIncomplete}},
    {"count as text", Descriptor(0, "three", "1"), {DescriptorIncomplete}},
    {"count that begins as a number", Descriptor(0, "3 disks", "1"), {DescriptorIncomplete}},
    {"count missing", Descriptor(0, "", "1"), {DescriptorIncomplete}},
    {"number missing", Descriptor(1, "3", ""), {DescriptorIncomplete}, 1},
    {"next disk without descriptor", Without(1, "BackupInfo.ini"), {DescriptorIncomplete}, 1},
    {"first piece missing", Without(0, "FDDivide001"), {MaintenanceDriveError}},
    {"last piece missing", Without(2, "FDDivide003"), {MaintenanceDriveError}, 2},
    {"only piece missing", OneDisk({}), {MaintenanceDriveError}},
    {"piece not copied", Fails("Shell", "CopyWithProgress", 2), {MaintenanceDriveError}, 1},
    {"piece shortened", ShortenOne, {ArchiveNotUnpacked}, 2},
    {"join writes nothing", Program(kInterpreter, JoinNothing), kNotJoined, 2},
    {"join not started", Fails("Processes", "Start", 1, kJoinCommand), kNotJoined, 2},
    {"category missing", OneDisk(kOtherCategory), {RestoreFailed}},
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
    session.StartRestore({Box::Report});
    for (std::size_t i = 1; i <= failure.disks; ++i) session.PromptForDisk(AskNextSourceDisk, session.disks[i]);
    session.LeaveRestoreAfter(failure.messages, host::Answer::Refused);
    EXPECT_EQ(session.ChangedHostFiles(), Paths());
  }
}

// The clock moves on from disk to disk, and what is in the drive at Start need not be what was inspected.
TEST(FloppySets, DiskThatWasChangedAfterTheInspectionIsNotTaken) {
  FloppySession session;
  session.CutIntoDisks(299, 100);
  for (std::size_t i = 0; i < 3; ++i) Foreign(i, "09:30:12", "09:3" + std::to_string(i) + ":00")(session);
  MediumFiles other = session.disks[0];
  other["BackupInfo.ini"].replace(other["BackupInfo.ini"].find("3.00"), 4, "3.10");
  session.InsertDisk(session.disks[0]);
  session.BeginRestore("A:\\");
  session.At<frmRestore>([&](frmRestore& form) {
    session.InsertDisk(other);
    for (const Box box : kAllBoxes)
      if (BoxOf(form, box).Enabled()) fakes::Tick(BoxOf(form, box), box == Box::Report);
    fakes::Press(form.cmdStart);
  });
  session.PromptForDisk(AskRightDisk, session.disks[0]);
  for (std::size_t i = 1; i <= 2; ++i) session.PromptForDisk(AskNextSourceDisk, session.disks[i]);
  session.EndAfter({RestoreComplete});
  EXPECT_EQ(session.ChangedHostFiles(), Paths{"Report\\big.dat"});
}

}  // namespace
