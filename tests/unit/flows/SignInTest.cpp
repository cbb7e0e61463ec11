// Sign-in, the rights on the main menu, and the ways out.
#include <gtest/gtest.h>

#include "unit/flows/Session.h"

namespace flows {
namespace {

struct RightCase {
  const char* user;
  app::Right right;
  std::array<bool, 3> buttons;
};

class SignInRight : public testing::TestWithParam<RightCase> {};

TEST_P(SignInRight, DecidesWhatTheMenuOffers) {
  Session session;
  session.SignIn(GetParam().user);
  session.person.Expect<frmMainMenu>([](frmMainMenu& form) {
    for (std::size_t i = 0; i < 3; ++i) EXPECT_EQ(form.cmdMenu[i].Enabled(), GetParam().buttons[i]) << i;
    fakes::Press(form.cmdEnd, kShift);
  });
  session.Run();
  EXPECT_EQ(session.state.UserRight, GetParam().right);
  const auto& audit = session.Told().auditRecords;
  ASSERT_EQ(audit.size(), 2u);
  EXPECT_EQ(audit[0], session.state.UserId + "|Sign-in|Backup");
  EXPECT_EQ(audit[1], session.state.UserId + "|Sign-out|Backup");
  const std::string who = "WS-RADIOLOGY-1|" + session.state.UserId + "|BackupUtility|";
  EXPECT_EQ(session.Told().operations, (std::vector<std::string>{who + "UserAuthentication|OK", who + "MainMenu|END"}));
}

INSTANTIATE_TEST_SUITE_P(All, SignInRight,
                         testing::Values(RightCase{fakes::kBackupUser, app::Right::Backup, {true, false, true}},
                                         RightCase{fakes::kRestoreUser, app::Right::Restore, {false, true, false}},
                                         RightCase{fakes::kBothUser, app::Right::BackupAndRestore, {true, true, true}},
                                         RightCase{fakes::kServiceUser, app::Right::Privileged, {true, true, true}},
                                         // No display name: tried as the user ID itself.
                                         RightCase{"U002", app::Right::Restore, {false, true, false}}));

TEST(SignIn, ListsUsersInTheirOrderAndWaitsForAName) {
  Session session;
  session.person.Expect<frmUserAuthentication>([&](frmUserAuthentication& form) {
    std::vector<std::string> names;
    for (const auto& user : session.Told().users) names.push_back(user.displayName);
    EXPECT_EQ(form.cmbUserName.Items(), names);
    EXPECT_FALSE(form.cmdOK.Enabled());
    fakes::Choose(form.cmbUserName, "x");
    EXPECT_TRUE(form.cmdOK.Enabled());
    fakes::Choose(form.cmbUserName, "");
    EXPECT_FALSE(form.cmdOK.Enabled());
    fakes::Press(form.cmdCancel, kShift);
  });
  session.Run();
}

struct Refusal {
  const char* name;
  const char* user;
  const char* password;
  std::int32_t message;
  void (*plant)(Session&);
};

void PrintTo(const Refusal& refusal, std::ostream* out) {
  *out << refusal.name;
}

class SignInRefusal : public testing::TestWithParam<Refusal> {};

TEST_P(SignInRefusal, IsShownAndKeepsTheDialogOpen) {
  Session session;
  if (GetParam().plant != nullptr) GetParam().plant(session);
  session.SignIn(GetParam().user, GetParam().password);
  session.person.ExpectMessage(GetParam().message);
  session.CancelSignIn(kNoKeys);
  session.Run();
  EXPECT_FALSE(session.state.SignedIn) << "a cancel undoes a sign-in that had come half way";
  for (const std::string& record : session.Told().auditRecords) EXPECT_EQ(record.find("Sign-out"), std::string::npos);
  EXPECT_TRUE(session.WasHostStarted());
}

const Refusal kRefusals[] = {
    {"WrongPassword", fakes::kBothUser, "guess", 63360, nullptr},
    {"UnknownUser", "Nobody", "secret", 63360, nullptr},
    {"ResultThree", fakes::kBothUser, "secret", 63360, [](Session& s) { s.Told().verifyFault = 3; }},
    {"ResultFour", fakes::kBothUser, "secret", 60308, [](Session& s) { s.Told().verifyFault = 4; }},
    {"NegativeResult", fakes::kBothUser, "secret", 60308, [](Session& s) { s.Told().verifyFault = -1; }},
    {"NoAuthenticator", fakes::kBothUser, "secret", 60308,
     [](Session& s) { s.calls.FailFrom("ComponentFactory", "CreateUserAuthenticator"); }},
    {"NoUserQuery", "U003", "secret", 60308,
     [](Session& s) { s.calls.FailFrom("ComponentFactory", "CreateUserQuery"); }},
    {"NoRight", fakes::kPowerlessUser, "secret", 63361, nullptr},
    {"NoConfigFolder", fakes::kBothUser, "secret", 60326, [](Session& s) { s.qx32.pathTable.erase("Config"); }},
    {"NoParamFolder", fakes::kBothUser, "secret", 60326, [](Session& s) { s.qx32.pathTable.erase("Param"); }},
    {"NotRecorded", fakes::kBothUser, "secret", 60500, [](Session& s) { s.Told().auditAnswer = 7; }},
    {"NoAuditTrail", fakes::kBothUser, "secret", 60500,
     [](Session& s) { s.calls.FailFrom("ComponentFactory", "CreateAuditTrail"); }},
    // The quote is not doubled, so the statement is broken and the name is taken for an ID.
    {"QuoteInName", "O'Brien", "secret", 63360, nullptr},
};

INSTANTIATE_TEST_SUITE_P(All, SignInRefusal, testing::ValuesIn(kRefusals),
                         [](const auto& test) { return test.param.name; });

TEST(SignIn, SucceedsAfterARefusal) {
  Session session;
  session.SignIn(fakes::kBothUser, "guess");
  session.person.ExpectMessage(63360);
  session.SignIn(fakes::kBothUser);
  session.EndMenu();
  session.Run();
  EXPECT_TRUE(session.state.SignedIn);
}

TEST(SignIn, CompactsTheHostsDatabasesAndLeavesNoTemporaryFile) {
  for (const bool inUse : {false, true}) {
    Session session;
    if (inUse) session.disk.Find("C:\\Tarsus\\Config\\Station.mdb")->readers = 1;
    session.SignIn(fakes::kBothUser);
    session.EndMenu();
    session.Run();
    EXPECT_EQ(session.disk.Read("C:\\Tarsus\\Config\\Station.mdb"), inUse ? "station[slack]" : "station");
    EXPECT_EQ(session.disk.Read("C:\\Tarsus\\Param\\Protocol.mdb"), "protocol");
    EXPECT_EQ(session.disk.Children("C:\\Tarsus\\Param").size(), 1u);
    for (const std::string& locale : session.compactor.locales) EXPECT_EQ(locale, ";LANGID=0x0409;CP=1252;COUNTRY=0");
  }
}

// Components that are helpful but not needed.
TEST(SignIn, WorksWithoutLogWriterOrOperationRecorder) {
  for (const char* creator : {"CreateLogWriter", "CreateOperationRecorder"}) {
    SCOPED_TRACE(creator);
    Session session;
    session.calls.FailFrom("ComponentFactory", creator);
    session.SignIn(fakes::kBothUser);
    session.EndMenu();
    session.Run();
    EXPECT_TRUE(session.state.SignedIn);
  }
}

struct Ending {
  forms::ShiftState keys;
  bool restarts;
};

class EndOfProgram : public testing::TestWithParam<std::tuple<bool, Ending>> {};

TEST_P(EndOfProgram, RestartsTheHostUnlessShiftAloneIsHeld) {
  const auto [signedIn, ending] = GetParam();
  Session session;
  if (signedIn) {
    session.SignIn(fakes::kBothUser);
    session.EndMenu(ending.keys);
  } else {
    session.CancelSignIn(ending.keys);
  }
  session.Run();
  std::vector<std::string> log = {"Start Backup Utility", "Finish Backup Utility"};
  if (ending.restarts)
    log = {"Start Backup Utility", "Current Directory : C:\\Tarsus\\Backup", "Finish Backup Utility and Start Tarsus"};
  EXPECT_EQ(session.Told().logLines, log);
  EXPECT_EQ(session.catalogue.state, fakes::FakeCatalogue::State::Closed);
  ASSERT_EQ(session.processes.started.size(), ending.restarts ? 1u : 0u);
  if (!ending.restarts) return;
  EXPECT_EQ(session.processes.started[0].commandLine, "C:\\Tarsus\\System\\\\Tarsus.exe /a");
  EXPECT_EQ(session.processes.started[0].style, host::WindowStyle::Normal);
  EXPECT_FALSE(session.processes.started[0].waitedFor);
}

INSTANTIATE_TEST_SUITE_P(All, EndOfProgram,
                         testing::Combine(testing::Bool(), testing::Values(Ending{kNoKeys, true}, Ending{kShift, false},
                                                                           Ending{{true, true, false}, true},
                                                                           Ending{{true, false, true}, true},
                                                                           Ending{{false, true, false}, true})));

TEST(EndOfProgram, SaysWhenTheHostCannotBeStarted) {
  Session session;
  session.disk.Remove("C:\\Tarsus\\System\\Tarsus.exe");
  session.CancelSignIn(kNoKeys);
  session.person.ExpectMessage(60260);
  session.Run();
  EXPECT_TRUE(session.components.Logged("Finish Backup Utility and Start Tarsus"));
}

TEST(EndOfProgram, SaysWhenTheSignOutIsNotRecorded) {
  Session session;
  session.SignIn(fakes::kBothUser);
  session.person.Expect<frmMainMenu>([&](frmMainMenu& form) {
    session.Told().auditAnswer = 1;
    fakes::Press(form.cmdEnd, kShift);
  });
  session.person.ExpectMessage(60501);
  session.Run();
  EXPECT_TRUE(session.components.Logged("Finish Backup Utility"));
}

// A stored place is used again; a dialog wholly off the screen comes back to its centre.
TEST(EndOfProgram, DialogsComeBackWhereTheyWereLeft) {
  const struct {
    std::int32_t stored;
    std::int32_t shown;
  } cases[] = {{1200, 1200}, {15360, 15360}, {15361, 4680}, {-6000, -6000}, {-6001, 4680}};
  for (const auto& [stored, shown] : cases) {
    Session session;
    session.qx32.numbers["BackupUtility\\dlgUserAuthenticationLeft"] = static_cast<std::uint32_t>(stored);
    session.qx32.numbers["BackupUtility\\dlgUserAuthenticationTop"] = 300;
    session.person.Expect<frmUserAuthentication>([&, expected = shown](frmUserAuthentication& form) {
      EXPECT_EQ(form.Left(), expected);
      form.TakePlace(77, 88);
      fakes::Press(form.cmdCancel, kShift);
    });
    session.Run();
    EXPECT_EQ(session.qx32.numbers["BackupUtility\\dlgUserAuthenticationLeft"], 77u);
    EXPECT_EQ(session.qx32.numbers["BackupUtility\\dlgUserAuthenticationTop"], 88u);
  }
}

}  // namespace
}  // namespace flows
