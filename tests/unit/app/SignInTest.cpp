// The sign-in dialog and the compaction that goes with it.
#include <functional>

#include "access/CompactDatabases.h"
#include "access/frmUserAuthentication.h"
#include "unit/app/Fixture.h"

namespace {

using operator_access::frmUserAuthentication;
using Step = std::function<void(frmUserAuthentication&)>;

class SignInTest : public CatalogueTest {
 public:
  SignInTest() { application.state.StartupDirectory = fakes::kProgramFolder; }

  static Step SignIn(const std::string& name, const std::string& password = "secret") {
    return [=](frmUserAuthentication& form) {
      fakes::Choose(form.cmbUserName, name);
      fakes::Type(form.txtPassword, password);
      fakes::Press(form.cmdOK);
    };
  }
  static Step Cancel(forms::ShiftState shift = {}) {
    return [=](frmUserAuthentication& form) { fakes::Press(form.cmdCancel, shift); };
  }
  /// One attempt that brings the message, and a cancel.
  void ExpectRefusal(const Step& attempt, std::int32_t message) {
    host.person.Expect(attempt).ExpectMessage(message).Expect(Cancel());
    frmUserAuthentication form(application);
    form.ShowModal();
    EXPECT_FALSE(application.state.SignedIn);
    EXPECT_EQ(host.toolkit.pointer, forms::Pointer::Default);
  }
};

TEST_F(SignInTest, RightsOfUsers) {
  const struct {
    std::string name;
    std::string userId;
    app::Right right;
    std::size_t questions;
  } rows[] = {
      {fakes::kBackupUser, "U001", app::Right::Backup, 2},
      {fakes::kRestoreUser, "U002", app::Right::Restore, 2},
      {fakes::kBothUser, "U003", app::Right::BackupAndRestore, 2},
      {fakes::kServiceUser, "U004", app::Right::Privileged, 0},
      {"U003", "U003", app::Right::BackupAndRestore, 2},  // no display name, so the ID itself
  };
  for (const auto& row : rows) {
    application.state.SignedIn = false;
    host.calls.Reset();
    host.person.Expect(SignIn(row.name));
    frmUserAuthentication form(application);
    form.ShowModal();
    EXPECT_TRUE(application.state.SignedIn) << row.name;
    EXPECT_EQ(application.state.UserId, row.userId);
    EXPECT_EQ(application.state.UserRight, row.right) << row.name;
    EXPECT_EQ(host.calls.CountOf("UserAuthenticator", "CheckFunction"), row.questions) << row.name;
    EXPECT_EQ(form.txtPassword.Text(), "");
    EXPECT_EQ(host.toolkit.pointer, forms::Pointer::Default);
    for (const fakes::Call& call : host.calls.Calls()) EXPECT_EQ(call.detail.find("secret"), std::string::npos);
  }
  EXPECT_EQ(host.Told().operations.size(), std::size(rows));
  EXPECT_EQ(host.Told().operations.back(), "|U003|BackupUtility|UserAuthentication|OK");
  EXPECT_EQ(host.Told().auditRecords.size(), std::size(rows));
}

TEST_F(SignInTest, Refusals) {
  application.state.UserRight = app::Right::Privileged;  // of an earlier attempt
  for (const auto& [fault, message] :
       {std::pair(1, 63360), {2, 63360}, {3, 63360}, {4, 60308}, {-1, 60308}, {100, 60308}}) {
    host.Told().verifyFault = fault;
    ExpectRefusal(SignIn(fakes::kBothUser), message);
  }
  EXPECT_EQ(application.state.UserRight, app::Right::None);
  host.Told().verifyFault = 0;
  ExpectRefusal(SignIn(fakes::kBothUser, "Secret"), 63360);
  ExpectRefusal(SignIn(fakes::kPowerlessUser), 63361);
  EXPECT_EQ(application.state.UserRight, app::Right::None);
  ExpectRefusal(SignIn("O'Neill"), 63360);  // the quote breaks the statement
  EXPECT_EQ(host.Told().statements.back(), "SELECT USER_ID FROM V_MUSER WHERE DISP_NAME = N'O'Neill'");
  EXPECT_TRUE(host.Told().operations.empty());
  EXPECT_EQ(host.disk.Read("C:\\Tarsus\\Config\\Station.mdb"), "station[slack]");
}

TEST_F(SignInTest, HostFaultsWhileSigningIn) {
  const struct {
    std::int32_t message;
    std::function<void()> arrange;
  } rows[] = {
      {60308, [&] { host.calls.FailFrom("ComponentFactory", "CreateUserAuthenticator"); }},
      {60308, [&] { host.calls.FailFrom("ComponentFactory", "CreateUserQuery", 2); }},
      {63361, [&] { host.calls.FailFrom("UserAuthenticator", "CheckFunction"); }},
      {60326, [&] { host.calls.FailFrom("QX32", "GetString", 1, "Config"); }},
      {60326, [&] { host.calls.FailFrom("QX32", "GetString", 1, "Param"); }},
      {60500, [&] { host.calls.FailFrom("AuditTrail", "RecordSignInOut"); }},
  };
  for (const auto& row : rows) {
    host.calls.Reset();
    row.arrange();
    ExpectRefusal(SignIn(fakes::kBothUser), row.message);
  }
}

TEST_F(SignInTest, CancelUndoesASignInAndChoosesTheWayOut) {
  host.Told().auditAnswer = 5;
  const std::pair<forms::ShiftState, int> rows[] = {{{}, 0}, {{true, false, false}, 1}, {{true, true, false}, 0}};
  for (const auto& [shift, exitMode] : rows) {
    host.person.Expect(SignIn(fakes::kBothUser)).ExpectMessage(60500);
    host.person.Expect<frmUserAuthentication>([&, held = shift](frmUserAuthentication& form) {
      EXPECT_TRUE(application.state.SignedIn);
      fakes::Press(form.cmdCancel, held);
    });
    frmUserAuthentication form(application);
    form.ShowModal();
    EXPECT_FALSE(application.state.SignedIn);
    EXPECT_EQ(application.state.ExitMode, exitMode);
    EXPECT_EQ(form.txtPassword.Text(), "");
  }
}

TEST_F(SignInTest, OkNeedsAName) {
  host.person.Expect<frmUserAuthentication>([&](frmUserAuthentication& form) {
    EXPECT_EQ(form.cmbUserName.Items().size(), 5u);
    EXPECT_EQ(form.cmbUserName.Items().front(), fakes::kBackupUser);
    EXPECT_EQ(host.messageLoop.yields, 5);
    EXPECT_EQ(form.Title(), "text 66010");
    EXPECT_FALSE(form.cmdOK.Enabled());
    fakes::Choose(form.cmbUserName, "x");
    EXPECT_TRUE(form.cmdOK.Enabled());
    fakes::Choose(form.cmbUserName, "");
    EXPECT_FALSE(form.cmdOK.Enabled());
    form.TakePlace(11, 22);
    fakes::Press(form.cmdCancel);
  });
  frmUserAuthentication(application).ShowModal();
  EXPECT_EQ(host.qx32.numbers["BackupUtility\\dlgUserAuthenticationLeft"], 11u);
  EXPECT_EQ(host.qx32.numbers["BackupUtility\\dlgUserAuthenticationTop"], 22u);
}

TEST_F(SignInTest, AnUnreadableUserListIsEmpty) {
  for (const char* method : {"Execute", "RowCount", "Value"}) {
    host.calls.Reset();
    host.calls.FailFrom("UserQuery", method);
    host.person.Expect<frmUserAuthentication>([](frmUserAuthentication& form) {
      EXPECT_TRUE(form.cmbUserName.Items().empty());
      fakes::Press(form.cmdCancel);
    });
    frmUserAuthentication(application).ShowModal();
  }
}

TEST_F(SignInTest, TheDialogTakesNoInputWhileItCompacts) {
  frmUserAuthentication form(application);
  form.Load();
  int seen = 0;
  host.messageLoop.onYield = [&] {
    ++seen;
    EXPECT_FALSE(form.Enabled());
    EXPECT_EQ(host.toolkit.pointer, forms::Pointer::Hourglass);
  };
  host.person.Expect(SignIn(fakes::kBothUser));
  form.ShowModal();
  EXPECT_EQ(seen, 2);
}

using CompactTest = SignInTest;

TEST_F(CompactTest, EveryDatabaseOfTheFolder) {
  host.disk.Write("C:\\Tarsus\\Config\\SECOND.MDB", "b[slack]");
  host.disk.Write("C:\\Tarsus\\Config\\Third.mdb", "c[slack]");
  host.disk.Find("C:\\Tarsus\\Config\\Third.mdb")->readers = 1;  // in use elsewhere
  host.disk.Write("C:\\Tarsus\\Config\\Fourth.mdb.old", "d[slack]");
  host.disk.MakeFolder("C:\\Tarsus\\Config\\Folder.mdb");
  auto wanted = host.disk.Tree("C:\\Tarsus\\Config");
  wanted["Station.mdb"] = "station";
  wanted["SECOND.MDB"] = "b";
  operator_access::CompactDatabases(application, "C:\\Tarsus\\Config");
  EXPECT_EQ(host.disk.Tree("C:\\Tarsus\\Config"), wanted);
  EXPECT_EQ(host.disk.CurrentFolder(), fakes::kProgramFolder);
  EXPECT_EQ(host.compactor.locales, std::vector<std::string>(3, ";LANGID=0x0409;CP=1252;COUNTRY=0"));
}

/// Fails after it has begun the new file.
class BreakingCompactor : public fakes::FakeCompactor {
 public:
  BreakingCompactor(fakes::Disk& disk, fakes::CallCounter& calls) : FakeCompactor(disk, calls), disk_(disk) {}
  std::int32_t Compact(const std::string&, const std::string& target, const std::string&) override {
    disk_.Write(target, "half a data");
    return -1;
  }

