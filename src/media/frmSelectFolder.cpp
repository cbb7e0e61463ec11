// The selection dialog: where a backup goes, or where a restore reads from.
#include "media/frmSelectFolder.h"

#include "app/Appearance.h"
#include "app/Captions.h"
#include "app/Log.h"
#include "app/Messages.h"
#include "app/WindowsPath.h"
#include "media/Capacity.h"

namespace media {
namespace {

constexpr char kPositionKey[] = "SelectFolder";
constexpr std::int32_t kBrowserTitle = 66071;
constexpr int kVolume = 2;

}  // namespace

frmSelectFolder::frmSelectFolder(app::Application& application, SelectionOperation& operation)
    : forms::Form(application.toolkit, "frmSelectFolder"), application_(application), operation_(operation) {
  cmdRefer.Clicked = [this](forms::ShiftState) { Refer(); };
  cmdOK.Clicked = [this](forms::ShiftState) { Accept(); };
  cmdCancel.Clicked = [this](forms::ShiftState) { Cancel(); };
  SetDefaultButton(cmdOK);
  SetCancelButton(cmdCancel);
}

void frmSelectFolder::OnLoad() {
  app::WriteLog(application_, 1, app::LogLevel::Information, "Start Select Folder");
  app::RestoreDialogPosition(application_, kPositionKey, *this);
  app::SetDialogCaptions(application_, app::DialogNumber::SelectFolder, *this);
  app::ApplyControlAppearance(application_, *this);

  application_.state.SelectedFolder = operation_.ProposeFolder();
  txtFolder.SetText(application_.state.SelectedFolder);
  lblLabel2.SetVisible(operation_.ShowsSpace());
  txtCapacity.SetVisible(operation_.ShowsSpace());
  ShowSpace();
  application_.toolkit.SetPointer(forms::Pointer::Default);
}

void frmSelectFolder::OnUnload() {
  operation_.Unloaded();
  app::SaveDialogPosition(application_, kPositionKey, *this);
}

void frmSelectFolder::OnDeviceChanged(int deviceType) {
  if (deviceType == kVolume) ShowSpace();
}

void frmSelectFolder::Refer() {
  app::WriteLog(application_, 1, app::LogLevel::Information, "Refer Folder");
  EnableButtons(false);
  const std::string title = app::GetMessageText(application_, kBrowserTitle);
  const std::string folder = application_.host.shell.BrowseForFolder(title, txtFolder.Text());
  EnableButtons(true);
  if (folder.empty()) return;
  txtFolder.SetText(folder);
  TakeFolder();
  ShowSpace();
}

void frmSelectFolder::Accept() {
  app::WriteLog(application_, 1, app::LogLevel::Information, "Selected Folder");
  EnableButtons(false);
  // Taken here and not while it is typed: the text box stays open to the operator during the run.
  TakeFolder();
  const app::ResultCode result = operation_.Run();
  if (result == app::kFailed || result == app::kStepFailed) {
    ReportFailure(result);
    return;
  }
  application_.toolkit.SetPointer(forms::Pointer::Default);
  EnableButtons(true);
  if (result == app::kDone) Close();
}

void frmSelectFolder::ReportFailure(app::ResultCode result) {
  const FailureMessages messages = operation_.DefaultMessages();
  app::ShowPendingMessage(application_, result == app::kFailed ? messages.failed : messages.stepFailed);
  application_.toolkit.SetPointer(forms::Pointer::Default);
  Close();
}

void frmSelectFolder::Cancel() {
  app::WriteLog(application_, 1, app::LogLevel::Information, "Cancel Select Folder");
  Close();
}

void frmSelectFolder::TakeFolder() {
  application_.state.SelectedFolder = app::WithTrailingBackslash(app::Trim(txtFolder.Text()));
}

void frmSelectFolder::ShowSpace() {
  if (!operation_.ShowsSpace()) return;
  std::string text;
  GetCapacityText(application_, text);
  txtCapacity.SetText(text);
}

void frmSelectFolder::EnableButtons(bool enabled) {
  cmdCancel.SetEnabled(enabled);
  cmdRefer.SetEnabled(enabled);
  cmdOK.SetEnabled(enabled);
}

}  // namespace media
