// Which backup sets this system accepts, and how the values of its INI files are found.
#include "backupset/Descriptor.h"

#include "unit/Session.h"
#include "unit/Station.h"

namespace {

using enum base::MessageId;

std::string Version(const std::string& version) {
  return Lines({"[Info]", "AppVersion=" + version, "Date=today", "AppType=Tarsus"});
}

struct Set {
  const char* name;
  std::string descriptor;
  base::MessageId message;
  std::string systemVersion = "3.00";
};

// Other descriptors are compared with a plainer reader in tests/fuzz.
const Set kSets[] = {
    {"no descriptor", "", NoDescriptor},
    {"other minor version", Version("3.1.2.77"), None, "3.10"},
    {"no version has a dot", Version("3"), OtherVersion, "3"},
};

TEST(BackupSetInspection, AcceptsWhatThisSystemMayRestore) {
  for (const Set& set : kSets) {
    SCOPED_TRACE(set.name);
    JobStation station;
    if (set.message != NoDescriptor) station.host.disk.Write("D:\\Set\\BackupInfo.ini", set.descriptor);
    backupset::Inspection found;
    const base::Outcome inspected = backupset::InspectBackupSet(
        station.tools, {set.systemVersion, "Tarsus", fakes::kSystemFolder}, kSetFolder, found);
    EXPECT_EQ(inspected, set.message == None ? base::Result::Done : base::Result::Failed);
    EXPECT_EQ(inspected.PendingMessageId, set.message);
    EXPECT_EQ(inspected.cause.find("D:\\Set\\BackupInfo.ini") == std::string::npos, set.message == None);
  }
}

// Its first lines alone are what a power cut may leave: the archives are named, and some versions are not there.
TEST(BackupSetInspection, AnArchiveWithoutItsVersionIsHalfADescriptor) {
  for (const backupset::Category category : backupset::kRestoreOrder) {
    const backupset::CategoryRow& row = backupset::RowOf(category);
    SCOPED_TRACE(row.versionKey);
    JobStation station;
    const auto inspect = [&](const Paths& more) {
      Paths lines = DescriptorLines({"CABFile=Other.cab;" + std::string(row.archive) + ".cab;"});
      lines.insert(lines.end(), more.begin(), more.end());
      station.host.disk.Write("D:\\Set\\BackupInfo.ini", Lines(lines));
      backupset::Inspection found;
      return backupset::InspectBackupSet(station.tools, {"3.00", "Tarsus", fakes::kSystemFolder}, kSetFolder, found);
    };
    EXPECT_TRUE(inspect({"[VersionInfo]", std::string(row.versionKey) + "=V1"}).IsDone());
    for (const Paths& cut : {Paths{}, Paths{std::string(row.versionKey) + "="}}) {
      const base::Outcome inspected = inspect(cut);
      EXPECT_EQ(inspected.PendingMessageId, DescriptorIncomplete);
      EXPECT_PRED_FORMAT2(testing::IsSubstring, std::string("no ") + row.versionKey, inspected.cause);
    }
  }
}

// Where the deletion is refused or gets lost, nothing is left in it that could be taken for a set.
TEST_F(JobTest, ARetractedDescriptorIsEmptiedBeforeItIsDeleted) {
  for (const auto& [fault, gone, empty] :
       {std::tuple{"", true, true}, {"CreateText", true, false}, {"Flush", true, true}, {"RemoveFile", false, true}}) {
    SCOPED_TRACE(fault);
    host.calls.Reset();
    host.disk.Write("D:\\BackupInfo.ini", Lines(DescriptorLines()));
    if (*fault != '\0') host.calls.FailFrom("FileSystem", fault);
    EXPECT_EQ(backupset::RetractDescriptor(host.files, "D:\\").IsDone(), gone);
    EXPECT_EQ(host.disk.IsFile("D:\\BackupInfo.ini"), !gone);
    EXPECT_EQ(host.disk.Read("D:\\BackupInfo.ini"), "");
    EXPECT_EQ(host.calls.CountOf("FileSystem", "Flush"), empty ? 1u : 0u);
  }
}

struct Writing {
  backupset::Categories categories;  ///< none: a maintenance log, which nobody restores
  backupset::HostIdentity host;
  std::string cause;  ///< of the failure
};

const Writing kWritings[] = {
    {{backupset::Category::MenuData}, {"3.00", "Tarsus", fakes::kSystemFolder}, ""},
    {{backupset::Category::MenuData}, {"3", "Tarsus", fakes::kSystemFolder}, "version \"3\""},
    {{backupset::Category::MenuData}, {"", "Tarsus", fakes::kSystemFolder}, "version \"\""},
    {{backupset::Category::MenuData}, {"3.00", "", fakes::kSystemFolder}, "application"},
    {{backupset::Category::MenuData}, {"3.00", "Tarsus", "C:\\Nowhere\\"}, "no version of MenuData"},
    {{}, {"", "", "C:\\Nowhere\\"}, ""}};

// A set is made only where a restore will accept it.
TEST(Descriptor, DemandsOfTheHostWhatARestoreWillDemand) {
  for (const Writing& each : kWritings) {
    SCOPED_TRACE(each.cause);
    JobStation station;
    backupset::BackupSet& set = station.packed.set;
    set.categories = each.categories;
    set.archives = {{"MenuData.cab", 1, 1}};
    const base::Outcome written =
        backupset::WriteDescriptor(station.tools, station.host.clock, each.host, station.packed.workFolder, set);
    EXPECT_EQ(written.IsDone(), each.cause.empty());
    EXPECT_PRED_FORMAT2(testing::IsSubstring, each.cause, written.cause);
    EXPECT_EQ(station.WasWarnedOf("Descriptor without a maker: "),
              each.host.softwareVersion.empty() && written.IsDone());
    if (!written.IsDone() || each.categories.empty()) continue;
    backupset::Inspection found;
    EXPECT_TRUE(backupset::InspectBackupSet(station.tools, each.host, JobStation::kStaging, found).IsDone());
  }
}

TEST_F(JobTest, HostApplicationTypeHasNoExtension) {
  for (const char* name : {"Tarsus.exe", "Tarsus.EXE", "Tarsus"}) {
    application.appearance.ApplicationName = name;
    EXPECT_EQ(backupset::IdentityOf(application.state, application.appearance).applicationType, "Tarsus");
  }
}

TEST_F(JobTest, IniValues) {
  host.WriteLines("C:\\x.ini", {"[One]", "Blank =1", "  Indented=2", "Key=  a = b  ", "key=lower", "Tab=\tx", "[Two]",
                                "Key=second", ";Comment=no", "Disk12=piece", "Ümlaut=grün", "Empty="});
  const std::pair<const char*, const char*> rows[] = {
      {"Key", "a = b"}, {" Key ", "a = b"}, {"Blank", ""},      {"Indented", ""},    {"key", "lower"},
      {"Tab", "\tx"},   {"KEY", ""},        {"Comment", ""},    {"Disk##", "piece"}, {"D*", "piece"},
      {"Disk", ""},     {"[K]ey", "a = b"}, {"Ümlaut", "grün"}, {"Empty", ""},       {"[", ""},
  };
  for (const auto& [key, value] : rows) EXPECT_EQ(backupset::ReadIniValue(tools, " C: ", "x.ini", key), value) << key;
  EXPECT_EQ(backupset::ReadIniValue(tools, "C:\\", "missing.ini", "Key"), "");
  host.messageLoop.yields = 0;
  backupset::ReadIniValue(tools, "C:\\", "x.ini", "Key");
  EXPECT_EQ(host.messageLoop.yields, 4) << "events are served after each line, up to the one that fits";
}

}  // namespace
