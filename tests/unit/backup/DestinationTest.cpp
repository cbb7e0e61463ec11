// What stands against a destination, in both operations that write to one; and what is proposed as one.
#include "backup/BackupOperation.h"
#include "backup/DestinationCopy.h"
#include "media/Proposal.h"
#include "unit/Station.h"

namespace {

using base::Result;
using enum base::MessageId;
using enum host::DriveStatus;

struct Refusal {
  const char* name;
  Arrangement arrange;
  Ids messages;          ///< in an ordinary backup
  bool pending = false;  ///< whether the last one is left to the caller
  const char* folder = "D:\\";
  const char* mediaType = "STANDARD";  ///< how the host prepares a medium
};

const Arrangement kToPrepare = Statuses('D', {Readable});
const Arrangement kFormatFails = Both(kToPrepare, [](auto& host) { host.Told().prepareRefusal = "answered 5"; });
const Arrangement kNoLabel = Both(kToPrepare, Fails("Drives", "SetVolumeLabel"));
const Ids kNotPrepared = {AskPrepareBackupMedium, MediumNotPreparable, BackupFormatFailed};
const Ids kNotFormatted = {AskPrepareBackupMedium, BackupFormatFailed};

const Refusal kRefusals[] = {
    {"drive error", Statuses('D', {Error}), {BackupDriveError}},
    {"drive unusable", Statuses('D', {Unusable}), {BackupDriveUnusable}},
    {"medium inserted too late", Statuses('D', {NoMedium, Error}), {AskInsertBackupMedium, BackupDriveError}},
    {"format fails", kFormatFails, {AskPrepareBackupMedium, BackupFormatFailed, BackupFormatFailed}, true},
    {"host prepares nothing", kToPrepare, kNotPrepared, true, "D:\\", "NONE"},
    {"media program missing", kToPrepare, kNotFormatted, true, "D:\\", "APPLICATION"},
    {"label cannot be set", kNoLabel, {AskPrepareBackupMedium, BackupLabelFailed}, true},
    {"exactly as much space as needed", Capacity("D:", 1000), {BackupSpaceTooSmall}},
    {"folder cannot be made", Nothing, {AskMakeBackupFolder, BackupFolderNotMade}, true, "D:\\a\\b\\"},
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
      run.host.disk.Write("C:\\Work\\UserData.cab", std::string(1000, 'u'));
      app::State& state = run.application.state;
      state.BackupSize = 1000;
      state.Present.UserData = true;
      state.SelectedFolder = refusal.folder;
      state.MediaAppType = refusal.mediaType;
      state.MediaAppCommand = "none.exe";
      Ids expected = refusal.messages;
      // What the preparation itself has shown is the same in both.
      for (std::size_t i = 0; i < expected.size() && operation != app::Operation::Backup; ++i)
        if (expected[i] != BackupFormatFailed || i + 1 == expected.size()) expected[i] = kOfMaintenance.at(expected[i]);
      const base::MessageId last = expected.back();
      if (refusal.pending) expected.pop_back();
      for (const base::MessageId id : expected) run.host.person.ExpectMessage(id, host::Answer::Consented);
      EXPECT_EQ(backup::CopyToDestination(run.application, backup::MessagesOf(operation)),
                refusal.pending ? Result::Failed : Result::Stopped);
      EXPECT_EQ(state.PendingMessageId, refusal.pending ? last : None);
      EXPECT_TRUE(run.host.disk.Tree("D:\\").empty());
    }
  }
}

TEST_F(JobTest, DescriptorAloneIsNoBackup) {
  application.state.SelectedFolder = "D:\\";
  EXPECT_EQ(backup::CopyToDestination(application, backup::MessagesOf(app::Operation::Backup)), Result::Failed);
  EXPECT_EQ(application.state.PendingMessageId, None);
}

TEST_F(JobTest, ProposalsOfTheOperations) {
  const std::string profile = "C:\\Users\\Operator\\Desktop";
  const struct {
    std::string drive, desktop;  ///< as the host has them
    std::string medium, folder;  ///< what is made of them
  } cases[] = {{"E", profile, "E:\\", profile + "\\"},
               {"E:", "D:\\", "E:\\", "D:\\"},
               {"E:\\Media\\", "", "E:\\Media\\", "C:\\"},
               {" ", profile, ":\\", profile + "\\"}};
  for (const auto& each : cases) {
    SCOPED_TRACE(each.drive);
    host.qxNetDB.records = {{"writable", "X", "", "", ""},
                            {"WRITABLE", each.drive, "", "NONE", "a.exe"},
                            {"WRITABLE", "Y", "", "STANDARD", "b.exe"}};
    host.shell.desktop = each.desktop;
    EXPECT_EQ(backup::BackupOperation(job, {}).ProposeFolder(), each.medium + "20120315093012\\");
    application.state.MediaAppType.clear();
    EXPECT_EQ(media::ProposeDesktop(application), each.folder);
    EXPECT_EQ(application.state.MediaAppType + application.state.MediaAppCommand, "NONEa.exe");
  }
}

}  // namespace
