// The backup dialog: what to back up.
#pragma once

#include <cstdint>

#include "backup/Categories.h"
#include "backup/JobContext.h"
#include "forms/Form.h"

namespace backup {

/// Offers four groups of categories and the deletion of logs; its start button gathers and packs them
/// and then shows the selection dialog. Stays open until a backup has succeeded or it is cancelled.
class frmBackup : public forms::Form {
 public:
  explicit frmBackup(const JobContext& job);

  forms::Frame fraBackup{*this, "fraBackup"};
  forms::CheckBox chkPatientData{*this, "chkPatientData"};
  forms::CheckBox chkSystemData{*this, "chkSystemData"};
  forms::CheckBox chkLogData{*this, "chkLogData"};
  forms::CheckBox chkReportData{*this, "chkReportData"};
  forms::CheckBox chkDeleteLog{*this, "chkDeleteLog"};
  forms::CommandButton cmdStart{*this, "cmdStart"};
  forms::CommandButton cmdCancel{*this, "cmdCancel"};

 protected:
  void OnLoad() override;
  void OnUnload() override;

 private:
  void CategoryClicked();
  void Start();
  void EnableAll();
  void DisableAll();
  CategoryChoice Choice() const;

  /// Gathers and packs the ticked categories: 0, or the ID of the message that says why not.
  std::int32_t GatherAndPack();
  void ChooseDestination();

  JobContext job_;
  app::Application& application_;
};

}  // namespace backup
