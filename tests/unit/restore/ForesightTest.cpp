// What a restore looks at before it replaces anything: the set once more, its archives to their ends, and the room.
#include "restore/Foresight.h"

#include "unit/Session.h"
#include "unit/Station.h"

namespace {

using enum base::MessageId;

using backupset::Category;

/// In their order; the third of them is spoilt.
const Boxes kThree = {Box::Menu, Box::User, Box::Report};
constexpr const char* kThird = "D:\\Set\\ReportData.cab";

/// Starts a restore of the set after `event` has happened behind the dialog's back. Nothing of the host is touched, and
/// no program is so much as started.
std::string LogOfARestoreThatDoesNotBegin(const Arrangement& event, base::MessageId message, const Boxes& boxes) {
  Session session;
  session.BackUpEverything();
  session.BeginRestore();
  session.At<frmRestore>([&](frmRestore& form) {
    for (const Box box : kAllBoxes)
      if (!boxes.contains(box)) fakes::Tick(BoxOf(form, box), false);
    event(session);
    fakes::Press(form.cmdStart);
  });
  session.LeaveRestoreAfter({message});
  EXPECT_EQ(session.ChangedHostFiles(), Paths());
  EXPECT_TRUE(session.processes.started.empty());
  return session.disk.Read(fakes::kLogFile);
}

Arrangement Replaced(const std::string& path, const std::string& from, const std::string& to) {
  return [=](fakes::FakeHost& host) {
    std::string bytes = host.disk.Read(path);
    const std::size_t at = bytes.find(from);
    ASSERT_NE(at, std::string::npos);
    host.disk.Write(path, bytes.replace(at, from.size(), to));
  };
}

struct Exchange {
  const char* name;
  Arrangement event;
  std::string logged;
  base::MessageId message = RestoreFailed;
};

const std::string kDescriptor = "D:\\Set\\BackupInfo.ini";
const std::string kOtherSet = "holds another set than the one that was shown";

const Exchange kExchanges[] = {
    {"made at another time", Replaced(kDescriptor, "09:30:12", "09:30:13"), kOtherSet},
    {"of another minor version", Replaced(kDescriptor, "AppVersion=3.00", "AppVersion=3.01"), kOtherSet},
    {"of another version of data nobody has ticked", Replaced(kDescriptor, "MenuData=V2.1", "MenuData=V2.2"),
     kOtherSet},
    {"of another application", Replaced(kDescriptor, "AppType=Tarsus", "AppType=Tapir"), "made by Tapir",
     OtherApplication},
    {"without a descriptor", Gone(kDescriptor), "BackupInfo.ini: not there", NoDescriptor},
    {"taken out", NoMedium("D:"), "BackupInfo.ini: not there", NoDescriptor},
};

// The medium can be changed for as long as the dialog is shown.
TEST(Foresight, AnExchangedSetIsNotRestored) {
  for (const Exchange& exchange : kExchanges) {
    SCOPED_TRACE(exchange.name);
    const std::string log = LogOfARestoreThatDoesNotBegin(exchange.event, exchange.message, {Box::Report});
    EXPECT_PRED_FORMAT2(testing::IsSubstring, exchange.logged, log);
  }
}

struct Damage {
  const char* name;
  Arrangement event;
  base::MessageId message = RestoreFailed;
};

Arrangement Cut(std::size_t taken) {
  return [=](fakes::FakeHost& host) {
    const std::string bytes = host.disk.Read(kThird);
    host.disk.Write(kThird, bytes.substr(0, bytes.size() - taken));
  };
}

const Damage kDamages[] = {
    {"one byte of the data is another one", Replaced(kThird, "no finding", "no fanding")},
    {"the last byte is gone", Cut(1)},
    {"nothing in it", File(kThird, "")},
    {"another file under its name", File(kThird, std::string(2000, 'x'))},
    {"cannot be read", [](auto& host) { EXPECT_TRUE(host.disk.Hold(kThird)); }},
    {"missing", Gone(kThird), ArchiveNotUnpacked},
};

// The first two would have been put back before the third had its turn.
TEST(Foresight, ADamagedArchiveOfSeveralLeavesTheHostAsItWas) {
  for (const Damage& damage : kDamages) {
    SCOPED_TRACE(damage.name);
    const std::string log = LogOfARestoreThatDoesNotBegin(damage.event, damage.message, kThree);
    const std::size_t told = log.rfind("Message " + fakes::NumberOf(damage.message) + ": ");
    ASSERT_NE(told, std::string::npos) << log;
    EXPECT_NE(log.find(kThird, told), std::string::npos) << log;
  }
}

TEST(Foresight, AnArchiveThatNobodyHasTickedMayBeDamaged) {
  Session session;
  session.BackUpEverything();
  session.BeginRestore();
  File(kThird, "")(session);
  session.StartRestore({Box::Menu, Box::User});
  session.EndAfter({RestoreComplete});
}

TEST(Foresight, ADriveThatWouldFillUpIsSaidBeforehand) {
  const Arrangement large = File(kThird, fakes::MakeCabinet({{"Report\\x", std::string(5000, 'x')}}));
  const std::string log = LogOfARestoreThatDoesNotBegin(Both(large, Room(2000)), RestoreFailed, kThree);
  EXPECT_PRED_FORMAT2(testing::IsSubstring, "drive C has ", log);
}

/// Two archives with what they hold, and items that put one part on drive C, where the work folder is, and one on D.
class RestoreRoom : public JobTest {
 public:
  RestoreRoom() {
    static_cast<void>(LoadSection("MENU_RESTORE", {"CommonFile=D:\\Config\\menu.ini", "Folder=D:\\Menu"}));
    static_cast<void>(LoadSection("USER_RESTORE", {"Folder=User"}));
    for (const auto& [path, size] : {std::pair{"D:\\Menu\\Sub\\a.dat", 700}, {"C:\\Tarsus\\User\\users.dat", 5}})
      EXPECT_TRUE(host.disk.Write(path, std::string(static_cast<std::size_t>(size), 'o')));
  }

