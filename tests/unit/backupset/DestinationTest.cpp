// What stands against a destination, in both operations that write to one; and what is proposed as one.
#include "backup/mdlBUBackup.h"
#include "backupset/SetWriter.h"
#include "maintenance/mdlBUMaintenance.h"
#include "unit/Station.h"

namespace {

using base::Result;
using enum base::MessageId;
using enum host::DriveStatus;

struct Refusal {
  const char* name;
  Arrangement arrange;
  Ids messages;            ///< in an ordinary backup
  const char* cause = "";  ///< where the last one is left to the caller: what the log will need
  const char* folder = "D:\\";
  const char* mediaType = "STANDARD";  ///< how the host prepares a medium
  std::uint64_t size = 1000;           ///< of what is written
};

constexpr std::uint64_t kGiB = std::uint64_t{1} << 30;

const Arrangement kToPrepare = Statuses('D', {Readable});
const Arrangement kFormatFails = Both(kToPrepare, [](auto& host) { host.Told().prepareRefusal = "answered 5"; });
const Arrangement kNoLabel = Both(kToPrepare, Fails("Drives", "SetVolumeLabel"));
const Arrangement kNoFolders = Fails("FileSystem", "MakeFolder", 1, "D:\\a");
const Ids kNotPrepared = {AskPrepareBackupMedium, MediumNotPreparable, BackupFormatFailed};
const Ids kNotFormatted = {AskPrepareBackupMedium, BackupFormatFailed};

const Refusal kRefusals[] = {
    {"drive error", Statuses('D', {Error}), {BackupDriveError}},
    {"drive unusable", Statuses('D', {Unusable}), {BackupDriveUnusable}},
    {"medium inserted too late", Statuses('D', {NoMedium, Error}), {AskInsertBackupMedium, BackupDriveError}},
    {"format fails", kFormatFails, {AskPrepareBackupMedium, BackupFormatFailed, BackupFormatFailed}, "answered 5"},
    {"host prepares nothing", kToPrepare, kNotPrepared, "medium in drive D", "D:\\", "NONE"},
    {"media program missing", kToPrepare, kNotFormatted, "none.exe", "D:\\", "APPLICATION"},
    {"label cannot be set", kNoLabel, {AskPrepareBackupMedium, BackupLabelFailed}, "D:"},
    {"exactly as much space as needed", Capacity("D:", 1000), {BackupSpaceTooSmall}},
    {"half as much, in sizes beyond 32 bits",
     Capacity("D:", 5 * kGiB),
     {BackupSpaceTooSmall},
     "",
     "D:\\",
     "STANDARD",
     10 * kGiB},
    {"folder cannot be made", kNoFolders, {AskMakeBackupFolder, BackupFolderNotMade}, "D:\\a", "D:\\a\\b\\"},
};

/// Of an ordinary backup, and what a maintenance log backup has in its place.
const std::map<base::MessageId, base::MessageId> kOfMaintenance = {
    {BackupDriveError, MaintenanceDriveError},           {BackupDriveUnusable, MaintenanceDriveUnusable},
    {AskInsertBackupMedium, AskInsertMaintenanceMedium}, {AskPrepareBackupMedium, AskPrepareMaintenanceMedium},
    {MediumNotPreparable, MediumNotPreparable},          {BackupFormatFailed, MaintenanceFormatFailed},
    {BackupLabelFailed, MaintenanceLabelFailed},         {BackupSpaceTooSmall, MaintenanceSpaceTooSmall},
    {AskMakeBackupFolder, AskMakeMaintenanceFolder},     {BackupFolderNotMade, MaintenanceFolderNotMade},
};

TEST(DestinationRefusals, HaveTheirMessageInBothOperations) {
  for (const Refusal& refusal : kRefusals) {
    for (const app::Operation operation : {app::Operation::Backup, app::Operation::MaintenanceLogBackup}) {
      SCOPED_TRACE(refusal.name + std::to_string(static_cast<int>(operation)));
      JobStation run;
      refusal.arrange(run.host);
      run.host.disk.Write(JobStation::kStaging + std::string("UserData.cab"), std::string(1000, 'u'));
      run.packed.set.archives = {{"UserData.cab", 1000, 1}};
      run.packed.BackupSize = refusal.size;
      run.application.state.SelectedFolder = refusal.folder;
      run.host.qxNetDB.records = {{"WRITABLE", "D", "", refusal.mediaType, "none.exe"}};
      run.drives.ProposeMediaDrive();
      Ids expected = refusal.messages;
      // What the preparation itself has shown is the same in both.
      for (std::size_t i = 0; i < expected.size() && operation != app::Operation::Backup; ++i)
        if (expected[i] != BackupFormatFailed || i + 1 == expected.size()) expected[i] = kOfMaintenance.at(expected[i]);
      const bool pending = *refusal.cause != 0;
      const base::MessageId last = expected.back();
      if (pending) expected.pop_back();
      for (const base::MessageId id : expected) run.host.person.ExpectMessage(id, host::Answer::Consented);
      const base::Outcome written =
          backupset::WriteBackupSet(run.application, run.drives, run.packed, backupset::MessagesOf(operation));
      EXPECT_EQ(written, pending ? Result::Failed : Result::Stopped);
      EXPECT_EQ(written.PendingMessageId, pending ? last : None);
      EXPECT_PRED_FORMAT2(testing::IsSubstring, refusal.cause, written.cause);
      EXPECT_TRUE(run.host.disk.Tree("D:\\").empty());
    }
  }
}

/// What no set can be written to, and why.
struct Impossible {
  std::string folder;
  const char* why;
};

const std::string kWork = JobStation::kStaging;
const Impossible kImpossible[] = {
    {"\\", "names no drive"},
    {"Set\\", "names no drive"},
    {"\\\\server\\share\\Set\\", "names no drive"},
    {"D:\\100%\\", "percent sign"},
    {"D:\\%TEMP%\\", "percent sign"},
    {kWork, "work folder"},
    {kWork + "CABFILE\\", "work folder"},
    {kWork + "new\\levels\\", "work folder"},
    {"c:\\work\\..\\WORK\\120315093012\\new\\", "work folder"},
};

// Nothing is asked and nothing written, and what was gathered goes to the next folder, with all its missing levels.
TEST(DestinationRefusals, AFolderThatCannotBeLeavesTheChoiceOpen) {
  for (const Impossible& impossible : kImpossible) {
    for (const app::Operation operation : {app::Operation::Backup, app::Operation::MaintenanceLogBackup}) {
      SCOPED_TRACE(impossible.folder + std::to_string(static_cast<int>(operation)));
      const bool backup = operation == app::Operation::Backup;
      JobStation run;
      run.host.disk.MakeFolders(kWork + "CABFILE");
      run.host.disk.Write(kWork + "UserData.cab", "set");
      run.packed.set.archives = {{"UserData.cab", 3, 1}};
      const auto write = [&](const std::string& folder) {
        run.application.state.SelectedFolder = folder;
        return backupset::WriteBackupSet(run.application, run.drives, run.packed, backupset::MessagesOf(operation));
      };
      run.host.person.ExpectMessage(backup ? BackupFolderNotMade : MaintenanceFolderNotMade);
      const base::Outcome refused = write(impossible.folder);
      EXPECT_EQ(refused, Result::Stopped);
      EXPECT_PRED_FORMAT2(testing::IsSubstring, impossible.why, refused.cause);
      EXPECT_TRUE(run.host.disk.Tree("D:\\").empty() && run.host.processes.started.empty());
      EXPECT_EQ(run.Staged(), Names{"UserData.cab"});
      run.host.person.ExpectMessage(backup ? AskMakeBackupFolder : AskMakeMaintenanceFolder, host::Answer::Consented);
      EXPECT_EQ(write("D:\\a\\b\\c\\"), Result::Done);
      EXPECT_EQ(run.NamesBelow("D:\\"), (Names{"a\\b\\c\\BackupInfo.ini", "a\\b\\c\\UserData.cab"}));
    }
  }
}

/// A disk whose files say that they have 3 GiB.
class DiskOfLargeFiles : public fakes::FakeFileSystem {
 public:
  using FakeFileSystem::FakeFileSystem;
  base::Outcome List(const std::string& folder, const std::string& pattern,
                     std::vector<host::FolderEntry>& entries) override {
    base::Outcome listed = FakeFileSystem::List(folder, pattern, entries);
    for (host::FolderEntry& entry : entries) entry.size = entry.isFolder ? 0 : 3 * kGiB;
    return listed;
  }
};

TEST_F(JobTest, ASetIsMeasuredBeyond32Bits) {
  for (const char* name : {"PatientData.cab", "LogData.cab"}) host.disk.Write(kStaging + std::string(name), "x");
  DiskOfLargeFiles files(host.disk, host.calls);
  const work::Tools large = ToolsOn(files);
  backupset::Measure(large, backupset::MessagesOf(app::Operation::Backup), app::Watch(application.log), packed);
  EXPECT_EQ(packed.BackupSize, 6 * kGiB);
}

TEST_F(JobTest, DescriptorAloneIsNoBackup) {
  for (const auto& [folder, result] : {std::pair("D:\\", Result::Failed), {"A:\\", Result::Stopped}}) {
    application.state.SelectedFolder = folder;
    const base::Outcome written =
        backupset::WriteBackupSet(application, drives, packed, backupset::MessagesOf(app::Operation::Backup));
    EXPECT_EQ(written, result);
    EXPECT_EQ(written.PendingMessageId, None);
    EXPECT_TRUE(host.disk.Tree(folder).empty());
  }
}

TEST_F(JobTest, ProposalsOfTheOperations) {
  const std::tuple<const char*, const char*, const char*, const char*> cases[] = {
      {"E", "E:\\", "D:\\Desktop", "D:\\Desktop\\"},
      {"E:", "E:\\", "D:\\", "D:\\"},
      {"E:\\Media\\", "E:\\Media\\", "", "C:\\"},
      {" ", ":\\", "D:\\", "D:\\"}};
  backup::BackupJob backup(application, {});
  maintenance::MaintenanceJob log(application, {});
  for (const auto& [drive, medium, desktop, folder] : cases) {
    SCOPED_TRACE(drive);
    host.qxNetDB.records = {{"writable", "X", "", "", ""},
                            {"WRITABLE", drive, "", "NONE", "a.exe"},
                            {"WRITABLE", "Y", "", "STANDARD", "b.exe"}};
    host.shell.desktop = desktop;
    EXPECT_EQ(backup::BackupOperation(application, definitions, drives, backup).ProposeFolder(),
              medium + std::string("20120315093012\\"));
    media::MediaDrives fresh{host.Contracts(), application.paths, application.messages, application.failures};
    EXPECT_EQ(maintenance::MaintenanceOperation(application, fresh, log).ProposeFolder(), folder);
    fresh.GetDriveStatus("Y");
    EXPECT_EQ(host.Told().mediaCommands.back(), "a.exe") << "a medium chosen by hand is prepared as the host has it";
  }
}

}  // namespace
