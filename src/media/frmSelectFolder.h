// The selection dialog: where a backup goes, or where a restore reads from.
#pragma once

#include "app/Application.h"
#include "forms/Form.h"
#include "media/MediaDrives.h"
#include "media/SelectionOperation.h"

namespace media {

/// Keeps the choice in `SelectedFolder`, always ending in "\", and runs the operation that it was
/// opened for when the operator presses OK.
class frmSelectFolder : public forms::Form {
 public:
  /// `drives` and `operation` must live as long as the dialog is loaded.
  frmSelectFolder(app::Application& application, MediaDrives& drives, SelectionOperation& operation);

  void OnDeviceChanged(int deviceType) override;

  forms::Label lblLabel1{*this, "lblLabel1", app::MessageId::FolderCaption};
  forms::TextBox txtFolder{*this, "txtFolder"};
  forms::CommandButton cmdRefer{*this, "cmdRefer", app::MessageId::BrowseCaption};
  forms::Label lblLabel2{*this, "lblLabel2", app::MessageId::SpaceCaption};
  forms::TextBox txtCapacity{*this, "txtCapacity"};
  forms::CommandButton cmdOK{*this, "cmdOK", app::MessageId::OkCaption};
  forms::CommandButton cmdCancel{*this, "cmdCancel", app::MessageId::CancelCaption};
  forms::ProgressBar prgJob{*this, "prgJob", app::MessageId::SelectFolderTitle};
  forms::Label lblProgress{*this, "lblProgress", forms::kNoCaption};

 protected:
  void OnLoad() override;
  void OnUnload() override;

 private:
  void Refer();
  void Accept();
  /// Runs the operation, and shows its failure.
  base::Outcome Run();
  void Cancel();
  void TakeFolder();
  void ShowSpace();
  void EnableButtons(bool enabled);

  app::Application& application_;
  MediaDrives& drives_;
  SelectionOperation& operation_;
};

}  // namespace media
