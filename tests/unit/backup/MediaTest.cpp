// The media drives of the host, and what the selection dialog says of them.
#include "media/Capacity.h"
#include "media/DriveStatus.h"
#include "media/MediaDrive.h"
#include "unit/backup/JobFixture.h"

namespace {

TEST_F(JobTest, DatabaseOfMediaDrivesIsClosedWhateverHappens) {
  struct Fault {
    const char* method;  ///< nullptr: an unknown path-table entry, before anything is opened
    std::int32_t message;
    int closes;
  };
  for (const Fault& fault :
       {Fault{nullptr, 60326, 0}, Fault{"Connect", 60323, 1}, Fault{"GetEquip", 0, 1}, Fault{"GetDriveInfo", 0, 1}}) {
    SCOPED_TRACE(fault.message);
    JobStation station;
    if (fault.method) station.host.calls.FailFrom("QXNetDB", fault.method);
    if (!fault.method) station.host.qx32.pathTable.erase("NetConfigDB");
    if (fault.message != 0) station.host.person.ExpectMessage(fault.message);
    EXPECT_EQ(media::GetDefaultMediaDrive(station.application), "");
    EXPECT_EQ(station.host.qxNetDB.closes, fault.closes);
    EXPECT_EQ(station.application.state.MediaAppType, "");
  }
}

struct Source {
  const char* name;
  std::deque<std::int32_t> statuses;
  std::vector<std::pair<std::int32_t, std::int32_t>> messages;  ///< with the operator's answers
  app::ResultCode result;
};

const Source kSources[] = {
    {"ready", {3}, {}, 0},
    {"readable", {2}, {}, 0},
    {"error", {-1}, {{63410, 0}}, 1},
    {"unusable", {0}, {{63411, 0}}, 1},
    {"inserted at the second prompt", {1, 1, 3}, {{64400, 2}, {64400, 2}}, 0},
    {"operator stops", {1}, {{64400, 1}}, 1},
    {"prompt cannot be shown", {1}, {{64400, 0}}, 1},
    {"answer without a meaning", {42, 3}, {}, 0},
};

TEST(SourceDrive, IsAskedUntilItDecides) {
  for (const Source& source : kSources) {
    SCOPED_TRACE(source.name);
    JobStation station;
    station.application.state.SelectedFolder = "E:\\set\\";
    station.application.state.MediaAppCommand = "media.exe";
    station.host.Told().mediaStatuses['E'] = source.statuses;
    for (const auto& [id, answer] : source.messages) station.host.person.ExpectMessage(id, answer);
    EXPECT_EQ(media::CheckSourceDrive(station.application), source.result);
    EXPECT_EQ(station.host.Told().mediaCommands, Names(source.statuses.size(), "media.exe"));
  }
}

struct Space {
  std::uint32_t needed;
  const char* folder;
  std::int32_t status;
  const char* text;
  app::ResultCode result;
};

const Space kSpaces[] = {
    {1'572'864, "D:\\", 3, "1.50MB / 10,240.00MB", 0}, {0, "D:\\x\\", 2, "0.00MB / 10,240.00MB", 0},
    {1'572'864, "D:\\", 0, "1.50MB / -MB", -1},        {1'572'864, "D:\\", -1, "1.50MB / -MB", -1},
    {4'294'967'295, "R:\\", 1, "4,096.00MB / -MB", 0}, {1, "\\", 3, "0.00MB / -MB", -1},
};

TEST_F(JobTest, CapacityTextNamesNeedAndFreeSpace) {
  host.disk.FindDrive("D:")->capacity = std::uint64_t{10240} * 1024 * 1024;
  for (const Space& space : kSpaces) {
    application.state.BackupSize = space.needed;
    application.state.SelectedFolder = space.folder;
    host.Told().mediaStatuses[space.folder[0]] = {space.status};
    std::string text = "old";
    EXPECT_EQ(media::GetCapacityText(application, text), space.result) << space.text;
    EXPECT_EQ(text, space.text);
  }
}

TEST(PrepareMedia, FollowsThePreparationType) {
  struct Way {
    const char* type;
    std::int32_t componentAnswer;
    const char* command;
    bool result;
    std::int32_t message;
    std::size_t prepared;
    std::size_t started;
  };
  for (const Way& way :
       {Way{"APPLICATION", 0, "cabarc.exe /x", true, 0, 0, 1}, Way{"APPLICATION", 0, "none.exe", false, 0, 0, 0},
        Way{"STANDARD", 0, "", true, 0, 1, 0}, Way{"STANDARD", 1, "", false, 60382, 1, 0},
        Way{"NONE", 0, "", false, 63380, 0, 0}, Way{"standard", 0, "", true, 0, 0, 0}, Way{"", 0, "", true, 0, 0, 0}}) {
    SCOPED_TRACE(std::string(way.type) + way.command);
    JobStation station;
    station.application.state.MediaAppType = way.type;
    station.application.state.MediaAppCommand = way.command;
    station.host.Told().prepareAnswer = way.componentAnswer;
    if (way.message != 0) station.host.person.ExpectMessage(way.message);
    EXPECT_EQ(media::PrepareMedia(station.application, "D"), way.result);
    EXPECT_EQ(station.host.Told().preparedDrives.size(), way.prepared);
    ASSERT_EQ(station.host.processes.started.size(), way.started);
    for (const auto& program : station.host.processes.started) {
      EXPECT_EQ(program.style, host::WindowStyle::Normal);
      EXPECT_TRUE(program.waitedFor);
    }
  }
}

}  // namespace