  /// What has to be free, and must be enough then: one byte less fails, and says so.
  void ExpectNeeds(char drive, std::uint64_t bytes, const std::vector<restore::ArchiveAhead>& archives,
                   bool copied = true) {
    SCOPED_TRACE(drive);
    fakes::Drive& tight = *host.disk.FindDrive({drive, ':'});
    const std::uint64_t used = tight.capacity - static_cast<std::uint64_t>(host.disk.FreeSpace({drive, ':'}));
    const restore::Putting putting{tools, application.paths, definitions, packed.workFolder,
                                   application.state.ApplicationRootFolder};
    tight.capacity = used + bytes;
    const base::Outcome enough = restore::CheckRoom(putting, host.drives, archives, copied);
    EXPECT_TRUE(enough.IsDone()) << enough.cause;
    if (bytes > 0) tight.capacity = used + bytes - 1;
    const base::Outcome refused = restore::CheckRoom(putting, host.drives, archives, copied);
    EXPECT_EQ(refused, bytes > 0 ? base::Result::Failed : base::Result::Done);
    EXPECT_EQ(refused.cause, bytes > 0 ? "drive " + std::string(1, drive) + " has " + std::to_string(bytes - 1) +
                                             " bytes free, needed are " + std::to_string(bytes)
                                       : "");
    tight.capacity = used + 1'000'000;
  }

  const restore::ArchiveAhead menu{
      Category::MenuData,
      "D:\\Set\\MenuData.cab",
      300,
      {{"menu.ini", 40}, {"MENU\\Sub\\a.dat", 1000}, {"Menu\\b.dat", 200}, {"Menus\\c.dat", 90}, {"other", 9}}};
  const restore::ArchiveAhead user{Category::UserData, "D:\\Set\\UserData.cab", 100, {{"User\\users.dat", 2000}}};
};

// One after the other they are copied, unpacked and deleted; the largest decides. What no item names goes no further.
TEST_F(RestoreRoom, IsCountedWhereTheDataGo) {
  ExpectNeeds('C', 1339 + 300, {menu});
  ExpectNeeds('C', 1339, {menu}, false);
  ExpectNeeds('D', 40 + 1000 + 200 - 700, {menu});
  ExpectNeeds('C', (2000 + 100) + 2000 - 5, {menu, user});
}

// A pattern takes files in folders below as well.
TEST_F(RestoreRoom, IsCountedForPatterns) {
  static_cast<void>(LoadSection("MENU_RESTORE", {"CommonFile=D:\\Config\\*.dat"}));
  ExpectNeeds('D', 1000 + 200 + 90, {menu});
}

// A file that is larger than what replaces it makes no room for others that it has not.
TEST_F(RestoreRoom, IsLessWhereFilesAreReplaced) {
  host.disk.Write("D:\\Config\\menu.ini", std::string(5000, 'o'));
  host.disk.Write("D:\\Menu\\Sub\\a.dat", std::string(1000, 'o'));
  ExpectNeeds('D', 0, {menu});
  host.disk.Remove("D:\\Config\\menu.ini");
  ExpectNeeds('D', 240, {menu});
}

TEST_F(RestoreRoom, OfADriveThatIsNotKnownIsLeftToTheCopies) {
  host.disk.FindDrive("D:")->ready = false;
  ExpectNeeds('C', 1339 + 300, {menu});
}

// The disks of a set may be anybody's, and the interpreter takes what has a tool's name in its current folder.
TEST(JoinedArchive, BringsNothingInButArchivesOfASet) {
  const std::string menu = fakes::MakeCabinet({{"Menu\\menu.ini", "restored"}});
  const std::string joined = fakes::MakeCabinet({{"MenuData.cab.tmp", menu},
                                                 {"CMD.exe.tmp", "planted"},
                                                 {"xcopy.exe.tmp", "planted"},
                                                 {"cabarc.exe.tmp", "planted"},
                                                 {"FDDivide.cab.tmp", "planted"},
                                                 {"BackupInfo.ini.tmp", "planted"}});
  Session session;
  session.InsertDisk({{"BackupInfo.ini",
                       Lines(DescriptorLines({"CABFile=FDDivide.cab;", "FDCount=1", "FDNumber=1", "MenuData=V2.1"}))},
                      {"FDDivide001", joined}});
  bool unpacks = false;
  Before("X MenuData.cab", [&](fakes::FakeHost& host) {
    unpacks = true;
    Names there;
    for (const auto& entry : host.disk.Children(kStagingFolder)) there.push_back(entry->name);
    for (const std::string& name : there) EXPECT_EQ(name.find(".exe"), std::string::npos) << name;
    EXPECT_NE(host.disk.Read(kStagingFolder + std::string("\\BackupInfo.ini")), "planted");
    EXPECT_EQ(host.disk.Read(kStagingFolder + std::string("\\FDDivide.cab")), joined);
  })(session);
  session.BeginRestore("A:\\");
  session.StartRestore({Box::Menu});
  session.EndAfter({RestoreComplete});
  EXPECT_TRUE(unpacks);
  EXPECT_EQ(session.disk.Read("C:\\Tarsus\\Menu\\menu.ini"), "restored");
}

}  // namespace
