// What stands against a destination, in both operations that write to one; and what is proposed as one.
#include "backup/BackupOperation.h"
#include "backup/DestinationCopy.h"
#include "media/Proposal.h"
#include "unit/Station.h"

namespace {

struct Refusal {
  const char* name;
  Arrangement arrange;
  Ids backup;       ///< messages in an ordinary backup, the last one perhaps pending
  Ids maintenance;  ///< and in a maintenance log backup
  bool pending = false;
  const char* folder = "D:\\";
  const char* mediaType = "STANDARD";  ///< how the host prepares a medium
};

const Arrangement kToPrepare = Statuses('D', {2});
const Arrangement kFormatFails = Both(kToPrepare, [](auto& host) { host.Told().prepareAnswer = 5; });
const Arrangement kNoLabel = Both(kToPrepare, Fails("Drives", "SetVolumeLabel"));
const Arrangement kNoVersions = Gone("C:\\Tarsus\\System\\BackupVersion.ini");

const Refusal kRefusals[] = {
    {"drive error", Statuses('D', {-1}), {63310}, {63460}},
    {"drive unusable", Statuses('D', {0}), {63311}, {63461}},
    {"answers without a meaning are asked again", Statuses('D', {7, 99, 0}), {63311}, {63461}},
    {"medium inserted too late", Statuses('D', {1, 1, -1}), {64300, 64300, 63310}, {64450, 64450, 63460}},
    {"format fails", kFormatFails, {64305, 60382, 60382}, {64455, 60382, 60482}, true},
    {"host prepares nothing", kToPrepare, {64305, 63380, 60382}, {64455, 63380, 60482}, true, "D:\\", "NONE"},
    {"media program missing", kToPrepare, {64305, 60382}, {64455, 60482}, true, "D:\\", "APPLICATION"},
    {"label cannot be set", kNoLabel, {64305, 60383}, {64455, 60483}, true},
    {"exactly as much space as needed", Capacity("D:", 1000), {62360}, {62460}},
    {"folder cannot be made", Nothing, {64302, 63413}, {64452, 63463}, true, "D:\\a\\b\\"},
    {"no version of a category", kNoVersions, {60372}, {60372}, true},
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
      Ids expected = operation == app::Operation::Backup ? refusal.backup : refusal.maintenance;
      const std::int32_t last = expected.back();
      if (refusal.pending) expected.pop_back();
      for (const std::int32_t id : expected) run.host.person.ExpectMessage(id, app::kConsented);
      EXPECT_EQ(backup::CopyToDestination(run.application, backup::MessagesOf(operation)),
                refusal.pending ? app::kFailed : app::kStopped);
      EXPECT_EQ(state.PendingMessageId, refusal.pending ? last : 0);
      EXPECT_TRUE(run.host.disk.Tree("D:\\").empty());
    }
  }
}

TEST_F(JobTest, DescriptorAloneIsNoBackup) {
  application.state.SelectedFolder = "D:\\";
  EXPECT_EQ(backup::CopyToDestination(application, backup::MessagesOf(app::Operation::Backup)), app::kFailed);
  EXPECT_EQ(application.state.PendingMessageId, 0);
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
