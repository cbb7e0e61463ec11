// The maintenance dialog: what goes into a maintenance log backup.
#include "maintenance/frmMaintenance.h"

#include <charconv>
#include <limits>
#include <system_error>

#include "app/Appearance.h"
#include "app/Captions.h"
#include "app/Messages.h"
#include "app/WindowsPath.h"
#include "media/Question.h"

namespace maintenance {
namespace {

constexpr char kPositionKey[] = "Maintenance";
constexpr std::int32_t kCountUnreadable = 66105;
constexpr std::int32_t kCountsUnreadable = 60520;
constexpr std::int32_t kConfirmUnprotected = 64530;
constexpr char32_t kBackspace = 8;

/// One of the counts that the dialog shows.
struct Count {
  const char* statement;
  forms::TextBox frmMaintenance::*box;
  forms::Label frmMaintenance::*error;
  bool warns;  ///< a missing patient count is only marked: what is collected does not depend on it
};

constexpr Count kCounts[] = {
    {"SELECT * FROM Patient.dbo.T_TPATIENT", &frmMaintenance::txtPatientCount, &frmMaintenance::lblError1, false},
    {"SELECT * FROM Study.dbo.T_TSTUDY", &frmMaintenance::txtStudyCount, &frmMaintenance::lblError2, true},
    {"SELECT * FROM UserData.dbo.T_MUSER", &frmMaintenance::txtUserCount, &frmMaintenance::lblError3, true}};

/// Whether the count could be read; `count` is what the component answered either way.
bool CountRows(host::StudyDatabaseQuery* query, const char* statement, std::int32_t& count) {
  if (query == nullptr) return false;
  std::int32_t openError = 0;
  std::int32_t countError = 0;
  query->OpenQuery(statement, openError);
  count = query->RecordCount(countError);
  return openError == 0 && countError == 0;
}

}  // namespace

frmMaintenance::frmMaintenance(app::Application& application)
    : forms::Form(application.toolkit, "frmMaintenance"), application_(application) {
  Option3.Clicked = [this] {
    if (Option3.Value()) EnableRange(false);
  };
  Option4.Clicked = [this] {
    if (Option4.Value()) EnableRange(true);
  };
  txtCollectRange.AcceptsKey = [](char32_t key) { return key == kBackspace || (key >= U'0' && key <= U'9'); };
  cmdStart.Clicked = [this](forms::ShiftState) { Start(); };
  cmdCancel.Clicked = [this](forms::ShiftState) { Hide(); };
  SetDefaultButton(cmdStart);
  SetCancelButton(cmdCancel);
}

void frmMaintenance::OnLoad() {
  application_.toolkit.SetPointer(forms::Pointer::Hourglass);
  app::RestoreDialogPosition(application_, kPositionKey, *this);
  app::SetDialogCaptions(application_, app::DialogNumber::Maintenance, *this);
  app::ApplyControlAppearance(application_, *this);
  Option1.SetValue(true);
  Option3.SetValue(true);
  ShowCounts();
}

void frmMaintenance::OnUnload() {
  app::SaveDialogPosition(application_, kPositionKey, *this);
}

void frmMaintenance::ShowCounts() {
  bool warns = false;
  {
    const auto query = application_.host.components.CreateStudyDatabaseQuery();
    for (const Count& each : kCounts) {
      std::int32_t count = 0;
      if (!CountRows(query.get(), each.statement, count)) {
        (this->*each.error).SetCaption(app::GetMessageText(application_, kCountUnreadable));
        warns = warns || each.warns;
      }
      (this->*each.box).SetText(std::to_string(count));
    }
  }
  application_.toolkit.SetPointer(forms::Pointer::Default);
  if (warns) app::ShowMessage(application_, kCountsUnreadable);
}

void frmMaintenance::EnableRange(bool enabled) {
  txtCollectRange.SetEnabled(enabled);
  lblLabel7.SetEnabled(enabled);
}

void frmMaintenance::Start() {
  if (Option2.Value() && !media::Consents(application_, kConfirmUnprotected)) return;
  collectsImages_ = Option3.Value() ? 0 : 1;
  dayCount_ = Option3.Value() ? kAllDays : LeadingNumber(txtCollectRange.Text());
  result_ = Option2.Value() ? Choice::Unprotected : Choice::Protected;
  Hide();
}

std::int32_t LeadingNumber(const std::string& text) {
  const std::string trimmed = app::Trim(text);
  std::uint32_t number = 0;  // without a sign: a pasted "-" is no digit
  const auto [end, error] = std::from_chars(trimmed.data(), trimmed.data() + trimmed.size(), number);
  constexpr std::int32_t kLargest = std::numeric_limits<std::int32_t>::max();
  const bool tooLarge = error == std::errc::result_out_of_range || number > std::uint32_t{kLargest};
  return tooLarge ? kLargest : static_cast<std::int32_t>(number);
}

}  // namespace maintenance
