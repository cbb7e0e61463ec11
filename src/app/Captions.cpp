// Captions of the dialogs, all from the message catalogue.
#include "app/Captions.h"

#include <algorithm>
#include <string>

#include "app/Messages.h"

namespace app {
namespace {

/// One caption; an empty control name means the dialog's title.
struct CaptionRow {
  DialogNumber dialog;
  std::int32_t id;
  const char* control;
};

// In the order in which the captions are set. 66001 to 66005 are words that dialogs share.
constexpr CaptionRow kCaptions[] = {
    {DialogNumber::UserAuthentication, 66010, ""},
    {DialogNumber::UserAuthentication, 66011, "lblLabel1"},
    {DialogNumber::UserAuthentication, 66012, "lblLabel2"},
    {DialogNumber::UserAuthentication, 66001, "cmdOK"},
    {DialogNumber::UserAuthentication, 66002, "cmdCancel"},
    {DialogNumber::MainMenu, 66020, ""},
    {DialogNumber::MainMenu, 66021, "cmdMenu0"},
    {DialogNumber::MainMenu, 66022, "cmdMenu1"},
    {DialogNumber::MainMenu, 66023, "cmdMenu2"},
    {DialogNumber::MainMenu, 66003, "cmdEnd"},
    {DialogNumber::Backup, 66030, ""},
    {DialogNumber::Backup, 66035, "fraBackup"},
    {DialogNumber::Backup, 66031, "chkPatientData"},
    {DialogNumber::Backup, 66032, "chkSystemData"},
    {DialogNumber::Backup, 66033, "chkLogData"},
    {DialogNumber::Backup, 66034, "chkDeleteLog"},
    {DialogNumber::Backup, 66036, "chkReportData"},
    {DialogNumber::Backup, 66004, "cmdStart"},
    {DialogNumber::Backup, 66002, "cmdCancel"},
    {DialogNumber::Maintenance, 66100, ""},
    {DialogNumber::Maintenance, 66101, "lblLabel1"},
    {DialogNumber::Maintenance, 66106, "lblLabel2"},
    {DialogNumber::Maintenance, 66107, "lblLabel3"},
    {DialogNumber::Maintenance, 66108, "lblLabel4"},
    {DialogNumber::Maintenance, 66004, "cmdStart"},
    {DialogNumber::Maintenance, 66002, "cmdCancel"},
    {DialogNumber::Maintenance, 66102, "Frame1"},
    {DialogNumber::Maintenance, 66103, "Option1"},
    {DialogNumber::Maintenance, 66104, "Option2"},
    {DialogNumber::Maintenance, 66115, "lblLabel5"},
    {DialogNumber::Maintenance, 66117, "Frame2"},
    {DialogNumber::Maintenance, 66118, "Option3"},
    {DialogNumber::Maintenance, 66119, "Option4"},
    {DialogNumber::Maintenance, 66120, "lblLabel7"},
    {DialogNumber::SelectFolder, 66040, ""},
    {DialogNumber::SelectFolder, 66041, "lblLabel1"},
    {DialogNumber::SelectFolder, 66042, "lblLabel2"},
    {DialogNumber::SelectFolder, 66005, "cmdRefer"},
    {DialogNumber::SelectFolder, 66001, "cmdOK"},
    {DialogNumber::SelectFolder, 66002, "cmdCancel"},
};

void SetControlCaption(forms::Form& form, const std::string& name, const std::string& caption) {
  const auto& controls = form.Controls();
  const auto found = std::find_if(controls.begin(), controls.end(),
                                  [&](const forms::Control* control) { return control->Name() == name; });
  if (found != controls.end()) (*found)->SetCaption(caption);
}

}  // namespace

void SetDialogCaptions(Application& application, DialogNumber dialog, forms::Form& form) {
  for (const CaptionRow& row : kCaptions) {
    if (row.dialog != dialog) continue;
    const std::string caption = GetMessageText(application, row.id);
    if (*row.control == '\0') {
      form.SetTitle(caption);
    } else {
      SetControlCaption(form, row.control, caption);
    }
  }
}

}  // namespace app
