#include "unit/Session.h"

#include <algorithm>
#include <iterator>

#include "app/StartUp.h"

namespace {

using enum base::MessageId;

constexpr const char* kHostRoot = "C:\\Tarsus";

constexpr const char* kOwnFiles[] = {"Log\\BackupUtility.log", "Log\\BackupUtilityJobs.csv", "Data\\Patients.bcp",
                                     "Config\\Station.mdb", "Param\\Protocol.mdb"};

/// Of each dialog: its title, and the captions of its controls in their order.
const std::map<std::string, Ids> kCaptions = {
    {"frmUserAuthentication", {SignInTitle, UserCaption, PasswordCaption, OkCaption, CancelCaption}},
    {"frmMainMenu",
     {MainMenuTitle, BackupMenuCaption, RestoreMenuCaption, MaintenanceMenuCaption, EndCaption, PastJobsCaption}},
    {"frmBackup",
     {BackupTitle, BackupFrameCaption, BackupPatientCaption, BackupSystemCaption, BackupLogCaption, DeleteLogCaption,
      BackupReportCaption, StartCaption, CancelCaption}},
    {"frmSelectFolder", {SelectFolderTitle, FolderCaption, BrowseCaption, SpaceCaption, OkCaption, CancelCaption}},
    {"frmRestore",
     {RestoreTitle, SetFrameCaption, AppVersionCaption, BackupDateCaption, RestoreFrameCaption, RestorePatientCaption,
      SetupInfoCaption, RestoreMenuDataCaption, RestoreSystemCaption, RestoreUserCaption, RestoreExplanationCaption,
      RestoreReportSetCaption, RestoreReportCaption, RestoreIPCounterCaption, StartCaption, CancelCaption}},
    {"frmMaintenance",
     {MaintenanceTitle, MaintenanceIntroduction, PatientCountCaption, StudyCountCaption, UserCountCaption, ImagesHint,
      PrivacyFrameCaption, ProtectCaption, IncludeCaption, ImagesFrameCaption, AllImagesCaption, RecentImagesCaption,
      DaysCaption, StartCaption, CancelCaption}},
    {"frmJobs", {JobsTitle, JobsCaption, SummaryCaption, PrintCaption, CloseCaption}},
};

}  // namespace

void Session::SignIn(const std::string& name, const std::string& password) {
  At<frmUserAuthentication>([=](frmUserAuthentication& form) {
    fakes::Choose(form.cmbUserName, name);
    fakes::Type(form.txtPassword, password);
    fakes::Press(form.cmdOK);
  });
}

void Session::StartBackup(const Ticks& ticks) {
  At<frmBackup>([=](frmBackup& form) {
    fakes::Tick(form.chkPatientData, ticks.patient);
    fakes::Tick(form.chkSystemData, ticks.system);
    fakes::Tick(form.chkLogData, ticks.log);
    fakes::Tick(form.chkReportData, ticks.report);
    if (ticks.deleteLogs) fakes::Tick(form.chkDeleteLog);
    fakes::Press(form.cmdStart);
  });
}

void Session::StartRestore(const Boxes& ticks) {
  At<frmRestore>([=](frmRestore& form) {
    for (const Box box : kAllBoxes)
      if (BoxOf(form, box).Value() != ticks.contains(box)) fakes::Tick(BoxOf(form, box), ticks.contains(box));
    fakes::Press(form.cmdStart);
  });
}

void Session::StartMaintenance(bool unprotected) {
  At<frmMaintenance>([=](frmMaintenance& form) {
    if (unprotected) fakes::Tick(form.Option2);
    fakes::Press(form.cmdStart);
  });
  if (unprotected) See({AskUnprotected});
}

void Session::AcceptFolder(const std::string& folder) {
  At<frmSelectFolder>([=](frmSelectFolder& form) {
    EXPECT_EQ(form.txtCapacity.Visible(), !form.txtCapacity.Text().empty())
        << "no space is shown where nothing is written";
    EXPECT_EQ(form.lblLabel2.Visible(), form.txtCapacity.Visible());
    if (!folder.empty()) fakes::Type(form.txtFolder, folder);
    fakes::Press(form.cmdOK);
  });
}

void Session::See(const Ids& messages, host::Answer answer) {
  for (const base::MessageId id : messages) person.ExpectMessage(id, answer);
}

void Session::BeginBackup(const Ticks& ticks) {
  SignIn();
  OpenMenuItem(Menu::Backup);
  StartBackup(ticks);
}

void Session::BackUpTo(const std::string& folder, const Ticks& ticks) {
  BeginBackup(ticks);
  AcceptFolder(folder);
}

void Session::BeginRestore(const std::string& folder, const std::string& user) {
  SignIn(user);
  OpenMenuItem(Menu::Restore);
  AcceptFolder(folder);
}

void Session::EndAfter(const Ids& messages) {
  See(messages);
  Press(&frmMainMenu::cmdEnd, kShift);
  Run();
}

void Session::LeaveBackupAfter(const Ids& messages, host::Answer answer) {
  See(messages, answer);
  if (!messages.empty() && messages.back() == BackupStopped) Cancel<frmSelectFolder>();
  At<frmBackup>([](frmBackup& form) {
    EXPECT_EQ(form.chkDeleteLog.Enabled(), form.chkLogData.Value());
    fakes::Press(form.cmdCancel);
  });
  EndAfter({});
  EXPECT_EQ(ChangedHostFiles(), Paths());
  EXPECT_EQ(IsBackupDated(), !messages.empty() && messages.back() == BackupNotRecorded);
}

