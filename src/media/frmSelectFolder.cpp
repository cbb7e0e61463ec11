// The selection dialog: where a backup goes, or where a restore reads from.
#include "media/frmSelectFolder.h"

#include "base/Path.h"
#include "base/Text.h"

namespace media {
namespace {

constexpr int kVolume = 2;

}  // namespace

frmSelectFolder::frmSelectFolder(app::Application& application, MediaDrives& drives, SelectionOperation& operation)
    : forms::Form(application.toolkit, "frmSelectFolder", app::MessageId::SelectFolderTitle),
      application_(application),
      drives_(drives),
      operation_(operation) {
  cmdRefer.Clicked = [this](forms::ShiftState) { Refer(); };
  cmdOK.Clicked = [this](forms::ShiftState) { Accept(); };
  cmdCancel.Clicked = [this](forms::ShiftState) { Cancel(); };
  SetDefaultButton(cmdOK);
  SetCancelButton(cmdCancel);
}

void frmSelectFolder::OnLoad() {
  application_.log.WriteLog(app::LogLevel::Information, "Start Select Folder");
  app::PrepareDialog(application_, *this);
  application_.state.SelectedFolder = operation_.ProposeFolder();
  txtFolder.SetText(application_.state.SelectedFolder);
  const bool showsSpace = operation_.SpaceNeeded().has_value();
  lblLabel2.SetVisible(showsSpace);
  txtCapacity.SetVisible(showsSpace);
  ShowSpace();
  application_.toolkit.SetPointer(forms::Pointer::Default);
}

void frmSelectFolder::OnUnload() {
  operation_.Unloaded();
  app::SaveDialogPosition(application_.host.qx32, *this);
}

void frmSelectFolder::OnDeviceChanged(int deviceType) {
  if (deviceType == kVolume) ShowSpace();
}

void frmSelectFolder::Refer() {
  application_.log.WriteLog(app::LogLevel::Information, "Refer Folder");
  EnableButtons(false);
  const std::string title = application_.messages.GetMessageText(app::MessageId::BrowserTitle);
  const std::string folder = application_.host.shell.BrowseForFolder(title, operation_.BrowseFrom(txtFolder.Text()));
  EnableButtons(true);
  if (folder.empty()) return;
  txtFolder.SetText(folder);
  TakeFolder();
  ShowSpace();
  cmdOK.SetFocus();  // where the operator goes on
}

void frmSelectFolder::Accept() {
  application_.log.WriteLog(app::LogLevel::Information, "Selected Folder");
  EnableButtons(false);
  // Taken here and not while it is typed: the text box stays open to the operator during the run.
  TakeFolder();
  const bool stopped = Run() == base::Result::Stopped;
  application_.toolkit.SetPointer(forms::Pointer::Default);
  EnableButtons(true);
  if (!stopped) return Close();
  const std::string meant = operation_.MeantFolder();
  if (meant.empty()) return;
  txtFolder.SetText(meant);
  txtFolder.SetFocus();
}

base::Outcome frmSelectFolder::Run() {
  const app::Progress::Job shown(application_.progress, prgJob, lblProgress);
  base::Outcome outcome = operation_.Run();
  if (!outcome.IsDone() && outcome != base::Result::Stopped) {
    application_.progress.Fail();
    application_.failures.Show(outcome);
  }
  return outcome;
}

void frmSelectFolder::Cancel() {
  application_.log.WriteLog(app::LogLevel::Information, "Cancel Select Folder");
  Close();
}

void frmSelectFolder::TakeFolder() {
  application_.state.SelectedFolder = base::WithTrailingBackslash(base::Trim(txtFolder.Text()));
}

void frmSelectFolder::ShowSpace() {
  const std::optional<std::uint64_t> needed = operation_.SpaceNeeded();
  if (needed) txtCapacity.SetText(drives_.GetCapacityText(application_.state.SelectedFolder, *needed));
}

void frmSelectFolder::EnableButtons(bool enabled) {
  cmdCancel.SetEnabled(enabled);
  cmdRefer.SetEnabled(enabled);
  cmdOK.SetEnabled(enabled);
}

}  // namespace media
