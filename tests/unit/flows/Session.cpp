#include "unit/flows/Session.h"

#include <gtest/gtest.h>

#include "app/StartUp.h"

namespace flows {
namespace {

constexpr const char* kHostRoot = "C:\\Tarsus";

bool MayChange(const std::string& path) {
  return path == "Log\\BackupUtility.log" || path == "Data\\Patients.bcp" || path == "Config\\Station.mdb" ||
         path == "Param\\Protocol.mdb";
}

}  // namespace

Session::Session() {
  FillDemoWorkstation(*this);
}

void Session::SignIn(const std::string& name, const std::string& password) {
  person.Expect<frmUserAuthentication>([=](frmUserAuthentication& form) {
    fakes::Choose(form.cmbUserName, name);
    fakes::Type(form.txtPassword, password);
    fakes::Press(form.cmdOK);
  });
}

void Session::CancelSignIn(forms::ShiftState keys) {
  person.Expect<frmUserAuthentication>([=](frmUserAuthentication& form) { fakes::Press(form.cmdCancel, keys); });
}

void Session::OpenBackup() {
  person.Expect<frmMainMenu>([](frmMainMenu& form) { fakes::Press(form.cmdMenu[0]); });
}

void Session::StartBackup(const Ticks& ticks) {
  person.Expect<frmBackup>([=](frmBackup& form) {
    fakes::Tick(form.chkPatientData, ticks.patient);
    fakes::Tick(form.chkSystemData, ticks.system);
    fakes::Tick(form.chkLogData, ticks.log);
    fakes::Tick(form.chkReportData, ticks.report);
    if (ticks.deleteLogs) fakes::Tick(form.chkDeleteLog);
    fakes::Press(form.cmdStart);
  });
}

void Session::CancelBackup() {
  person.Expect<frmBackup>([](frmBackup& form) { fakes::Press(form.cmdCancel); });
}

void Session::AcceptFolder(const std::string& folder) {
  person.Expect<frmSelectFolder>([=](frmSelectFolder& form) {
    if (!folder.empty()) fakes::Type(form.txtFolder, folder);
    fakes::Press(form.cmdOK);
  });
}

void Session::CancelFolder() {
  person.Expect<frmSelectFolder>([](frmSelectFolder& form) { fakes::Press(form.cmdCancel); });
}

void Session::EndMenu(forms::ShiftState keys) {
  person.Expect<frmMainMenu>([=](frmMainMenu& form) { fakes::Press(form.cmdEnd, keys); });
}

void Session::BeginBackup(const Ticks& ticks) {
  SignIn(fakes::kServiceUser);
  OpenBackup();
  StartBackup(ticks);
}

void Session::LeaveBackup() {
  CancelBackup();
  EndMenu();
}

void Session::Run() {
  RunUnchecked();
  if (processes.ended || person.HasFailed()) return;
  EXPECT_EQ(toolkit.pointer, forms::Pointer::Default);
  EXPECT_EQ(disk.CurrentFolder(), fakes::kProgramFolder);
  EXPECT_NE(catalogue.state, fakes::FakeCatalogue::State::Open);
}

void Session::RunUnchecked() {
  hostFiles_ = disk.Tree(kHostRoot);
  app::Application application(Contracts(), toolkit);
  try {
    operator_access::Dialogs dialogs;
    app::Main(application, dialogs);
  } catch (const fakes::ProcessEnded&) {
  } catch (const fakes::ScriptFailed&) {  // the test has failed already
  }
  state = application.state;
}

std::vector<std::string> Session::ChangedHostFiles() {
  const auto now = disk.Tree(kHostRoot);
  std::vector<std::string> changed;
  for (const auto& [path, bytes] : hostFiles_)
    if (!MayChange(path) && (!now.contains(path) || now.at(path) != bytes)) changed.push_back(path);
  for (const auto& [path, bytes] : now)
    if (!MayChange(path) && !hostFiles_.contains(path)) changed.push_back(path);
  return changed;
}

bool Session::IsTemporaryFolderEmpty() {
  return disk.Children(files.temporaryFolder).empty();
}

bool Session::WasHostStarted() const {
  return processes.CountStarted("C:\\Tarsus\\System") > 0;
}

}  // namespace flows
