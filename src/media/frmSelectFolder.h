// The selection dialog: where a backup goes, or where a restore reads from.
#pragma once

#include "app/Application.h"
#include "app/ResultCodes.h"
#include "forms/Form.h"
#include "media/SelectionOperation.h"

namespace media {

/// Keeps the choice in `SelectedFolder`, always ending in "\", and runs the operation that it was
/// opened for when the operator presses OK.
class frmSelectFolder : public forms::Form {
 public:
  /// `operation` must live as long as the dialog is loaded.
  frmSelectFolder(app::Application& application, SelectionOperation& operation);

  void OnDeviceChanged(int deviceType) override;

  forms::Label lblLabel1{*this, "lblLabel1"};
  forms::TextBox txtFolder{*this, "txtFolder"};
  forms::CommandButton cmdRefer{*this, "cmdRefer"};
  forms::Label lblLabel2{*this, "lblLabel2"};
  forms::TextBox txtCapacity{*this, "txtCapacity"};
  forms::CommandButton cmdOK{*this, "cmdOK"};
  forms::CommandButton cmdCancel{*this, "cmdCancel"};

 protected:
  void OnLoad() override;
  void OnUnload() override;

 private:
  void Refer();
  void Accept();
  void Cancel();
  void TakeFolder();
  void ShowSpace();
  void EnableButtons(bool enabled);
  void ReportFailure(app::ResultCode result);

  app::Application& application_;
  SelectionOperation& operation_;
};

}  // namespace media
