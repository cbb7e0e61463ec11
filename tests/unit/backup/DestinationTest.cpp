// Copying to the destination, where something goes wrong on the way.
#include "backup/BackupOperation.h"
#include "backup/DestinationCopy.h"
#include "backup/WritingOperation.h"
#include "media/Proposal.h"
#include "unit/backup/JobFixture.h"

namespace {

/// A workstation with one archive that is to go to D:.
struct Destination : JobStation {
  Destination() {
    host.disk.Write("C:\\Work\\UserData.cab", std::string(1000, 'u'));
    application.state.BackupSize = 1000;
    application.state.SelectedFolder = "D:\\";
    application.state.MediaAppType = "STANDARD";
  }
  app::ResultCode Copy(app::Operation operation = app::Operation::Backup) {
    return backup::CopyToDestination(application, backup::MessagesOf(operation));
  }
};

class DestinationTest : public testing::Test, public Destination {};

// What a copy leaves when it has gone wrong though xcopy says that it has not.
struct Damage {
  const char* name;
  void (*arrange)(fakes::FakeHost&);
  app::ResultCode result;
};

void DamageAfterCopy(fakes::FakeHost& host, const char* name, const char* bytes) {
  host.processes.Install("C:\\Windows\\System32\\CMD.exe", [=](fakes::Disk& disk, const fakes::Words& words) {
    const std::uint32_t code = fakes::RunCommandInterpreter(disk, words);
    if (words[3].ends_with(name)) disk.Remove(std::string("D:\\") + name);
    if (words[3].ends_with(name) && bytes) disk.Write(std::string("D:\\") + name, bytes);
    return code;
  });
}

const Damage kDamages[] = {
    {"archive cut short", [](fakes::FakeHost& h) { DamageAfterCopy(h, "UserData.cab", "uuu"); }, -1},
    {"archive vanished", [](fakes::FakeHost& h) { DamageAfterCopy(h, "UserData.cab", nullptr); }, -1},
    {"descriptor cut short", [](fakes::FakeHost& h) { DamageAfterCopy(h, "BackupInfo.ini", "["); }, -1},
    {"staging folder unreadable", [](fakes::FakeHost& h) { h.calls.FailFrom("FileSystem", "List"); }, -1},
    {"no archive", [](fakes::FakeHost& h) { h.disk.Remove("C:\\Work\\UserData.cab"); }, -1},
    {"medium refuses",
     [](fakes::FakeHost& h) {
       h.Told().mediaStatuses['D'] = {3};
       h.disk.FindDrive("D:")->writable = false;
     },
     -1},
    {"nothing", [](fakes::FakeHost&) {}, 0},
};

TEST_F(DestinationTest, OnlyAWholeCopyCounts) {
  for (const Damage& damage : kDamages) {
    SCOPED_TRACE(damage.name);
    host.disk.Remove("C:\\Work\\BackupInfo.ini");
    host.calls.Reset();
    damage.arrange(host);
    EXPECT_EQ(Copy(), damage.result);
    EXPECT_EQ(application.state.PendingMessageId, 0);
    host.disk.FindDrive("D:")->writable = true;
    host.disk.Format("D:");
    host.disk.FindDrive("D:")->label = "BACKUP";
    host.disk.Write("C:\\Work\\UserData.cab", std::string(1000, 'u'));
    host.processes.Install("C:\\Windows\\System32\\CMD.exe", fakes::RunCommandInterpreter);
  }
}

struct Refusal {
  const char* name;
  void (*arrange)(Destination&);
  std::vector<std::int32_t> backup;       ///< messages in an ordinary backup, the last one perhaps pending
  std::vector<std::int32_t> maintenance;  ///< and in a maintenance log backup
  bool pending = false;
};

void SetStatus(Destination& test, std::deque<std::int32_t> statuses) {
  test.host.Told().mediaStatuses['D'] = std::move(statuses);
}

const Refusal kRefusals[] = {
    {"drive error", [](Destination& t) { SetStatus(t, {-1}); }, {63310}, {63460}},
    {"drive unusable", [](Destination& t) { SetStatus(t, {0}); }, {63311}, {63461}},
    {"answers without a meaning are asked again",
     [](Destination& t) {
       SetStatus(t, {7, 99, 0});
     },
     {63311},
     {63461}},
    {"medium inserted too late",
     [](Destination& t) {
       SetStatus(t, {1, 1, -1});
     },
     {64300, 64300, 63310},
     {64450, 64450, 63460}},
    {"format fails",
     [](Destination& t) {
       SetStatus(t, {2});
       t.host.Told().prepareAnswer = 5;
     },
     {64305, 60382, 60382},
     {64455, 60382, 60482},
     true},
    {"host prepares nothing",
     [](Destination& t) {
       SetStatus(t, {2});
       t.application.state.MediaAppType = "NONE";
     },
     {64305, 63380, 60382},
     {64455, 63380, 60482},
     true},
    {"media program missing",
     [](Destination& t) {
       SetStatus(t, {2});
       t.application.state.MediaAppType = "APPLICATION";
       t.application.state.MediaAppCommand = "none.exe";
     },
     {64305, 60382},
     {64455, 60482},
     true},
    {"label cannot be set",
     [](Destination& t) {
       SetStatus(t, {2});
       t.host.calls.FailFrom("Drives", "SetVolumeLabel");
     },
     {64305, 60383},
     {64455, 60483},
     true},
    {"exactly as much space as needed",
     [](Destination& t) { t.host.disk.FindDrive("D:")->capacity = 1000; },
     {62360},
     {62460}},
    {"folder cannot be made",
     [](Destination& t) { t.application.state.SelectedFolder = "D:\\a\\b\\"; },
     {64302, 63413},
     {64452, 63463},
     true},
    {"no version of a category",
     [](Destination& t) {
       t.application.state.Present.UserData = true;
       t.host.disk.Remove("C:\\Tarsus\\System\\BackupVersion.ini");
     },
     {60372},
     {60372},
     true},
};

TEST(DestinationRefusals, HaveTheirMessageInBothOperations) {
  for (const Refusal& refusal : kRefusals) {
    for (const app::Operation operation : {app::Operation::Backup, app::Operation::MaintenanceLogBackup}) {
      SCOPED_TRACE(refusal.name + std::to_string(static_cast<int>(operation)));
      Destination run;
      refusal.arrange(run);
      auto expected = operation == app::Operation::Backup ? refusal.backup : refusal.maintenance;
      const std::int32_t last = expected.back();
      if (refusal.pending) expected.pop_back();
      for (const std::int32_t id : expected) run.host.person.ExpectMessage(id, app::kConsented);
      EXPECT_EQ(run.Copy(operation), refusal.pending ? app::kFailed : app::kStopped);
      EXPECT_EQ(run.application.state.PendingMessageId, refusal.pending ? last : 0);
      EXPECT_TRUE(run.host.disk.Tree("D:\\").empty());
    }
  }
}

TEST_F(JobTest, ProposalsOfTheOperations) {
  struct Case {
    std::string drive;
    std::string desktop;
    std::string media;
    std::string desktopProposal;
  };
  const std::string profile = "C:\\Users\\Operator\\Desktop";
  for (const Case& each : {Case{"E", profile, "E:\\", profile + "\\"}, Case{"E:", "D:\\", "E:\\", "D:\\"},
                           Case{"E:\\Media\\", "", "E:\\Media\\", "C:\\"}, Case{" ", profile, ":\\", profile + "\\"}}) {
    SCOPED_TRACE(each.drive);
    host.qxNetDB.records = {{"writable", "X", "", "", ""},
                            {"WRITABLE", each.drive, "", "NONE", "a.exe"},
                            {"WRITABLE", "Y", "", "STANDARD", "b.exe"}};
    host.shell.desktop = each.desktop;
    EXPECT_EQ(media::ProposeMediaDrive(application), each.media);
    EXPECT_EQ(backup::BackupOperation(job, {}).ProposeFolder(), each.media + "20120315093012\\");
    application.state.MediaAppType.clear();
    EXPECT_EQ(media::ProposeDesktop(application), each.desktopProposal);
    EXPECT_EQ(application.state.MediaAppType, "NONE");
    EXPECT_EQ(application.state.MediaAppCommand, "a.exe");
  }
}

TEST_F(JobTest, WrittenOperationsClearTheStagingFolderAway) {
  backup::BackupOperation operation(job, {});
  EXPECT_EQ(operation.DefaultMessages().failed, 60351);
  EXPECT_EQ(operation.DefaultMessages().stepFailed, 60352);
  EXPECT_EQ(backup::MessagesOf(app::Operation::MaintenanceLogBackup).failures.failed, 60451);
  EXPECT_EQ(backup::MessagesOf(app::Operation::MaintenanceLogBackup).failures.stepFailed, 60452);
  host.calls.FailFrom("FileSystem", "RemoveFolder");
  host.person.ExpectMessage(60361);
  operation.Unloaded();
  host.calls.Reset();
  operation.Unloaded();
  EXPECT_FALSE(host.disk.IsFolder("C:\\Work"));
}

}  // namespace
