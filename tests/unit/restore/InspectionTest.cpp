// Which backup sets this system accepts, and what the restore dialog offers of them.
#include "restore/BackupSet.h"
#include "unit/Session.h"
#include "unit/Station.h"

namespace {

std::string Info(const std::string& appType, const std::string& appVersion, const std::string& date) {
  return Lines({"[Info]", "AppVersion=" + appVersion, "Date=" + date, "AppType=" + appType});
}

std::string Version(const std::string& version) {
  return Info("Tarsus", version, "today");
}

struct Set {
  const char* name;
  std::string descriptor;
  std::int32_t message;
  std::string systemVersion = "3.00";
};

const Set kSets[] = {
    {"as this system writes it", Lines(DescriptorLines({"CABFile=MenuData.cab;UserData.cab;"})), 0},
    {"empty file", "", 60427},
    {"no type", Lines({"AppVersion=3.00", "Date=today"}), 60427},
    {"no version", Lines({"AppType=Tarsus", "Date=today"}), 60427},
    {"no date", Lines({"AppType=Tarsus", "AppVersion=3.00"}), 60427},
    {"date of blanks", Info("Tarsus", "3.00", "   "), 60427},
    {"type in other case", Info("TARSUS", "3.00", "today"), 60429},
    {"type with ending", Info("Tarsus.exe", "3.00", "today"), 60429},
    {"other type before empty version", Info("Farsus", "", ""), 60429},
    {"other version before empty date", Info("Tarsus", "4.00", ""), 60430},
    {"older minor version", Version("3.00"), 0, "3.10"},
    {"newer minor version", Version("3.10"), 0},
    {"longer version", Version("3.1.2.77"), 0},
    {"older major version", Version("2.50"), 60430},
    {"major version as number alike", Version("03.00"), 60430},
    {"major version that begins alike", Version("30.0"), 60430},
    {"set version without dot", Version("3"), 60430},
    {"system version without dot", Version("3.00"), 60430, "3"},
    {"stranger's keys and sections",
     "; by hand\r\n[Extra]\r\nUpDate=never\r\nMyAppType=X\r\n[Info]\r\nNote=AppType=Y\r\nAppType=Tarsus\r\n\r\n"
     "AppVersion=3.00\r\n[More]\r\nDate=today\r\n",
     0},
    {"LF line ends", Lines(DescriptorLines(), "\n"), 0},
    {"no last line end", "AppType=Tarsus\r\nAppVersion=3.00\r\nDate=today", 0},
    {"blanks around the values", "AppType=  Tarsus \r\nAppVersion= 3.00\r\nDate= today \r\n", 0},
    {"first of two values", Version("3.00") + "AppType=Farsus\r\nAppVersion=9.0\r\n", 0},
};

TEST(BackupSetInspection, AcceptsWhatThisSystemMayRestore) {
  for (const Set& set : kSets) {
    SCOPED_TRACE(set.name);
    JobStation station;
    station.host.disk.Write("D:\\Set\\BackupInfo.ini", set.descriptor);
    station.application.state.SelectedFolder = kSetFolder;
    station.application.state.SoftwareVersion = set.systemVersion;
    restore::BackupSet found;
    EXPECT_EQ(restore::InspectBackupSet(station.application, found), set.message);
  }
}

// The selection dialog stays open, for another folder.
TEST(BackupSetInspection, RefusalIsShownAndNoDialogOpens) {
  Session session(File("D:\\Farsus\\BackupInfo.ini", Info("Farsus", "3.00", "today")));
  session.disk.Write("D:\\Set\\BackupInfo.ini", Lines(DescriptorLines()));
  session.BeginRestore("D:\\");
  session.See({60426});
  session.AcceptFolder("D:\\Farsus");
  session.See({60429});
  session.AcceptFolder(kSetFolder);
  session.Cancel<frmRestore>();
  session.LeaveRestoreAfter({});
  EXPECT_TRUE(session.processes.started.empty());
  EXPECT_TRUE(session.components.Logged("Cancel Restore"));
}

const Paths kAllVersions = {"PatientData=V2.1",     "MenuData=V2.1",  "SystemData=V2.1",    "UserData=V2.1",
                            "ExplanationData=V2.1", "IPCounter=V2.1", "ReportSetData=V2.1", "ReportData=V2.1"};

struct Offers {
  const char* name;
  Paths versions;      ///< of the set
  std::string dialog;  ///< "x" ticked, "0" not in the set, "v" other version, "." hidden
  const char* user = fakes::kServiceUser;
  Paths systemVersions = kAllVersions;
};

const Offers kOffers[] = {
    {"everything, privileged", kAllVersions, "xxxxxxxx"},
    {"everything, restore right", kAllVersions, "xxxxxxx.", fakes::kRestoreUser},
    {"everything, both rights", kAllVersions, "xxxxxxx.", fakes::kBothUser},
    {"nothing", {}, "00000000"},
    {"other versions", {"PatientData=V2.10", "MenuData=v2.1", "SystemData=V2.1", "IPCounter=V2"}, "vvx0000v"},
    {"the counter alone, without the right", {"IPCounter=V2.1"}, "0000000.", fakes::kRestoreUser},
    {"the report set is not the report", {"ReportSetData=V2.1"}, "00000x00"},
    {"unknown to this system", {"MenuData=V2.1", "UserData=V2.1"}, "0x0v0000", fakes::kServiceUser, {"MenuData=V2.1"}},
    {"empty values", {"UserData=", "ReportData=  ", "MenuData=V2.1"}, "0x000000"},
};

std::string Shown(frmRestore& form) {
  const std::array<forms::Label*, restore::kCategories> notes = {
      &form.LblPatient,     &form.LblMenu,      &form.LblSystem, &form.LblUser,
      &form.LblExplanation, &form.LblReportSet, &form.LblReport, &form.lblIPCounter};
  std::string shown;
  for (std::size_t i = 0; i < notes.size(); ++i) {
    const forms::CheckBox& box = form.*kBoxes[i];
    EXPECT_EQ(box.Visible(), notes[i]->Visible());
    EXPECT_TRUE(box.Enabled() == box.Value() || !box.Visible()) << "what is offered is ticked";
    EXPECT_TRUE(box.Visible() || !box.Value()) << "what is not offered is not restored";
    const std::map<std::string, char> offers = {
        {"", box.Value() ? 'x' : '?'}, {"note 66080", '0'}, {"note 66081", 'v'}};
    shown += box.Visible() ? offers.at(notes[i]->Caption()) : '.';
  }
  return shown;
}

TEST(RestoreDialog, OffersWhatFitsThisSystem) {
  for (const Offers& offers : kOffers) {
    SCOPED_TRACE(offers.name);
    Session session(SystemFile("BackupVersion.ini", offers.systemVersions));
    session.disk.Write("D:\\Set\\BackupInfo.ini", Lines(DescriptorLines(offers.versions)));
    session.BeginRestore(kSetFolder, offers.user);
    session.At<frmRestore>([&](frmRestore& form) {
      EXPECT_EQ(Shown(form), offers.dialog);
      EXPECT_EQ(form.cmdStart.Enabled(), offers.dialog.find('x') != std::string::npos);
      EXPECT_EQ(form.lblAppVersionValue.Caption(), "3.00");
      EXPECT_EQ(form.lblBackupDateValue.Caption(), "2012/03/15 09:30:12");
      fakes::Press(form.cmdCancel);
    });
    session.LeaveRestoreAfter({});
  }
}

TEST(RestoreDialog, HasTheHostsCaptions) {
  Session session(File("D:\\Set\\BackupInfo.ini", Lines(DescriptorLines({"MenuData=V2.1"}))));
  session.BeginRestore();
  session.At<frmRestore>([](frmRestore& form) {
    std::string captions;
    for (const forms::Control* control : form.Controls()) {
      if (control->Caption().starts_with("text 66")) captions += control->Caption().substr(7) + " ";
    }
    EXPECT_EQ(captions, "061 062 063 051 052 058 053 054 055 056 060 059 057 004 002 ");
    fakes::Press(form.cmdCancel);
  });
  session.LeaveRestoreAfter({});
}

TEST(RestoreDialog, StartNeedsATick) {
  Session session(File("D:\\Set\\BackupInfo.ini", Lines(DescriptorLines({"MenuData=V2.1", "IPCounter=V2.1"}))));
  session.BeginRestore();
  session.At<frmRestore>([](frmRestore& form) {
    fakes::Tick(form.chkMenuData, false);
    EXPECT_TRUE(form.cmdStart.Enabled());
    fakes::Tick(form.chkIPCounter, false);
    EXPECT_FALSE(form.cmdStart.Enabled());
    fakes::Tick(form.chkMenuData);
    EXPECT_TRUE(form.cmdStart.Enabled());
    fakes::Press(form.cmdCancel);
  });
  session.LeaveRestoreAfter({});
}

}  // namespace