 private:
  fakes::Disk& disk_;
};

TEST_F(CompactTest, AHalfWrittenFileDoesNotReplaceTheDatabase) {
  BreakingCompactor compactor(host.disk, host.calls);
  app::Application breaking(Contracts(host, host.qx32, compactor), host.toolkit);
  operator_access::CompactDatabase(breaking, " C:\\Tarsus\\Config ", "Station.mdb", "");
  EXPECT_EQ(host.disk.Read("C:\\Tarsus\\Config\\Station.mdb"), "station[slack]");
  EXPECT_TRUE(host.disk.IsFile("C:\\Tarsus\\Config\\120315093012Station.mdb"));
}

// Whatever call fails, the database keeps its contents, compacted or not.
TEST(CompactDatabases, AFaultAnywhereLosesNothing) {
  std::size_t calls = 1;
  for (std::size_t n = 0; n <= calls; ++n) {
    Workstation station;
    station.application.state.StartupDirectory = fakes::kProgramFolder;
    station.host.calls.FailCall(n);
    operator_access::CompactDatabases(station.application, "C:\\Tarsus\\Config\\");
    if (n == 0) calls = station.host.calls.Count();
    const std::string bytes = station.host.disk.Read("C:\\Tarsus\\Config\\Station.mdb");
    EXPECT_TRUE(bytes == "station" || (n > 0 && bytes == "station[slack]")) << n << ": " << bytes;
    EXPECT_TRUE(station.host.person.Messages().empty());
  }
  EXPECT_GT(calls, 5u);
}

}  // namespace
