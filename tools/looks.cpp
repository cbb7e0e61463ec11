// Every window of the program, one picture each, reached by the keyboard alone: signs in, makes a
// whole backup, looks at the restore of it and at the maintenance options, and ends.
//
//   looks.exe PICTURE_FOLDER
//
// The captions' access keys are not used, so that it works in every language of the catalogue.

#include <windows.h>

#include <cstdio>
#include <stdexcept>

#include "MessageDialogIds.h"
#include "operator/Desktop.h"
#include "operator/Operator.h"
#include "resource.h"

namespace {

using namespace endtoend;

/// Milliseconds that a person looks at the restore dialog, which takes no key before.
constexpr DWORD kLook = 1500;

class Tour {
 public:
  explicit Tour(std::string folder) : folder_(std::move(folder)) {}

  void Walk() {
    MoveMouseAway();
    SignIn();
    const std::string set = Backup();
    PastJobs();
    Restore(set);
    Maintenance();
    At("", ID_frmMainMenu_cmdMenu0);
    PressKey(VK_ESCAPE);
    program_.WaitForEnd();
  }

 private:
  /// Waits until the dialog with `control` is in front, and takes its picture when it has a name.
  Window At(const std::string& name, int control) { return Look(name, program_.WaitForDialog(control)); }

  /// Takes a picture of message `id` and answers it by `key`.
  void Answer(const std::string& name, base::MessageId id, WORD key) {
    const Window message = program_.WaitForMessageWindow();
    if (Program::MessageNumber(message) != id)
      throw std::runtime_error("message " + message.Text(TARSUS_MESSAGE_ID) + " in place of " +
                               std::to_string(static_cast<int>(id)));
    Look(name, message);
    PressKey(key);
    WaitUntil([&] { return !message.IsOpen(); });
  }

  Window Look(const std::string& name, const Window& window) {
    if (!WaitUntil([&] { return GetForegroundWindow() == window.Handle(); }))
      throw std::runtime_error("\"" + window.Title() + "\" does not come to the front");
    if (!name.empty()) TakeScreenshot(folder_ + "/" + name + ".png", window, Part::Window);
    return window;
  }

  void SignIn() {
    At("sign-in", ID_frmUserAuthentication_cmbUserName);
    TypeText(kPrivileged.name);
    PressKey(VK_TAB);
    TypeText(kPrivileged.password);
    PressKey(VK_RETURN);
    At("menu", ID_frmMainMenu_cmdMenu0);
  }

  /// Returns the folder of the set.
  std::string Backup() {
    PressKey(VK_RETURN);
    const Window dialog = At("backup", ID_frmBackup_chkPatientData);
    for (int control : {ID_frmBackup_chkSystemData, ID_frmBackup_chkReportData}) TickByKeys(dialog, control);
    PressKey(VK_RETURN);
    const Window destination = At("destination", ID_frmSelectFolder_txtFolder);
    const std::string folder = destination.Text(ID_frmSelectFolder_txtFolder);
    Browse();
    PressKey(VK_TAB);
    PressKey(VK_RETURN);
    Answer("question", base::MessageId::AskMakeBackupFolder, VK_RETURN);
    Answer("done", base::MessageId::BackupComplete, VK_RETURN);
    return folder;
  }

  /// The jobs of the menu, with the backup that was just made.
  void PastJobs() {
    At("menu-after", ID_frmMainMenu_cmdMenu0);
    for (int tabs = 0; tabs < 3; ++tabs) PressKey(VK_TAB);
    PressKey(VK_RETURN);
    At("past-jobs", ID_frmJobs_lstJobs);
    PressKey(VK_ESCAPE);
    At("", ID_frmMainMenu_cmdMenu0);
    PressKey(VK_TAB);
    PressKey(VK_TAB);
  }

  /// Opens the folder browser from the folder's text box, and leaves it again.
  void Browse() {
    PressKey(VK_TAB);
    PressKey(VK_SPACE);
    Look("browser", program_.WaitForMessageBox());
    PressKey(VK_ESCAPE);
    At("", ID_frmSelectFolder_txtFolder);
  }

  void Restore(const std::string& set) {
    At("", ID_frmMainMenu_cmdMenu0);
    PressKey(VK_TAB);
    PressKey(VK_RETURN);
    At("source", ID_frmSelectFolder_txtFolder);
    TypeText(set);
    PressKey(VK_RETURN);
    At("restore", ID_frmRestore_cmdStart);
    Sleep(kLook);
    PressKey(VK_RETURN);
    Answer("warning", base::MessageId::AskReplaceIPCounter, VK_ESCAPE);
    Answer("stopped", base::MessageId::RestoreStopped, VK_ESCAPE);
    At("", ID_frmRestore_cmdStart);
    PressKey(VK_ESCAPE);
    At("", ID_frmSelectFolder_txtFolder);
    PressKey(VK_ESCAPE);
  }

  void Maintenance() {
    At("", ID_frmMainMenu_cmdMenu0);
    PressKey(VK_TAB);
    PressKey(VK_RETURN);
    const Window dialog = At("", ID_frmMaintenance_cmdStart);
    PressKey(VK_TAB);
    PressKey(VK_DOWN);
    PressKey(VK_TAB);
    TypeText("30");
    if (!dialog.IsTicked(ID_frmMaintenance_Option4) || dialog.Text(ID_frmMaintenance_txtCollectRange) != "30")
      throw std::runtime_error("the days cannot be reached by keys");
    At("maintenance", ID_frmMaintenance_cmdStart);
    PressKey(VK_ESCAPE);
  }

  void TickByKeys(const Window& dialog, int control) {
    for (int tabs = 0; tabs < 20 && !dialog.HasFocus(control); ++tabs) PressKey(VK_TAB);
    PressKey(VK_SPACE);
    if (!dialog.IsTicked(control)) throw std::runtime_error("a check box cannot be ticked by keys");
  }

  std::string folder_;
  Program program_{kProgram};
};

}  // namespace

int wmain(int argc, wchar_t** argv) {
  if (argc != 2) {
    std::puts("usage: looks PICTURE_FOLDER");
    return 2;
  }
  try {
    Tour(Utf8(argv[1])).Walk();
    EndAll(L"Tarsus.exe");
  } catch (const std::exception& error) {
    std::printf("!!   %s\n", error.what());
    EndAll(L"Tarsus.exe");
    return 1;
  }
  return 0;
}
