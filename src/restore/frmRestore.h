// The restore dialog: what the chosen backup set holds, and which of it to put back.
#pragma once

#include <array>
#include <cstdint>

#include "app/Application.h"
#include "backupset/Descriptor.h"
#include "forms/Form.h"
#include "jobs/JobDefinitions.h"
#include "media/MediaDrives.h"

namespace restore {

class frmRestore : public forms::Form {
 public:
  /// Reads the set in `SelectedFolder` when it is loaded. Definitions and drives outlive the form.
  frmRestore(app::Application& application, jobs::JobDefinitions& definitions, media::MediaDrives& drives);

  /// After loading: whether the set was accepted. When it was refused the operator has been told why.
  bool IsAccepted() const { return accepted_; }

  /// Whether a restore has fully succeeded.
  bool IsRestored() const { return restored_; }

  forms::Frame fraSystem{*this, "fraSystem", app::MessageId::SetFrameCaption};
  forms::Label lblAppVersion{*this, "lblAppVersion", app::MessageId::AppVersionCaption};
  forms::Label lblAppVersionValue{*this, "lblAppVersionValue", forms::kNoCaption};
  forms::Label lblBackupDate{*this, "lblBackupDate", app::MessageId::BackupDateCaption};
  forms::Label lblBackupDateValue{*this, "lblBackupDateValue", forms::kNoCaption};
  /// The same date as this workstation writes it, where the set was made in another form.
  forms::Label lblBackupDateLocal{*this, "lblBackupDateLocal", forms::kNoCaption};
  forms::Frame fraItem{*this, "fraItem", app::MessageId::RestoreFrameCaption};
  forms::CheckBox chkPatientData{*this, "chkPatientData", app::MessageId::RestorePatientCaption};
  forms::Label LblPatient{*this, "LblPatient", forms::kNoCaption};
  forms::Label lblPatientSize{*this, "lblPatientSize", forms::kNoCaption};
  forms::Label LblSetupInfo{*this, "LblSetupInfo", app::MessageId::SetupInfoCaption};
  forms::CheckBox chkMenuData{*this, "chkMenuData", app::MessageId::RestoreMenuDataCaption};
  forms::Label LblMenu{*this, "LblMenu", forms::kNoCaption};
  forms::Label lblMenuSize{*this, "lblMenuSize", forms::kNoCaption};
  forms::CheckBox chkSystemData{*this, "chkSystemData", app::MessageId::RestoreSystemCaption};
  forms::Label LblSystem{*this, "LblSystem", forms::kNoCaption};
  forms::Label lblSystemSize{*this, "lblSystemSize", forms::kNoCaption};
  forms::CheckBox chkUserData{*this, "chkUserData", app::MessageId::RestoreUserCaption};
  forms::Label LblUser{*this, "LblUser", forms::kNoCaption};
  forms::Label lblUserSize{*this, "lblUserSize", forms::kNoCaption};
  forms::CheckBox chkExplanationData{*this, "chkExplanationData", app::MessageId::RestoreExplanationCaption};
  forms::Label LblExplanation{*this, "LblExplanation", forms::kNoCaption};
  forms::Label lblExplanationSize{*this, "lblExplanationSize", forms::kNoCaption};
  forms::CheckBox chkReportSetData{*this, "chkReportSetData", app::MessageId::RestoreReportSetCaption};
  forms::Label LblReportSet{*this, "LblReportSet", forms::kNoCaption};
  forms::Label lblReportSetSize{*this, "lblReportSetSize", forms::kNoCaption};
  forms::CheckBox chkReportData{*this, "chkReportData", app::MessageId::RestoreReportCaption};
  forms::Label LblReport{*this, "LblReport", forms::kNoCaption};
  forms::Label lblReportSize{*this, "lblReportSize", forms::kNoCaption};
  forms::CheckBox chkIPCounter{*this, "chkIPCounter", app::MessageId::RestoreIPCounterCaption};
  forms::Label lblIPCounter{*this, "lblIPCounter", forms::kNoCaption};
  forms::Label lblIPCounterSize{*this, "lblIPCounterSize", forms::kNoCaption};
  forms::CommandButton cmdStart{*this, "cmdStart", app::MessageId::StartCaption};
  forms::CommandButton cmdCancel{*this, "cmdCancel", app::MessageId::CancelCaption};
  forms::ProgressBar prgJob{*this, "prgJob", app::MessageId::RestoreTitle};
  forms::Label lblProgress{*this, "lblProgress", forms::kNoCaption};

 protected:
  void OnLoad() override;
  void OnUnload() override;

 private:
  /// A category's box, the label with the note why it is not offered, and the one with the size of what is.
  struct Row {
    backupset::Category category;
    forms::CheckBox& box;
    forms::Label& note;
    forms::Label& size;
  };

  void Refuse(const base::Outcome& why);
  void ShowOffers(const backupset::Inspection& inspection);
  void ShowSize(const Row& row);
  void ShowLocalDate();
  void BoxClicked(const Row& row);
  void Start();
  void Run();
  void Stopped(const base::Outcome& why);
  void Release();
  bool IsPrivileged() const;
  backupset::Categories Ticked() const;

  app::Application& application_;
  jobs::JobDefinitions& definitions_;
  media::MediaDrives& drives_;
  std::array<Row, backupset::kRestoreOrder.size()> rows_;
  backupset::BackupSet set_;
  app::Watch watch_;
  std::int16_t ticked_ = 0;
  bool accepted_ = false;
  bool restored_ = false;
};

}  // namespace restore
