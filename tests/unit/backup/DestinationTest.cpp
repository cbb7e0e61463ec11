// Copying to the destination, where something goes wrong on the way; and what is proposed as one.
#include "backup/BackupOperation.h"
#include "backup/DestinationCopy.h"
#include "media/Proposal.h"
#include "unit/Station.h"

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

/// xcopy works, but of this file only `bytes` arrive; without any the file does not.
Arrangement Arrives(const std::string& name, const std::string& bytes) {
  return Program(kInterpreter, [=](fakes::Disk& disk, const fakes::Words& words) {
    const std::uint32_t code = fakes::RunCommandInterpreter(disk, words);
    if (words[3].ends_with(name)) disk.Remove("D:\\" + name);
    if (words[3].ends_with(name) && !bytes.empty()) disk.Write("D:\\" + name, bytes);
    return code;
  });
}

TEST(Destination, OnlyAWholeCopyCounts) {
  const std::pair<Arrangement, app::ResultCode> damages[] = {{Arrives("UserData.cab", "uuu"), app::kFailed},
                                                             {Arrives("UserData.cab", ""), app::kFailed},
                                                             {Arrives("BackupInfo.ini", "["), app::kFailed},
                                                             {Gone("C:\\Work\\UserData.cab"), app::kFailed},
                                                             {Nothing, app::kDone}};
  for (const auto& [damage, result] : damages) {
    Destination run;
    damage(run.host);
    EXPECT_EQ(run.Copy(), result);
    EXPECT_EQ(run.application.state.PendingMessageId, 0);
  }
}

struct Refusal {
  const char* name;
  Arrangement arrange;
  Ids backup;       ///< messages in an ordinary backup, the last one perhaps pending
  Ids maintenance;  ///< and in a maintenance log backup
  bool pending = false;
  void (*choose)(app::State&) = [](app::State&) {};
};

const Arrangement kToPrepare = Statuses('D', {2});

void PrepareByMissingProgram(app::State& state) {
  state.MediaAppType = "APPLICATION";
  state.MediaAppCommand = "none.exe";
}

const Refusal kRefusals[] = {
    {"drive error", Statuses('D', {-1}), {63310}, {63460}},
    {"drive unusable", Statuses('D', {0}), {63311}, {63461}},
    {"answers without a meaning are asked again", Statuses('D', {7, 99, 0}), {63311}, {63461}},
    {"medium inserted too late", Statuses('D', {1, 1, -1}), {64300, 64300, 63310}, {64450, 64450, 63460}},
    {"format fails",
     Both(kToPrepare, [](auto& host) { host.Told().prepareAnswer = 5; }),
     {64305, 60382, 60382},
     {64455, 60382, 60482},
     true},
    {"host prepares nothing",
     kToPrepare,
     {64305, 63380, 60382},
     {64455, 63380, 60482},
     true,
     [](app::State& state) { state.MediaAppType = "NONE"; }},
    {"media program missing", kToPrepare, {64305, 60382}, {64455, 60482}, true, PrepareByMissingProgram},
    {"label cannot be set", Both(kToPrepare, Fails("Drives", "SetVolumeLabel")), {64305, 60383}, {64455, 60483}, true},
    {"exactly as much space as needed", Capacity("D:", 1000), {62360}, {62460}},
    {"folder cannot be made",
     Nothing,
     {64302, 63413},
     {64452, 63463},
     true,
     [](app::State& state) { state.SelectedFolder = "D:\\a\\b\\"; }},
    {"no version of a category",
     Gone("C:\\Tarsus\\System\\BackupVersion.ini"),
     {60372},
     {60372},
     true,
     [](app::State& state) { state.Present.UserData = true; }},
};

TEST(DestinationRefusals, HaveTheirMessageInBothOperations) {
  for (const Refusal& refusal : kRefusals) {
    for (const app::Operation operation : {app::Operation::Backup, app::Operation::MaintenanceLogBackup}) {
      SCOPED_TRACE(refusal.name + std::to_string(static_cast<int>(operation)));
      Destination run;
      refusal.arrange(run.host);
      refusal.choose(run.application.state);
      Ids expected = operation == app::Operation::Backup ? refusal.backup : refusal.maintenance;
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
    EXPECT_EQ(backup::BackupOperation(job, {}).ProposeFolder(), each.media + "20120315093012\\");
    application.state.MediaAppType.clear();
    EXPECT_EQ(media::ProposeDesktop(application), each.desktopProposal);
    EXPECT_EQ(application.state.MediaAppType + application.state.MediaAppCommand, "NONEa.exe");
  }
}

}  // namespace
