// The media drives of the host, and what the selection dialog says of them.
#include "media/Capacity.h"
#include "media/DriveStatus.h"
#include "unit/Station.h"

namespace {

struct Source {
  const char* name;
  std::deque<std::int32_t> statuses;
  Ids messages;
  app::ResultCode result;
  std::int32_t answer = app::kConsented;
};

const Source kSources[] = {
    {"ready", {3}, {}, 0},
    {"readable", {2}, {}, 0},
    {"error", {-1}, {63410}, 1},
    {"unusable", {0}, {63411}, 1},
    {"inserted at the second prompt", {1, 1, 3}, {64400, 64400}, 0},
    {"operator stops", {1}, {64400}, 1, app::kRefused},
    {"prompt cannot be shown", {1}, {64400}, 1, 0},
    {"answer without a meaning", {42, 3}, {}, 0},
};

TEST(SourceDrive, IsAskedUntilItDecides) {
  for (const Source& source : kSources) {
    SCOPED_TRACE(source.name);
    JobStation station;
    station.application.state.SelectedFolder = "E:\\set\\";
    station.application.state.MediaAppCommand = "media.exe";
    Statuses('E', source.statuses)(station.host);
    for (const std::int32_t id : source.messages) station.host.person.ExpectMessage(id, source.answer);
    EXPECT_EQ(media::CheckSourceDrive(station.application), source.result);
    EXPECT_EQ(station.host.Told().mediaCommands, Names(source.statuses.size(), "media.exe"));
  }
}

TEST_F(JobTest, CapacityTextNamesNeedAndFreeSpace) {
  host.disk.FindDrive("D:")->capacity = std::uint64_t{10240} * 1024 * 1024;
  const struct {
    std::uint32_t needed;
    const char* folder;
    std::int32_t status;
    const char* text;
    app::ResultCode result;
  } spaces[] = {
      {1'572'864, "D:\\", 3, "1.50MB / 10,240.00MB", 0}, {0, "D:\\x\\", 2, "0.00MB / 10,240.00MB", 0},
      {1'572'864, "D:\\", 0, "1.50MB / -MB", -1},        {1'572'864, "D:\\", -1, "1.50MB / -MB", -1},
      {4'294'967'295, "R:\\", 1, "4,096.00MB / -MB", 0}, {1, "\\", 3, "0.00MB / -MB", -1},
  };
  for (const auto& space : spaces) {
    application.state.BackupSize = space.needed;
    application.state.SelectedFolder = space.folder;
    host.Told().mediaStatuses[space.folder[0]] = {space.status};
    std::string text = "old";
    EXPECT_EQ(media::GetCapacityText(application, text), space.result) << space.text;
    EXPECT_EQ(text, space.text);
  }
}

}  // namespace
