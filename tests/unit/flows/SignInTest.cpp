// Sign-in, the rights on the main menu, and the compaction of the host's databases.
#include "access/CompactDatabases.h"
#include "unit/Session.h"
#include "unit/Station.h"

namespace {

using enum base::MessageId;

TEST(SignIn, RightDecidesWhatTheMenuOffers) {
  const std::set<Menu> kEveryItem = {Menu::Backup, Menu::Restore, Menu::MaintenanceLog};
  const std::tuple<const char*, std::string, app::Right, std::set<Menu>, std::string> users[] = {
      {fakes::kBackupUser, "U001", app::Right::Backup, {Menu::Backup, Menu::MaintenanceLog}, "backup"},
      {fakes::kRestoreUser, "U002", app::Right::Restore, {Menu::Restore}, "restore"},
      {fakes::kBothUser, "U003", app::Right::BackupAndRestore, kEveryItem, "backup and restore"},
      {fakes::kServiceUser, "U004", app::Right::Privileged, kEveryItem, "every right"},
      {"U002", "U002", app::Right::Restore, {Menu::Restore}, "restore"},  // no display name, so the ID itself
  };
  for (const auto& [user, id, right, enabled, words] : users) {
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
    EXPECT_EQ(session.Told().logLines,
              (Paths{"Start Backup Utility", "Start User Authentication", "Signed in : " + id + ", " + words,
                     "Start Main Menu", "Finish Backup Utility"}));
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

// The log tells what the operator sees as an empty list.
TEST(SignIn, AnUnreadableUserListIsEmpty) {
  const std::tuple<const char*, const char*, const char*> faults[] = {
      {"UserQuery", "Execute", "User list not read: "},
      {"UserQuery", "RowCount", "User list not whole: 0 of 0"},
      {"UserQuery", "Value", "User list not whole: 0 of 5"},
      {"ComponentFactory", "CreateUserQuery", "User list not read: the user query"}};
  for (const auto& [contract, method, line] : faults) {
    Session session(Fails(contract, method));
    session.At<frmUserAuthentication>([](frmUserAuthentication& form) {
      EXPECT_TRUE(form.cmbUserName.Items().empty());
      fakes::Press(form.cmdCancel, kShift);
    });
    session.Run();
    EXPECT_PRED_FORMAT2(testing::IsSubstring, std::string("[Exclamation] ") + line, session.disk.Read(fakes::kLogFile));
  }
}

struct Refusal {
  const char* name;
  base::MessageId message;
  Arrangement arrange = Nothing;
  const char* user = fakes::kBothUser;
  const char* password = "secret";
  std::string cause = {};  ///< that stands in the log behind the message's number
};

Arrangement Verdict(std::int32_t fault) {
  return [=](fakes::FakeHost& host) { host.Told().verifyFault = fault; };
}

const Refusal kRefusals[] = {
    {"wrong password", PasswordRefused, Nothing, fakes::kBothUser, "Secret", "user Bea Both (U003): "},
    {"unknown user", PasswordRefused, Nothing, "Nobody", "secret", "user Nobody: "},
    {"quote in the name", PasswordRefused, Nothing, "O'Brien"},
    {"no right", NoRight, Nothing, fakes::kPowerlessUser, "secret", "user Nora Nothing (U005): not granted: 2601 2801"},
    {"result three", PasswordRefused, Verdict(3)},
    {"result four", AuthenticationFailed, Verdict(4)},
    {"negative result", AuthenticationFailed, Verdict(-1), fakes::kBothUser, "secret", "user Bea Both (U003): "},
    {"no authenticator", AuthenticationFailed, Fails("ComponentFactory", "CreateUserAuthenticator")},
    {"no user query", AuthenticationFailed, Fails("ComponentFactory", "CreateUserQuery"), "U003"},
    {"rights unknown", NoRight, Fails("UserAuthenticator", "CheckFunction")},
    {"no Config folder", PathEntryUnreadable, NoEntry("Config")},
    {"no Param folder", PathEntryUnreadable, NoEntry("Param")},
    {"not recorded", SignInNotRecorded, [](auto& host) { host.Told().auditRefusal = "answered 7"; }, fakes::kBothUser,
     "secret", "AuditTrail.RecordSignInOut: answered 7"},
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
    const std::string log = session.disk.Read(fakes::kLogFile);
    const std::string line = "[Error]       Message " + fakes::NumberOf(refusal.message) + ": " + refusal.cause;
    EXPECT_PRED_FORMAT2(testing::IsSubstring, line, log);
    EXPECT_EQ(log.find(refusal.password), std::string::npos);
    EXPECT_EQ(log.find("Signed in"), std::string::npos);
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

// Such a right has no way into the menu, unless the host's component changes its mind.
TEST_F(CatalogueTest, MenuWithoutARightHalts) {
  jobs::JobDefinitions definitions;
  media::MediaDrives drives(host.Contracts(), application.paths, application.messages, application.failures);
  application.state.UserId = "U009";
  application.state.UserRight = app::Right{7};
  host.person.ExpectMessage(NoRight);
  frmMainMenu menu(application, definitions, drives);
  EXPECT_THROW(menu.ShowModal(), fakes::ProcessEnded);
  EXPECT_TRUE(host.processes.ended);
  EXPECT_EQ(host.Told().logLines,
            (Names{"Start Main Menu", "Message 63361: user U009: right 7", "Halt Backup Utility"}));
}

// What the operator chose, on which screen, in that order.
TEST(MainMenu, RecordsEveryChoice) {
  Session session;
  session.SignIn();
  session.OpenMenuItem(Menu::Backup);
  session.Cancel<frmBackup>();
  session.OpenMenuItem(Menu::Restore);
  session.Cancel<frmSelectFolder>();
  session.OpenMenuItem(Menu::MaintenanceLog);
  session.Cancel<frmMaintenance>();
  session.EndAfter({});
  Paths wanted;
  for (const char* what :
       {"UserAuthentication|OK", "MainMenu|Backup", "MainMenu|Restore", "MainMenu|MainteLogBackup", "MainMenu|END"})
    wanted.push_back("WS-RADIOLOGY-1|U004|BackupUtility|" + std::string(what));
  EXPECT_EQ(session.Told().operations, wanted);
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

/// What else happens on the workstation while a database is compacted.
class CompactorOnABusyDisk : public fakes::FakeCompactor {
 public:
  using FakeCompactor::FakeCompactor;
  std::function<void()> meanwhile;

  base::Outcome Compact(const std::string& source, const std::string& target, const std::string& locale) override {
    base::Outcome compacted = FakeCompactor::Compact(source, target, locale);
    meanwhile();
    return compacted;
  }
};

constexpr const char* kStation = "C:\\Tarsus\\Config\\Station.mdb";
constexpr const char* kNotReplaced = "Database not replaced: C:\\Tarsus\\Config\\Station.mdb: ";

struct Meanwhile {
  const char* name;
  Arrangement happens;
  std::string left;      ///< in the database
  std::string why = {};  ///< in the log, behind its name
  bool copyStays = false;
};

const Meanwhile kMeanwhile[] = {
    {"nothing", Nothing, "station"},
    {"written to", File(kStation, "of another size"), "of another size", "it was written to meanwhile"},
    {"written to in its size", File(kStation, "STATION[slack]"), "STATION[slack]", "it was written to meanwhile"},
    {"deleted", Gone(kStation), "", "it was written to meanwhile"},
    {"opened", InUse(kStation), "station[slack]", std::string(kStation).substr(0, 3)},
    {"marked read-only", [](auto& host) { host.disk.Find(kStation)->attributes = fakes::kReadOnly; }, "station[slack]",
     std::string("C:\\")},
    {"copy not on the disk", Fails("FileSystem", "Flush"), "station[slack]",
     "C:\\Tarsus\\Config\\120315093012Station.mdb"},
    {"copy cannot be removed", Both(Fails("FileSystem", "Flush"), Fails("FileSystem", "RemoveFile")), "station[slack]",
     "C:\\Tarsus\\Config\\120315093012Station.mdb: injected fault; not removed: ", true},
};

// The host's own data win over what was made of them.
TEST(CompactDatabases, WhatChangesMeanwhileIsNotReplaced) {
  for (const Meanwhile& each : kMeanwhile) {
    SCOPED_TRACE(each.name);
    Workstation station;
    CompactorOnABusyDisk compactor(station.host.disk, station.host.calls);
    compactor.meanwhile = [&] { each.happens(station.host); };
    qx::access::CompactDatabase(work::ToolsOf(station.application), compactor, station.host.clock, "C:\\Tarsus\\Config",
                                "Station.mdb");
    EXPECT_EQ(station.host.disk.Read(kStation), each.left);
    EXPECT_EQ(station.host.disk.IsFile("C:\\Tarsus\\Config\\120315093012Station.mdb"), each.copyStays);
    EXPECT_EQ(station.WasWarnedOf(kNotReplaced + each.why), !each.why.empty());
  }
}

}  // namespace
