// The descriptor, byte for byte.
#include "backup/Descriptor.h"

#include "unit/Station.h"

namespace {

using base::Result;

constexpr const char* kFile = "C:\\Work\\BackupInfo.ini";
const std::string kHead = "[Info]\r\nAppVersion=3.00\r\nDate=2012/03/15 09:30:12\r\nAppType=Tarsus\r\n";

TEST_F(JobTest, DescriptorOfADiskReplacesTheOneBeforeAndCountsDisks) {
  application.state.Present.IPCounter = true;
  application.state.JoinedArchiveSize = 2'800'000;
  for (const auto& [archive, lines] :
       {std::pair("FDDivide.cab", "FDCount=3\r\nFDNumber=2\r\n"), std::pair("Other.cab", "")}) {
    host.disk.Remove("C:\\Work\\CABFILE");
    host.disk.Write(std::string("C:\\Work\\CABFILE\\") + archive, "x");
    EXPECT_EQ(backup::WriteDescriptor(application, 2), Result::Done);
    EXPECT_EQ(host.disk.Read(kFile),
              kHead + "CABFile=" + archive + ";\r\n" + lines + "\r\n[VersionInfo]\r\nIPCounter=V2.1\r\n\r\n");
  }
}

TEST_F(JobTest, DescriptorIsExtendedOnOneMedium) {
  host.disk.Write(kFile, "left");
  EXPECT_EQ(backup::WriteDescriptor(application, 0), Result::Done);
  EXPECT_EQ(host.disk.Read(kFile), "left" + kHead + "CABFile=\r\n\r\n[VersionInfo]\r\n\r\n");
}

TEST_F(JobTest, DescriptorNeedsAVersionOfEachCategory) {
  host.WriteLines("C:\\Tarsus\\System\\BackupVersion.ini", {"PatientData=V9", "MenuData ="});
  application.state.Present.PatientData = true;
  application.state.Present.MenuData = true;
  EXPECT_EQ(backup::WriteDescriptor(application, 0), Result::Failed);
  EXPECT_TRUE(host.disk.Read(kFile).ends_with("PatientData=V9\r\n")) << "left as far as it was written";
}

TEST_F(JobTest, HostApplicationTypeHasNoExtension) {
  for (const char* name : {"Tarsus.exe", "Tarsus.EXE", "Tarsus"}) {
    application.appearance.ApplicationName = name;
    EXPECT_EQ(backup::HostApplicationType(application), "Tarsus");
  }
}

}  // namespace
