// The descriptor, byte for byte.
#include "backup/Descriptor.h"

#include "unit/Station.h"

namespace {

constexpr const char* kFile = "C:\\Work\\BackupInfo.ini";
const std::string kHead = "[Info]\r\nAppVersion=3.00\r\nDate=2012/03/15 09:30:12\r\nAppType=Tarsus\r\n";

struct SplitSet {
  std::uint32_t size;
  std::int16_t disk;
  const char* archive;
  const char* lines;
};

const SplitSet kSplitSets[] = {
    {1'399'999, 1, "FDDivide.cab", "FDCount=1\r\nFDNumber=1\r\n"},
    {1'400'000, 2, "FDDivide.cab", "FDCount=2\r\nFDNumber=2\r\n"},
    {2'800'000, 3, "FDDivide.cab", "FDCount=3\r\nFDNumber=3\r\n"},
    {2'800'000, 1, "Other.cab", ""},
};

TEST_F(JobTest, DescriptorOfADiskReplacesTheOneBeforeAndCountsDisks) {
  application.state.Present.IPCounter = true;
  for (const SplitSet& set : kSplitSets) {
    SCOPED_TRACE(set.size);
    host.disk.Remove("C:\\Work\\CABFILE");
    host.disk.Write(std::string("C:\\Work\\CABFILE\\") + set.archive, "x");
    application.state.JoinedArchiveSize = set.size;
    EXPECT_EQ(backup::WriteDescriptor(application, set.disk), app::kDone);
    EXPECT_EQ(host.disk.Read(kFile),
              kHead + "CABFile=" + set.archive + ";\r\n" + set.lines + "\r\n[VersionInfo]\r\nIPCounter=V2.1\r\n\r\n");
  }
}

TEST_F(JobTest, DescriptorIsExtendedOnOneMedium) {
  host.disk.Write(kFile, "left");
  EXPECT_EQ(backup::WriteDescriptor(application, 0), app::kDone);
  EXPECT_EQ(host.disk.Read(kFile), "left" + kHead + "CABFile=\r\n\r\n[VersionInfo]\r\n\r\n");
}

TEST_F(JobTest, DescriptorNeedsAVersionOfEachCategory) {
  host.WriteLines("C:\\Tarsus\\System\\BackupVersion.ini", {"PatientData=V9", "MenuData ="});
  application.state.Present.PatientData = true;
  application.state.Present.MenuData = true;
  EXPECT_EQ(backup::WriteDescriptor(application, 0), app::kFailed);
  EXPECT_TRUE(host.disk.Read(kFile).ends_with("PatientData=V9\r\n")) << "left as far as it was written";
}

TEST_F(JobTest, HostApplicationTypeHasNoExtension) {
  for (const char* name : {"Tarsus.exe", "Tarsus.EXE", "Tarsus"}) {
    application.appearance.ApplicationName = name;
    EXPECT_EQ(backup::HostApplicationType(application), "Tarsus");
  }
}

}  // namespace