void Session::LeaveRestoreAfter(const Ids& messages, host::Answer answer) {
  See(messages, answer);
  if (!messages.empty() && messages.back() == RestoreStopped) Cancel<frmRestore>();
  Cancel<frmSelectFolder>();
  EndAfter({});
}

void Session::Run() {
  RunUnchecked();
  if (processes.ended || person.HasFailed()) return;
  EXPECT_EQ(toolkit.pointer, forms::Pointer::Default);
  EXPECT_EQ(disk.CurrentFolder(), fakes::kProgramFolder);
  EXPECT_NE(catalogue.state, fakes::FakeCatalogue::State::Open);
  EXPECT_EQ(IsTemporaryFolderEmpty(), !leavesStagingFolder);
  for (const auto& [name, left] : places_) EXPECT_EQ(qx32.numbers[name], left) << name;
}

void Session::ExpectReadyForInput(const forms::Form& form) const {
  Names captions = {form.Title()};
  for (const forms::Control* control : form.Controls()) {
    const bool isBar = control->Kind() == forms::ControlKind::ProgressBar;
    if (control->CaptionId() != forms::kNoCaption && !isBar) captions.push_back(control->Caption());
    EXPECT_TRUE(!isBar || (!control->Caption().empty() && !control->Visible())) << form.Name();
  }
  Names wanted;
  for (const base::MessageId id : kCaptions.at(form.Name()))
    wanted.push_back(catalogue.rows.contains(id) ? *catalogue.rows.at(id) : "Not Defined!");
  EXPECT_EQ(captions, wanted) << form.Name();
  EXPECT_NE(form.CancelButton(), nullptr) << form.Name();
  EXPECT_EQ(form.DefaultButton() == nullptr, form.Name() == "frmMainMenu") << form.Name();
  EXPECT_EQ(toolkit.pointer, forms::Pointer::Default) << form.Name();
  for (const forms::Control* control : form.Controls())
    EXPECT_NE(control->Look().fontName, "") << form.Name() << "." << control->Name();
}

void Session::ExpectPlaceAndMove(forms::Form& form) {
  const std::string name = "BackupUtility\\dlg" + form.Name().substr(3) + "Left";
  const auto left = static_cast<std::uint32_t>(form.Left());
  const auto& known = places_.contains(name) ? places_ : qx32.numbers;
  const auto place = known.find(name);  // a dialog notes its place as soon as it opens
  EXPECT_TRUE(place != known.end() && place->second == left) << name;
  form.TakePlace(form.Left() + 1, form.Top());
  places_[name] = left + 1;
}

void Session::ExpectBusy(const std::string& commandLine) const {
  EXPECT_EQ(toolkit.pointer, forms::Pointer::Hourglass) << commandLine;
  if (!worked_ || !worked_->Enabled()) return;
  for (const forms::Control* control : worked_->Controls()) {
    const bool isButton = dynamic_cast<const forms::CommandButton*>(control) != nullptr;
    EXPECT_FALSE(isButton && control->Enabled()) << worked_->Name() << "." << control->Name();
  }
}

void Session::RunUnchecked() {
  worked_ = nullptr;
  processes.beforeWork = [this, before = std::move(processes.beforeWork)](const std::string& command) {
    ExpectBusy(command);
    if (before) before(command);
  };
  hostFiles_ = disk.Tree(kHostRoot);
  app::Application application(Contracts(), toolkit);
  try {
    qx::access::Dialogs dialogs;
    app::Main(application, dialogs);
    EXPECT_EQ(Told().living, std::multiset<std::string>()) << "left to the end of the process";
  } catch (const fakes::ProcessEnded&) {
  } catch (const fakes::ScriptFailed&) {  // the test has failed already
  }
  state = application.state;
}

void Session::BackUpEverything() {
  BackUpTo(kSetFolder, kEverything);
  EndAfter({AskMakeBackupFolder, BackupComplete});
  Told().auditRecords.clear();
  Told().logLines.clear();
  Told().operations.clear();
  processes.started.clear();
}

void Session::InsertDisk(const MediumFiles& contents) {
  disk.FindDrive("A:")->ready = true;
  disk.Format("A:");
  for (const auto& [name, bytes] : contents) EXPECT_TRUE(disk.Write("A:\\" + name, bytes));
}

Paths Session::ChangedHostFiles() {
  const MediumFiles now = disk.Tree(kHostRoot);
  MediumFiles changed;
  std::set_symmetric_difference(hostFiles_.begin(), hostFiles_.end(), now.begin(), now.end(),
                                std::inserter(changed, changed.end()));
  for (const char* path : kOwnFiles) changed.erase(path);
  return NamesOf(changed);
}

Paths DescriptorLines(const Paths& more) {
  Paths lines = {"[Info]", "AppVersion=3.00", "Date=2012/03/15 09:30:12", "AppType=Tarsus"};
  lines.insert(lines.end(), more.begin(), more.end());
  return lines;
}

std::string Lines(const Paths& lines, const std::string& end) {
  std::string text;
  for (const std::string& line : lines) text += line + end;
  return text;
}
