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
