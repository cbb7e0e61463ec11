// The tables of control IDs, one per template.
#include "windows/toolkit/ControlIds.h"

#include <algorithm>

#include "windows/resources/resource.h"

namespace windows {

namespace {

// Member and macro are one word, so that the two cannot be paired wrongly.
#define QX_CONTROL(form, control) \
  { #control, ID_##form##_##control }
#define QX_ERROR_LABEL(form, control) \
  { #control, ID_##form##_##control, kErrorColour }

constexpr forms::Colour kErrorColour = 0x0000C0;  // dark red

constexpr ControlId kUserAuthentication[] = {
    QX_CONTROL(frmUserAuthentication, lblLabel1), QX_CONTROL(frmUserAuthentication, cmbUserName),
    QX_CONTROL(frmUserAuthentication, lblLabel2), QX_CONTROL(frmUserAuthentication, txtPassword),
    QX_CONTROL(frmUserAuthentication, cmdOK),     QX_CONTROL(frmUserAuthentication, cmdCancel),
};

constexpr ControlId kMainMenu[] = {
    QX_CONTROL(frmMainMenu, cmdMenu0),
    QX_CONTROL(frmMainMenu, cmdMenu1),
    QX_CONTROL(frmMainMenu, cmdMenu2),
    QX_CONTROL(frmMainMenu, cmdEnd),
};

constexpr ControlId kBackup[] = {
    QX_CONTROL(frmBackup, fraBackup),  QX_CONTROL(frmBackup, chkPatientData), QX_CONTROL(frmBackup, chkSystemData),
    QX_CONTROL(frmBackup, chkLogData), QX_CONTROL(frmBackup, chkDeleteLog),   QX_CONTROL(frmBackup, chkReportData),
    QX_CONTROL(frmBackup, cmdStart),   QX_CONTROL(frmBackup, cmdCancel),
};

constexpr ControlId kSelectFolder[] = {
    QX_CONTROL(frmSelectFolder, lblLabel1),   QX_CONTROL(frmSelectFolder, txtFolder),
    QX_CONTROL(frmSelectFolder, cmdRefer),    QX_CONTROL(frmSelectFolder, lblLabel2),
    QX_CONTROL(frmSelectFolder, txtCapacity), QX_CONTROL(frmSelectFolder, cmdOK),
    QX_CONTROL(frmSelectFolder, cmdCancel),
};

constexpr ControlId kRestore[] = {
    QX_CONTROL(frmRestore, fraSystem),
    QX_CONTROL(frmRestore, lblAppVersion),
    QX_CONTROL(frmRestore, lblAppVersionValue),
    QX_CONTROL(frmRestore, lblBackupDate),
    QX_CONTROL(frmRestore, lblBackupDateValue),
    QX_CONTROL(frmRestore, fraItem),
    QX_CONTROL(frmRestore, chkPatientData),
    QX_CONTROL(frmRestore, LblPatient),
    QX_CONTROL(frmRestore, LblSetupInfo),
    QX_CONTROL(frmRestore, chkMenuData),
    QX_CONTROL(frmRestore, LblMenu),
    QX_CONTROL(frmRestore, chkSystemData),
    QX_CONTROL(frmRestore, LblSystem),
    QX_CONTROL(frmRestore, chkUserData),
    QX_CONTROL(frmRestore, LblUser),
    QX_CONTROL(frmRestore, chkExplanationData),
    QX_CONTROL(frmRestore, LblExplanation),
    QX_CONTROL(frmRestore, chkReportSetData),
    QX_CONTROL(frmRestore, LblReportSet),
    QX_CONTROL(frmRestore, chkReportData),
    QX_CONTROL(frmRestore, LblReport),
    QX_CONTROL(frmRestore, chkIPCounter),
    QX_CONTROL(frmRestore, lblIPCounter),
    QX_CONTROL(frmRestore, cmdStart),
    QX_CONTROL(frmRestore, cmdCancel),
};

constexpr ControlId kMaintenance[] = {
    QX_CONTROL(frmMaintenance, lblLabel1),       QX_CONTROL(frmMaintenance, lblLabel2),
    QX_CONTROL(frmMaintenance, txtPatientCount), QX_ERROR_LABEL(frmMaintenance, lblError1),
    QX_CONTROL(frmMaintenance, lblLabel3),       QX_CONTROL(frmMaintenance, txtStudyCount),
    QX_ERROR_LABEL(frmMaintenance, lblError2),   QX_CONTROL(frmMaintenance, lblLabel4),
    QX_CONTROL(frmMaintenance, txtUserCount),    QX_ERROR_LABEL(frmMaintenance, lblError3),
    QX_CONTROL(frmMaintenance, lblLabel5),       QX_CONTROL(frmMaintenance, Frame1),
    QX_CONTROL(frmMaintenance, Option1),         QX_CONTROL(frmMaintenance, Option2),
    QX_CONTROL(frmMaintenance, Frame2),          QX_CONTROL(frmMaintenance, Option3),
    QX_CONTROL(frmMaintenance, Option4),         QX_CONTROL(frmMaintenance, txtCollectRange),
    QX_CONTROL(frmMaintenance, lblLabel7),       QX_CONTROL(frmMaintenance, cmdStart),
    QX_CONTROL(frmMaintenance, cmdCancel),
};

#undef QX_CONTROL
#undef QX_ERROR_LABEL

struct FormControls {
  std::string_view form;
  std::span<const ControlId> controls;
};

constexpr FormControls kForms[] = {
    {"frmUserAuthentication", kUserAuthentication},
    {"frmMainMenu", kMainMenu},
    {"frmBackup", kBackup},
    {"frmSelectFolder", kSelectFolder},
    {"frmRestore", kRestore},
    {"frmMaintenance", kMaintenance},
};

}  // namespace

std::span<const ControlId> ControlIdsOf(std::string_view formName) {
  const auto* found = std::ranges::find(kForms, formName, &FormControls::form);
  return found == std::end(kForms) ? std::span<const ControlId>() : found->controls;
}

const ControlId* FindControlId(std::string_view formName, std::string_view controlName) {
  const auto controls = ControlIdsOf(formName);
  const auto found = std::ranges::find(controls, controlName, &ControlId::name);
  return found == controls.end() ? nullptr : &*found;
}

}  // namespace windows
