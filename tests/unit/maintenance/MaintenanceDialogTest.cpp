// The maintenance dialog: its counts, its choices, and what each button makes of them.
#include "unit/Session.h"
#include "unit/Station.h"

namespace {

using enum base::MessageId;

using maintenance::Choice;

struct Choosing {
  const char* name;
  bool unprotected;
  const char* days;  ///< typed into the range box; nullptr for all images
  std::int32_t dayCount;
};

const Choosing kChoosings[] = {
    {"as it opens", false, nullptr, 9999},
    {"unprotected, and back to all images", true, nullptr, 9999},
    {"a week", false, "7", 7},
    {"unprotected, a week", true, "7", 7},
    {"no number", false, "", 0},
    {"only digits enter", false, "-1a 2.5\b", 125},
    {"as many as there are", false, "9999", 9999},
    {"one more", false, "10000", 9999},
    {"more than 32 bits", false, "99999999999999999999", 9999},
};

TEST(MaintenanceDialog, HandsTheChoicesToItsOwner) {
  for (const Choosing& each : kChoosings) {
    SCOPED_TRACE(each.name);
    JobStation station;
    frmMaintenance form(station.application);
    station.host.person.Expect<frmMaintenance>([&](frmMaintenance& open) {
      EXPECT_FALSE(open.txtCollectRange.Enabled() || open.lblLabel7.Enabled());
      if (each.unprotected) {
        fakes::Tick(open.Option2);
        fakes::Tick(open.Option4);
        fakes::Type(open.txtCollectRange, "3");
        fakes::Tick(open.Option3);
        EXPECT_FALSE(open.Option4.Value() || open.txtCollectRange.Enabled() || open.lblLabel7.Enabled());
      }
      if (each.days != nullptr) {
        fakes::Tick(open.Option4);
        EXPECT_FALSE(open.Option3.Value());
        fakes::Type(open.txtCollectRange, each.days);
      }
      open.MoveTo(1234, 567);
      fakes::Press(open.cmdStart);
    });
    if (each.unprotected) station.host.person.ExpectMessage(AskUnprotected, host::Answer::Consented);
    form.ShowModal();
    EXPECT_EQ(form.Result(), each.unprotected ? Choice::Unprotected : Choice::Protected);
    EXPECT_EQ(form.CollectsImages(), each.days != nullptr ? 1 : 0);
    EXPECT_EQ(form.DayCount(), each.dayCount);
    EXPECT_TRUE(form.IsLoaded()) << "its owner has not read it yet";
    form.Unload();
    EXPECT_EQ(station.host.qx32.numbers["BackupUtility\\dlgMaintenanceLeft"], 1234u);
    const std::string days = std::to_string(each.dayCount);
    EXPECT_EQ(station.host.Told().logLines,
              (Names{"Start Select Information for Maintenance Log",
                     std::string("Selected Information for Maintenance Log : personal information ") +
                         (each.unprotected ? "included, " : "protected, ") +
                         (each.days != nullptr ? "images of " + days + " days" : "all images")}));
  }
}

// A refused confirmation must not leave a start behind that the close box would then let through.
TEST(MaintenanceDialog, RefusedConfirmationChangesNothing) {
  for (const host::Answer answer : {host::Answer::NotShown, host::Answer::Refused, host::Answer{3}}) {
    JobStation station;
    frmMaintenance form(station.application);
    station.host.person.Expect<frmMaintenance>([](frmMaintenance& open) {
      fakes::Tick(open.Option2);
      fakes::Tick(open.Option4);
      fakes::Type(open.txtCollectRange, "5");
      fakes::Press(open.cmdStart);
    });
    station.host.person.ExpectMessage(AskUnprotected, answer).Expect<frmMaintenance>([](frmMaintenance& open) {
      EXPECT_TRUE(open.Option2.Value() && open.Option4.Value() && open.txtCollectRange.Text() == "5");
      ASSERT_EQ(open.CancelButton(), &open.cmdCancel) << "what the close box presses";
      fakes::Press(open.cmdCancel);
    });
    form.ShowModal();
    EXPECT_EQ(form.Result(), Choice::Cancelled);
    EXPECT_EQ(station.host.Told().logLines.back(), "Cancel Select Information for Maintenance Log");
    form.Unload();
  }
}

Arrangement Refused(const std::string& statement) {
  return [=](fakes::FakeHost& host) { host.Told().studies[statement].refusal = "refused"; };
}

constexpr const char* kStudies = "SELECT * FROM Study.dbo.T_TSTUDY";

struct Counting {
  const char* name;
  Arrangement arrange;
  Names counts;  ///< of patients, studies and users, with "!" where one is marked
  bool warns;
};

const Counting kCountings[] = {
    {"all read", Nothing, {"3", "2", "1"}, false},
    {"patients", Refused("SELECT * FROM Patient.dbo.T_TPATIENT"), {"0!", "2", "1"}, false},
    {"studies, though rows are counted", Fails("StudyDatabaseQuery", "OpenQuery", 1, kStudies), {"3", "2!", "1"}, true},
    {"users", Refused("SELECT * FROM UserData.dbo.T_MUSER"), {"3", "2", "0!"}, true},
    {"the count of studies", Fails("StudyDatabaseQuery", "RecordCount", 2), {"3", "0!", "0!"}, true},
    {"no component", Fails("ComponentFactory", "CreateStudyDatabaseQuery"), {"0!", "0!", "0!"}, true},
};

std::string Shown(const forms::TextBox& count, const forms::Label& mark) {
  return count.Text() + (mark.Caption() == "text 66105" ? "!" : mark.Caption());
}

TEST(MaintenanceDialog, MarksTheCountsThatCannotBeRead) {
  for (const Counting& each : kCountings) {
    SCOPED_TRACE(each.name);
    JobStation station;
    each.arrange(station.host);
    if (each.warns) station.host.person.ExpectMessage(CountsUnreadable);
    frmMaintenance form(station.application);
    form.Load();
    EXPECT_EQ((Names{Shown(form.txtPatientCount, form.lblError1), Shown(form.txtStudyCount, form.lblError2),
                     Shown(form.txtUserCount, form.lblError3)}),
              each.counts);
    EXPECT_EQ(station.host.toolkit.pointer, forms::Pointer::Default);
    const std::string log = station.host.disk.Read(fakes::kLogFile);
    EXPECT_EQ(log.find("[Error]       Message 60520: ") != std::string::npos, each.warns);
    EXPECT_EQ(log.find("[Exclamation] Count not read (patients): ") != std::string::npos, each.counts[0] == "0!");
    form.Unload();
  }
}

}  // namespace
