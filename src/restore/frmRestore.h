// The restore dialog: what the chosen backup set holds, and which of it to put back.
#pragma once

#include <array>
#include <cstdint>

#include "backup/JobDefinitions.h"
#include "forms/Form.h"
#include "restore/BackupSet.h"

namespace restore {

class frmRestore : public forms::Form {
 public:
  /// Reads the set in `SelectedFolder` when it is loaded. The definitions outlive the form.
  frmRestore(app::Application& application, backup::JobDefinitions& definitions);

  /// After loading: 1 when the set was accepted, -1 when it was refused (and the operator told why).
  std::int16_t LoadResult() const { return loadResult_; }

  forms::Frame fraSystem{*this, "fraSystem"};
  forms::Label lblAppVersion{*this, "lblAppVersion"};
  forms::Label lblAppVersionValue{*this, "lblAppVersionValue"};
  forms::Label lblBackupDate{*this, "lblBackupDate"};
  forms::Label lblBackupDateValue{*this, "lblBackupDateValue"};
  forms::Frame fraItem{*this, "fraItem"};
  forms::CheckBox chkPatientData{*this, "chkPatientData"};
  forms::Label LblPatient{*this, "LblPatient"};
  forms::Label LblSetupInfo{*this, "LblSetupInfo"};
  forms::CheckBox chkMenuData{*this, "chkMenuData"};
  forms::Label LblMenu{*this, "LblMenu"};
  forms::CheckBox chkSystemData{*this, "chkSystemData"};
  forms::Label LblSystem{*this, "LblSystem"};
  forms::CheckBox chkUserData{*this, "chkUserData"};
  forms::Label LblUser{*this, "LblUser"};
  forms::CheckBox chkExplanationData{*this, "chkExplanationData"};
  forms::Label LblExplanation{*this, "LblExplanation"};
  forms::CheckBox chkReportSetData{*this, "chkReportSetData"};
  forms::Label LblReportSet{*this, "LblReportSet"};
  forms::CheckBox chkReportData{*this, "chkReportData"};
  forms::Label LblReport{*this, "LblReport"};
  forms::CheckBox chkIPCounter{*this, "chkIPCounter"};
  forms::Label lblIPCounter{*this, "lblIPCounter"};
  forms::CommandButton cmdStart{*this, "cmdStart"};
  forms::CommandButton cmdCancel{*this, "cmdCancel"};

 protected:
  void OnLoad() override;
  void OnUnload() override;

 private:
  /// A category's box and the label with the note beside it, in the categories' order.
  struct Row {
    forms::CheckBox& box;
    forms::Label& note;
  };

  void SetCaptions();
  void Refuse(std::int32_t message);
  void ShowOffers(const BackupSet& set);
  void BoxClicked(std::size_t category);
  void Start();
  void Run();
  void Stopped();
  void Release();
  bool IsPrivileged() const;
  Selection Ticked() const;

  app::Application& application_;
  backup::JobDefinitions& definitions_;
  std::array<Row, kCategories> rows_;
  std::int16_t ticked_ = 0;
  std::int16_t loadResult_ = 0;
  bool placed_ = false;
};

}  // namespace restore
