// The media drives of the host, and what the selection dialog says of them.
#include "media/MediaDrives.h"

#include "unit/Station.h"

namespace {

using base::Result;
using enum base::MessageId;
using enum host::DriveStatus;

// A set may be read from any medium; no set is read where nobody could be asked for one.
TEST_F(JobTest, SourceDriveIsReadableAtLeast) {
  Statuses('E', {Readable, NoMedium})(host);
  EXPECT_EQ(drives.CheckSourceDrive("E:\\set\\"), Result::Done);
  host.person.ExpectMessage(AskInsertSourceMedium, host::Answer::NotShown);
  EXPECT_EQ(drives.CheckSourceDrive("E:\\set\\"), Result::Stopped);
}

// It must not burn a core, and the operator must be able to stop it.
TEST_F(JobTest, AComponentThatTellsNothingIsAskedAtRestAndNotForEver) {
  constexpr std::size_t kUnclear = 50;
  std::deque<host::DriveStatus> answers(2 * kUnclear + 3, kMeaningless);
  answers.push_back(Ready);
  Statuses('E', answers)(host);
  for (int i = 0; i < 2; ++i) host.person.ExpectMessage(AskInsertSourceMedium, host::Answer::Consented);
  EXPECT_EQ(drives.CheckSourceDrive("E:\\"), Result::Done);
  EXPECT_GE(host.messageLoop.paused, 5'000);
  EXPECT_TRUE(WasWarnedOf("Drive E: "));
  Statuses('E', std::deque<host::DriveStatus>(kUnclear, kMeaningless))(host);
  host.person.ExpectMessage(AskInsertSourceMedium, host::Answer::Refused);
  EXPECT_EQ(drives.CheckSourceDrive("E:\\"), Result::Stopped);
  for (const auto& message : host.person.Messages()) EXPECT_EQ(message.text3, "2") << "the kind of a prompt";
}

// The operator sees no drive proposed; the log tells why.
TEST_F(JobTest, MediaDrivesThatCannotBeReadAreNoted) {
  const std::pair<const char*, const char*> faults[] = {{"GetEquip", "[Exclamation] Media drives not listed: "},
                                                        {"GetDriveInfo", "[Exclamation] Media drive 100 not read: "}};
  for (const auto& [method, line] : faults) {
    host.calls.Reset();
    host.calls.FailFrom("QXNetDB", method);
    EXPECT_EQ(drives.ProposeMediaDrive(), ":\\");
    EXPECT_PRED_FORMAT2(testing::IsSubstring, line, host.disk.Read(fakes::kLogFile));
  }
}

struct Preparing {
  const char* type;
  Arrangement arrange;
  Ids messages;
  Names prepared;    ///< by the media component
  int programs = 0;  ///< of the media that were started
  Result result = Result::Done;
};

const Preparing kPreparings[] = {
    {"STANDARD", Nothing, {}, {"E"}},
    {"STANDARD", [](auto& host) { host.Told().prepareRefusal = "no"; }, {BackupFormatFailed}, {"E"}, 0, Result::Failed},
    {"APPLICATION", Nothing, {}, {}, 1},
    {"APPLICATION", Fails("Processes", "Start"), {}, {}, 0, Result::Failed},
    {"NONE", Nothing, {MediumNotPreparable}, {}, 0, Result::Failed},
    {"BY HAND", Nothing, {}, {}}};

// The drive of the destination, whichever entry of the host's database said how it is done.
TEST(PrepareMedia, PreparesTheDriveThatIsWrittenTo) {
  for (const Preparing& each : kPreparings) {
    SCOPED_TRACE(each.type);
    JobStation station;
    station.host.processes.Install("C:\\Windows\\System32\\burn.exe", DoNothing);
    station.host.qxNetDB.records = {{"READABLE", "R", "", "NONE", ""}, {"WRITABLE", "D", "", each.type, "burn.exe /f"}};
    EXPECT_EQ(station.drives.ProposeMediaDrive(), "D:\\");
    each.arrange(station.host);
    for (const base::MessageId id : each.messages) station.host.person.ExpectMessage(id);
    EXPECT_EQ(station.drives.PrepareMedia("E"), each.result);
    EXPECT_EQ(station.host.Told().preparedDrives, each.prepared);
    EXPECT_EQ(station.host.processes.CountStarted("burn.exe /f"), each.programs);
  }
}

TEST_F(JobTest, CapacityTextNamesNeedAndFreeSpace) {
  host.disk.FindDrive("D:")->capacity = std::uint64_t{10240} * 1024 * 1024;
  const struct {
    std::uint32_t needed;
    const char* folder;
    host::DriveStatus status;
    const char* text;
  } spaces[] = {
      {1'572'864, "D:\\", Ready, "1.50MB / 10,240.00MB"},    {0, "D:\\x\\", Readable, "0.00MB / 10,240.00MB"},
      {1'572'864, "D:\\", Unusable, "1.50MB / -MB"},         {1'572'864, "D:\\", Error, "1.50MB / -MB"},
      {4'294'967'295, "R:\\", NoMedium, "4,096.00MB / -MB"}, {1, "\\", Ready, "0.00MB / -MB"},
  };
  for (const auto& space : spaces) {
    host.Told().mediaStatuses[space.folder[0]] = {space.status};
    EXPECT_EQ(drives.GetCapacityText(space.folder, space.needed), space.text);
  }
}

}  // namespace
