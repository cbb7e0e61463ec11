// The maintenance dialog: what goes into a maintenance log backup.
#include "maintenance/frmMaintenance.h"

#include <algorithm>

#include "base/Text.h"

namespace maintenance {
namespace {

constexpr char32_t kBackspace = 8;

/// One of the counts that the dialog shows.
struct Count {
  const char* what;
  const char* statement;
  forms::TextBox frmMaintenance::*box;
  forms::Label frmMaintenance::*error;
  bool warns;  ///< a missing patient count is only marked: what is collected does not depend on it
};

constexpr Count kCounts[] = {
    {"patients", "SELECT * FROM Patient.dbo.T_TPATIENT", &frmMaintenance::txtPatientCount, &frmMaintenance::lblError1,
     false},
    {"studies", "SELECT * FROM Study.dbo.T_TSTUDY", &frmMaintenance::txtStudyCount, &frmMaintenance::lblError2, true},
    {"users", "SELECT * FROM UserData.dbo.T_MUSER", &frmMaintenance::txtUserCount, &frmMaintenance::lblError3, true}};

/// Fails when the count could not be read; `count` is what the component answered either way.
base::Outcome CountRows(host::StudyDatabaseQuery* query, const char* statement, std::int32_t& count) {
  if (query == nullptr) return base::Failure("the study database query cannot be created");
  base::Outcome opened = query->OpenQuery(statement);
  base::Outcome counted = query->RecordCount(count);
  return opened.IsDone() ? counted : opened;
}

}  // namespace

frmMaintenance::frmMaintenance(app::Application& application)
    : forms::Form(application.toolkit, "frmMaintenance", app::MessageId::MaintenanceTitle), application_(application) {
  Option3.Clicked = [this] {
    if (Option3.Value()) EnableRange(false);
  };
  Option4.Clicked = [this] {
    if (Option4.Value()) EnableRange(true);
  };
  txtCollectRange.AcceptsKey = [](char32_t key) { return key == kBackspace || (key >= U'0' && key <= U'9'); };
  cmdStart.Clicked = [this](forms::ShiftState) { Start(); };
  cmdCancel.Clicked = [this](forms::ShiftState) { Cancel(); };
  SetDefaultButton(cmdStart);
  SetCancelButton(cmdCancel);
}

void frmMaintenance::OnLoad() {
  application_.log.WriteLog(app::LogLevel::Information, "Start Select Information for Maintenance Log");
  application_.toolkit.SetPointer(forms::Pointer::Hourglass);
  app::PrepareDialog(application_, *this);
  Option1.SetValue(true);
  Option3.SetValue(true);
  ShowCounts();
}

void frmMaintenance::OnUnload() {
  app::SaveDialogPosition(application_.host.qx32, *this);
}

void frmMaintenance::ShowCounts() {
  base::Outcome missing;
  {
    const auto query = application_.host.components.CreateStudyDatabaseQuery();
    for (const Count& each : kCounts) {
      std::int32_t count = 0;
      if (const base::Outcome read = CountRows(query.get(), each.statement, count); !read.IsDone()) {
        (this->*each.error).SetCaption(application_.messages.GetMessageText(app::MessageId::CountUnreadable));
        application_.failures.Note(std::string("Count not read (") + each.what + ")", read);
        if (each.warns) missing = {base::Result::Failed, app::MessageId::CountsUnreadable, read.cause};
      }
      (this->*each.box).SetText(std::to_string(count));
    }
  }
  application_.toolkit.SetPointer(forms::Pointer::Default);
  if (!missing.IsDone()) application_.failures.Show(missing);
}

void frmMaintenance::EnableRange(bool enabled) {
  txtCollectRange.SetEnabled(enabled);
  lblLabel7.SetEnabled(enabled);
}

void frmMaintenance::Start() {
  if (Option2.Value() && !application_.messages.Consents(app::MessageId::AskUnprotected)) return;
  collectsImages_ = Option3.Value() ? 0 : 1;
  dayCount_ = Option3.Value() ? jobs::kAllDays : std::min(base::LeadingNumber(txtCollectRange.Text()), jobs::kAllDays);
  result_ = Option2.Value() ? Choice::Unprotected : Choice::Protected;
  const std::string images = Option3.Value() ? "all images" : "images of " + std::to_string(dayCount_) + " days";
  application_.log.WriteLog(app::LogLevel::Information,
                            "Selected Information for Maintenance Log : personal information " +
                                std::string(Option2.Value() ? "included, " : "protected, ") + images);
  for (forms::Control* const control : std::initializer_list<forms::Control*>{
           &Option1, &Option2, &Option3, &Option4, &txtCollectRange, &cmdStart, &cmdCancel}) {
    control->SetEnabled(false);
  }
  if (Started) Started();
  Hide();
}

void frmMaintenance::Cancel() {
  application_.log.WriteLog(app::LogLevel::Information, "Cancel Select Information for Maintenance Log");
  Hide();
}

}  // namespace maintenance
