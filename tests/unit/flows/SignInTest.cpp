// Sign-in, the rights on the main menu, and the compaction of the host's databases.
#include "access/CompactDatabases.h"
#include "unit/Session.h"
#include "unit/Station.h"

namespace {

using enum base::MessageId;

TEST(SignIn, RightDecidesWhatTheMenuOffers) {
  const std::set<Menu> kEveryItem = {Menu::Backup, Menu::Restore, Menu::MaintenanceLog};
  const std::tuple<const char*, std::string, app::Right, std::set<Menu>> users[] = {
      {fakes::kBackupUser, "U001", app::Right::Backup, {Menu::Backup, Menu::MaintenanceLog}},
      {fakes::kRestoreUser, "U002", app::Right::Restore, {Menu::Restore}},
      {fakes::kBothUser, "U003", app::Right::BackupAndRestore, kEveryItem},
      {fakes::kServiceUser, "U004", app::Right::Privileged, kEveryItem},
      {"U002", "U002", app::Right::Restore, {Menu::Restore}},  // no display name, so the ID itself
  };
  for (const auto& [user, id, right, enabled] : users) {
    SCOPED_TRACE(user);
    Session session;
    session.SignIn(user);
    std::set<Menu> offered;
    session.At<frmMainMenu>([&](frmMainMenu& form) {
      for (const Menu item : kEveryItem)
        if (Button(form, item).Enabled()) offered.insert(item);
      fakes::Press(form.cmdEnd, kShift);
    });
    session.Run();
    EXPECT_EQ(offered, enabled);
    EXPECT_EQ(session.state.UserRight, right);
    EXPECT_EQ(session.calls.CountOf("UserAuthenticator", "CheckFunction"), right == app::Right::Privileged ? 0u : 2u);
    for (const fakes::Call& call : session.calls.Calls()) EXPECT_EQ(call.detail.find("secret"), std::string::npos);
    EXPECT_EQ(session.Told().auditRecords, (Paths{id + "|Sign-in|Backup", id + "|Sign-out|Backup"}));
    const std::string who = "WS-RADIOLOGY-1|" + id + "|BackupUtility|";
    EXPECT_EQ(session.Told().operations, (Paths{who + "UserAuthentication|OK", who + "MainMenu|END"}));
  }
}

TEST(SignIn, ListsUsersInTheirOrderAndWaitsForAName) {
  Session session;
  session.At<frmUserAuthentication>([&](frmUserAuthentication& form) {
    EXPECT_EQ(form.cmbUserName.Items(), (Names{fakes::kBackupUser, fakes::kRestoreUser, fakes::kBothUser,
                                               fakes::kServiceUser, fakes::kPowerlessUser}));
    for (const char* name : {"", "x", ""}) {
      fakes::Choose(form.cmbUserName, name);
      EXPECT_EQ(form.cmdOK.Enabled(), *name != '\0');
    }
    fakes::Press(form.cmdCancel, kShift);
  });
  session.Run();
}

TEST(SignIn, AnUnreadableUserListIsEmpty) {
  for (const char* method : {"Execute", "RowCount", "Value"}) {
    Session session(Fails("UserQuery", method));
    session.At<frmUserAuthentication>([](frmUserAuthentication& form) {
      EXPECT_TRUE(form.cmbUserName.Items().empty());
      fakes::Press(form.cmdCancel);
    });
    session.Run();
  }
}

struct Refusal {
  const char* name;
  base::MessageId message;
  Arrangement arrange = Nothing;
  const char* user = fakes::kBothUser;
  const char* password = "secret";
};

Arrangement Verdict(std::int32_t fault) {
  return [=](fakes::FakeHost& host) { host.Told().verifyFault = fault; };
}

const Refusal kRefusals[] = {
    {"wrong password", PasswordRefused, Nothing, fakes::kBothUser, "Secret"},
    {"unknown user", PasswordRefused, Nothing, "Nobody"},
    {"quote in the name", PasswordRefused, Nothing, "O'Brien"},
    {"no right", NoRight, Nothing, fakes::kPowerlessUser},
    {"result three", PasswordRefused, Verdict(3)},
    {"result four", AuthenticationFailed, Verdict(4)},
    {"negative result", AuthenticationFailed, Verdict(-1)},
    {"no authenticator", AuthenticationFailed, Fails("ComponentFactory", "CreateUserAuthenticator")},
    {"no user query", AuthenticationFailed, Fails("ComponentFactory", "CreateUserQuery"), "U003"},
    {"rights unknown", NoRight, Fails("UserAuthenticator", "CheckFunction")},
    {"no Config folder", PathEntryUnreadable, NoEntry("Config")},
    {"no Param folder", PathEntryUnreadable, NoEntry("Param")},
    {"not recorded", SignInNotRecorded, [](auto& host) { host.Told().auditRefusal = "answered 7"; }},
    {"no audit trail", SignInNotRecorded, Fails("ComponentFactory", "CreateAuditTrail")},
};

// A cancel undoes a sign-in that had come half way.
TEST(SignIn, RefusalIsShownAndKeepsTheDialogOpen) {
  for (const Refusal& refusal : kRefusals) {
    SCOPED_TRACE(refusal.name);
    Session session(refusal.arrange);
    session.SignIn(refusal.user, refusal.password);
    session.See({refusal.message});
    session.Cancel<frmUserAuthentication>();
    session.Run();
    EXPECT_FALSE(session.state.SignedIn);
    for (const auto& record : session.Told().auditRecords) EXPECT_EQ(record.find("Sign-out"), std::string::npos);
    EXPECT_EQ(session.processes.CountStarted("C:\\Tarsus\\System"), 1) << "the host is started again";
    const bool authenticated = refusal.message == PathEntryUnreadable || refusal.message == SignInNotRecorded;
    EXPECT_EQ(session.state.UserRight, authenticated ? app::Right::BackupAndRestore : app::Right::None);
    EXPECT_EQ(session.Told().operations.empty(), !authenticated);
  }
}

// Nobody has signed in yet: what is typed must not become part of a statement.
TEST(SignIn, NameWithAQuoteReachesNoStatement) {
  const std::string typed = "x'; DELETE FROM T_MUSER; --";
  Session session;
  session.Told().users.push_back({"O'Hara", "O'Hara", "secret", {2801}});
  session.SignIn(typed);
  session.See({PasswordRefused});
  session.SignIn("O'Hara");
  session.EndAfter({});
  EXPECT_EQ(session.Told().statements, Names{"SELECT DISP_NAME FROM V_MUSER ORDER BY USER_ORDER_NO"});
  EXPECT_EQ(session.state.UserId, "O'Hara") << "tried as the ID itself";
}

TEST(SignIn, SucceedsAfterARefusalThatLeavesNoRight) {
  Session session;
  session.SignIn(fakes::kServiceUser);
  session.See({SignInNotRecorded});
  session.Told().auditRefusal = "answered 5";
  session.SignIn(fakes::kPowerlessUser);
  session.See({NoRight});
  session.At<frmUserAuthentication>([&](frmUserAuthentication& form) {
    EXPECT_EQ(session.Told().operations.size(), 1u);
    session.Told().auditRefusal.clear();
    fakes::Choose(form.cmbUserName, fakes::kRestoreUser);
    fakes::Press(form.cmdOK);
  });
  session.EndAfter({});
  EXPECT_EQ(session.state.UserRight, app::Right::Restore);
}

// The password is forgotten with the dialog; nothing can be pressed while the databases are compacted.
TEST_F(CatalogueTest, SignInDialogTakesNoInputWhileItCompacts) {
  application.state.StartupDirectory = fakes::kProgramFolder;
  frmUserAuthentication form(application);
  form.Load();
  int seen = 0;
  host.messageLoop.onYield = [&] {
    ++seen;
    EXPECT_FALSE(form.Enabled());
    EXPECT_EQ(host.toolkit.pointer, forms::Pointer::Hourglass);
  };
  host.person.Expect<frmUserAuthentication>([](frmUserAuthentication& open) {
    fakes::Choose(open.cmbUserName, fakes::kBothUser);
    fakes::Type(open.txtPassword, "secret");
    fakes::Press(open.cmdOK);
  });
  form.ShowModal();
  EXPECT_EQ(seen, 2);
  EXPECT_EQ(form.txtPassword.Text(), "");
  EXPECT_EQ(host.disk.Read("C:\\Tarsus\\Config\\Station.mdb"), "station");
  EXPECT_EQ(host.disk.Read("C:\\Tarsus\\Param\\Protocol.mdb"), "protocol");
}

void Compact(Workstation& station, const std::string& folder) {
  qx::access::CompactDatabases(work::ToolsOf(station.application), station.host.compactor, station.host.clock, folder,
                               fakes::kProgramFolder);
}

TEST_F(AppTest, EveryDatabaseOfAFolderIsCompacted) {
  host.disk.Write("C:\\Tarsus\\Config\\SECOND.MDB", "b[slack]");
  host.disk.Write("C:\\Tarsus\\Config\\Third.mdb", "c[slack]");
  InUse("C:\\Tarsus\\Config\\Third.mdb")(host);
  host.disk.Write("C:\\Tarsus\\Config\\Fourth.mdb.old", "d[slack]");
  host.disk.MakeFolder("C:\\Tarsus\\Config\\Folder.mdb");
  MediumFiles wanted = host.disk.Tree("C:\\Tarsus\\Config");
  wanted["Station.mdb"] = "station";
  wanted["SECOND.MDB"] = "b";
  Compact(*this, "C:\\Tarsus\\Config");
  EXPECT_EQ(host.disk.Tree("C:\\Tarsus\\Config"), wanted);
  EXPECT_EQ(host.disk.CurrentFolder(), fakes::kProgramFolder);
  EXPECT_EQ(host.compactor.locales, Names(3, ";LANGID=0x0409;CP=1252;COUNTRY=0"));
  qx::access::CompactDatabase(work::ToolsOf(application), host.compactor, host.clock, " C:\\Tarsus\\Param ",
                              "Protocol.mdb");
  EXPECT_EQ(host.disk.Tree("C:\\Tarsus\\Param"), (MediumFiles{{"Protocol.mdb", "protocol"}}));
}

// Whatever call fails, and when the disk is full half way, the database keeps its contents.
TEST(CompactDatabases, AFaultAnywhereLosesNothing) {
  std::size_t calls = 1;
  for (std::size_t n = 0; n <= calls + 1; ++n) {
    Workstation station;
    n > calls ? Room(4)(station.host) : station.host.calls.FailCall(n);
    Compact(station, "C:\\Tarsus\\Config\\");
    if (n == 0) calls = station.host.calls.Count();
    const std::string bytes = station.host.disk.Read("C:\\Tarsus\\Config\\Station.mdb");
    EXPECT_TRUE(bytes == "station" || (n > 0 && bytes == "station[slack]")) << n << ": " << bytes;
    EXPECT_TRUE(station.host.person.Messages().empty());
  }
  EXPECT_GT(calls, 5u);
}

}  // namespace
