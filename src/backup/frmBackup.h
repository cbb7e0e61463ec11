// The backup dialog: what to back up.
#pragma once

#include "app/Application.h"
#include "backupset/Categories.h"
#include "forms/Form.h"
#include "jobs/JobDefinitions.h"
#include "media/MediaDrives.h"

namespace backup {

/// Offers four groups of categories and the deletion of logs; its start button gathers and packs them
/// and then shows the selection dialog. Stays open until a backup has succeeded or it is cancelled.
class frmBackup : public forms::Form {
 public:
  frmBackup(app::Application& application, jobs::JobDefinitions& definitions, media::MediaDrives& drives);

  forms::Frame fraBackup{*this, "fraBackup", app::MessageId::BackupFrameCaption};
  forms::CheckBox chkPatientData{*this, "chkPatientData", app::MessageId::BackupPatientCaption};
  forms::CheckBox chkSystemData{*this, "chkSystemData", app::MessageId::BackupSystemCaption};
  forms::CheckBox chkLogData{*this, "chkLogData", app::MessageId::BackupLogCaption};
  forms::CheckBox chkDeleteLog{*this, "chkDeleteLog", app::MessageId::DeleteLogCaption};
  forms::CheckBox chkReportData{*this, "chkReportData", app::MessageId::BackupReportCaption};
  forms::CommandButton cmdStart{*this, "cmdStart", app::MessageId::StartCaption};
  forms::CommandButton cmdCancel{*this, "cmdCancel", app::MessageId::CancelCaption};
  forms::ProgressBar prgJob{*this, "prgJob", app::MessageId::BackupTitle};
  forms::Label lblProgress{*this, "lblProgress", forms::kNoCaption};

 protected:
  void OnLoad() override;
  void OnUnload() override;

 private:
  void CategoryClicked();
  void Start();
  void EnableAll();
  void DisableAll();
  backupset::Boxes Choice() const;

  /// Gathers, packs, and has the destination chosen, where the set is written; whether that was done.
  bool BackUp();

  app::Application& application_;
  jobs::JobDefinitions& definitions_;
  media::MediaDrives& drives_;
};

}  // namespace backup
