// The restore dialog: what it offers of a set.
#include "unit/Session.h"

namespace {

const Paths kAllVersions = {"PatientData=V2.1",     "MenuData=V2.1",  "SystemData=V2.1",    "UserData=V2.1",
                            "ExplanationData=V2.1", "IPCounter=V2.1", "ReportSetData=V2.1", "ReportData=V2.1"};

/// What the dialog shows of the categories; those that are in no list are not in the set.
struct Offer {
  Boxes ticked = {}, otherVersion = {}, hidden = {};
  bool operator==(const Offer&) const = default;
};

struct Offers {
  const char* name;
  Paths versions;  ///< of the set
  Offer offer;
  const char* user = fakes::kServiceUser;
};

const Boxes kCounter = {Box::Counter};
const Boxes kAllButCounter = {Box::Patient,     Box::Menu,      Box::System, Box::User,
                              Box::Explanation, Box::ReportSet, Box::Report};

const Offers kOffers[] = {
    {"everything, privileged", kAllVersions, {.ticked = kAllBoxes}},
    {"everything, restore right", kAllVersions, {.ticked = kAllButCounter, .hidden = kCounter}, fakes::kRestoreUser},
    {"everything, both rights", kAllVersions, {.ticked = kAllButCounter, .hidden = kCounter}, fakes::kBothUser},
    {"nothing", {}, {}},
    {"other versions",
     {"PatientData=V2.10", "MenuData=v2.1", "SystemData=V2.1", "IPCounter=V2"},
     {.ticked = {Box::System}, .otherVersion = {Box::Patient, Box::Menu, Box::Counter}}},
    {"the report set is not the report", {"ReportSetData=V2.1"}, {.ticked = {Box::ReportSet}}},
    {"empty values", {"UserData=", "ReportData=  ", "MenuData=V2.1"}, {.ticked = {Box::Menu}}},
};

Offer Shown(frmRestore& form) {
  const forms::Label* const notes[] = {&form.LblPatient,     &form.LblMenu,      &form.LblSystem, &form.LblUser,
                                       &form.LblExplanation, &form.LblReportSet, &form.LblReport, &form.lblIPCounter};
  Offer offer;
  for (const Box which : kAllBoxes) {
    const forms::CheckBox& box = BoxOf(form, which);
    const forms::Label& note = *notes[static_cast<std::size_t>(which)];
    EXPECT_EQ(box.Visible(), note.Visible());
    EXPECT_TRUE(box.Enabled() == box.Value() || !box.Visible()) << "what is offered is ticked";
    EXPECT_TRUE(box.Visible() || !box.Value()) << "what is not offered is not restored";
    if (box.Value()) offer.ticked.insert(which);
    if (!box.Visible()) offer.hidden.insert(which);
    const bool isOther = box.Visible() && note.Caption() == "note 66081";
    if (isOther) offer.otherVersion.insert(which);
    EXPECT_TRUE(!box.Visible() || note.Caption() == (box.Value() ? "" : isOther ? "note 66081" : "note 66080"));
  }
  return offer;
}

TEST(RestoreDialog, OffersWhatFitsThisSystem) {
  for (const Offers& offers : kOffers) {
    SCOPED_TRACE(offers.name);
    Session session(SystemFile("BackupVersion.ini", kAllVersions));
    session.disk.Write("D:\\Set\\BackupInfo.ini", Lines(DescriptorLines(offers.versions)));
    session.BeginRestore(kSetFolder, offers.user);
    session.At<frmRestore>([&](frmRestore& form) {
      EXPECT_TRUE(Shown(form) == offers.offer);
      EXPECT_EQ(form.cmdStart.Enabled(), !offers.offer.ticked.empty());
      EXPECT_EQ(form.lblAppVersionValue.Caption(), "3.00");
      EXPECT_EQ(form.lblBackupDateValue.Caption(), "2012/03/15 09:30:12");
      fakes::Press(form.cmdCancel);
    });
    session.LeaveRestoreAfter({});
    EXPECT_TRUE(session.components.Logged("Cancel Restore"));
  }
}

// Beside what is offered stands its size; a date in another form stands in the local one, too.
TEST(RestoreDialog, ShowsSizesAndTheLocalDate) {
  Session session(SystemFile("BackupVersion.ini", kAllVersions));
  session.disk.Write("D:\\Set\\BackupInfo.ini",
                     Lines({"[Info]", "AppVersion=3.00", "Date=3/14/2012 8:00:00 AM", "AppType=Tarsus", "MenuData=V2.1",
                            "UserData=V2.1", "ReportData=other"}));
  for (const char* archive : {"MenuData", "ReportData"})
    session.disk.Write(std::string("D:\\Set\\") + archive + ".cab", std::string(1536 * 1024, 'x'));
  session.BeginRestore();
  session.At<frmRestore>([&](frmRestore& form) {
    EXPECT_EQ(form.lblMenuSize.Caption(), "1.50 MB");
    EXPECT_EQ(form.lblUserSize.Caption(), "") << "its archive is not there";
    EXPECT_EQ(form.lblReportSize.Caption(), "") << "it is not offered";
    EXPECT_EQ(form.lblBackupDateValue.Caption(), "3/14/2012 8:00:00 AM");
    EXPECT_TRUE(form.lblBackupDateLocal.Caption().starts_with("(2012/03/14 08:"));
    EXPECT_TRUE(form.IsCautious());
    session.disk.Write("D:\\Set\\BackupInfo.ini", Lines({"[Info]", "AppVersion=3.00", "Date=2012/03/14 8 o'clock",
                                                         "AppType=Tarsus", "MenuData=V2.1"}));
    fakes::Press(form.cmdCancel);
  });
  session.AcceptFolder(kSetFolder);
  session.At<frmRestore>([&](frmRestore& form) {
    EXPECT_EQ(form.lblBackupDateLocal.Caption(), "") << "nothing is said twice";
    fakes::Press(form.cmdCancel);
  });
  session.LeaveRestoreAfter({});
}

}  // namespace
