// The list of past jobs: its lines, and what befalls its file.
#include "unit/Station.h"

namespace {

using base::Result;
using enum base::MessageId;

constexpr const char* kList = "C:\\Tarsus\\Log\\BackupUtilityJobs.csv";
constexpr const char* kHeading =
    "\xEF\xBB\xBFTime,Kind,Result,Message,User,Folder,Categories,Files,Bytes,Warnings,Seconds\r\n";

app::PastJob Job(const std::string& folder, Result result = Result::Done) {
  app::PastJob job;
  job.ended = {2026, 1, 2, 3, 4, 5};
  job.kind = app::JobKind::Restore;
  job.result = result;
  job.message = RestoreComplete;
  job.user = "U001";
  job.folder = folder;
  job.categories = "PatientData IPCounter";
  job.files = 12;
  job.bytes = 5'000'000'000;
  job.warnings = 3;
  job.seconds = 61;
  return job;
}

Names FoldersOf(const std::vector<app::PastJob>& jobs) {
  Names folders;
  for (const app::PastJob& job : jobs) folders.push_back(job.folder);
  return folders;
}

TEST(PastJobLine, HasElevenColumnsAndIsReadAsItWasWritten) {
  EXPECT_EQ(app::FormatPastJob(Job("E:\\Set\\")),
            "2026-01-02 03:04:05,Restore,done,65400,U001,E:\\Set\\,PatientData IPCounter,12,5000000000,3,61");
  for (const char* folder : {"", "E:\\a, b\\", "\"", "E:\\\"x\",\\",
                             "E:\\Gr\xC3\xB6\xC3\x9F"
                             "e\\",
                             ",,"}) {
    for (const Result result : {Result::Done, Result::Stopped, Result::Failed}) {
      const app::PastJob job = Job(folder, result);
      const auto read = app::ParsePastJobs(app::FormatPastJob(job) + "\r\n");
      ASSERT_EQ(read.size(), 1u) << folder;
      EXPECT_EQ(app::FormatPastJob(read.front()), app::FormatPastJob(job));
      EXPECT_EQ(read.front().folder, folder);
    }
  }
  const std::string torn = app::FormatPastJob(Job("E:\\")).substr(0, 40);
  const std::string line = app::FormatPastJob(Job("F:\\"));
  EXPECT_EQ(FoldersOf(app::ParsePastJobs(kHeading + torn + "\r\n" + line + "\r\n" + line)), Names{"F:\\"})
      << "heading, what was cut off, and a last line without its end";
}

class JobListTest : public AppTest {
 protected:
  JobListTest() { application.state.LogFolder = "C:\\Tarsus\\Log"; }
  app::JobList& list = application.pastJobs;
};

TEST_F(JobListTest, IsAppendedToByEverySessionAndHasReachedTheDisk) {
  EXPECT_TRUE(list.Read().empty());
  list.Append(Job("D:\\1\\"));
  app::JobList later(host.files, application.log, application.state.LogFolder);
  later.Append(Job("D:\\2\\"));
  EXPECT_EQ(host.disk.Read(kList),
            kHeading + app::FormatPastJob(Job("D:\\1\\")) + "\r\n" + app::FormatPastJob(Job("D:\\2\\")) + "\r\n");
  EXPECT_EQ(host.calls.CountOf("BinaryWriter", "Close"), 2u) << "closing flushes";
  for (int i = 0; i < 2000; ++i) later.Append(Job("D:\\3\\"));
  EXPECT_LT(list.Read().size(), 1000u) << "the newest ones alone are read";
  EXPECT_EQ(list.Read().back().folder, "D:\\3\\");
}

TEST_F(JobListTest, OutlivesAFullDiskAndAFileInUse) {
  list.Append(Job("D:\\1\\"));
  fakes::Drive& drive = *host.disk.FindDrive("C:");
  const std::uint64_t capacity = std::exchange(drive.capacity, 30);  // for less than a line
  for (const auto& [path, bytes] : host.disk.Tree("C:\\")) drive.capacity += bytes.size();
  list.Append(Job("D:\\2\\"));
  drive.capacity = capacity;
  host.disk.Hold(kList);
  list.Append(Job("D:\\3\\"));
  EXPECT_TRUE(WasWarnedOf("Job not listed: ")) << "it is no Warning: no job is the worse for it";
  EXPECT_EQ(application.log.Warnings(), 0u);
  host.disk.Find(kList)->held = fakes::Held::Not;
  list.Append(Job("D:\\4\\"));
  EXPECT_EQ(FoldersOf(list.Read()), (Names{"D:\\1\\", "D:\\2\\", "D:\\3\\", "D:\\4\\"}));
}

}  // namespace
