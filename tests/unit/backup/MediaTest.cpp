// The media drives of the host, and what the selection dialog says of them.
#include "media/Capacity.h"
#include "media/DriveStatus.h"
#include "unit/Station.h"

namespace {

using base::Result;
using enum base::MessageId;
using enum host::DriveStatus;

struct Source {
  const char* name;
  std::deque<host::DriveStatus> statuses;
  Ids messages = {};
  Result result = Result::Done;
  host::Answer answer = host::Answer::Consented;
};

const Source kSources[] = {
    {"ready", {Ready}},
    {"readable", {Readable}},
    {"error", {Error}, {SourceDriveError}, Result::Stopped},
    {"unusable", {Unusable}, {SourceDriveUnusable}, Result::Stopped},
    {"inserted at the second prompt", {NoMedium, NoMedium, Ready}, {AskInsertSourceMedium, AskInsertSourceMedium}},
    {"operator stops", {NoMedium}, {AskInsertSourceMedium}, Result::Stopped, host::Answer::Refused},
    {"prompt cannot be shown", {NoMedium}, {AskInsertSourceMedium}, Result::Stopped, host::Answer::NotShown},
    {"answer without a meaning", {kMeaningless, Ready}},
};

TEST(SourceDrive, IsAskedUntilItDecides) {
  for (const Source& source : kSources) {
    SCOPED_TRACE(source.name);
    JobStation station;
    station.application.state.SelectedFolder = "E:\\set\\";
    station.application.state.MediaAppCommand = "media.exe";
    Statuses('E', source.statuses)(station.host);
    for (const base::MessageId id : source.messages) station.host.person.ExpectMessage(id, source.answer);
    EXPECT_EQ(media::CheckSourceDrive(station.application), source.result);
    EXPECT_EQ(station.host.Told().mediaCommands, Names(source.statuses.size(), "media.exe"));
  }
}

TEST_F(JobTest, CapacityTextNamesNeedAndFreeSpace) {
  host.disk.FindDrive("D:")->capacity = std::uint64_t{10240} * 1024 * 1024;
  const struct {
    std::uint32_t needed;
    const char* folder;
    host::DriveStatus status;
    const char* text;
    Result result;
  } spaces[] = {
      {1'572'864, "D:\\", Ready, "1.50MB / 10,240.00MB", Result::Done},
      {0, "D:\\x\\", Readable, "0.00MB / 10,240.00MB", Result::Done},
      {1'572'864, "D:\\", Unusable, "1.50MB / -MB", Result::Failed},
      {1'572'864, "D:\\", Error, "1.50MB / -MB", Result::Failed},
      {4'294'967'295, "R:\\", NoMedium, "4,096.00MB / -MB", Result::Done},
      {1, "\\", Ready, "0.00MB / -MB", Result::Failed},
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
