// One session at the demo workstation: the whole program from start-up to exit, and what its operator does.
#pragma once

#include <set>
#include <utility>

#include "access/Dialogs.h"
#include "access/frmMainMenu.h"
#include "access/frmUserAuthentication.h"
#include "app/Application.h"
#include "backup/frmBackup.h"
#include "maintenance/frmMaintenance.h"
#include "media/frmSelectFolder.h"
#include "restore/frmRestore.h"
#include "unit/Arrange.h"

using backup::frmBackup;
using maintenance::frmMaintenance;
using media::frmSelectFolder;
using qx::access::frmMainMenu;
using qx::access::frmUserAuthentication;
using restore::frmRestore;

/// Files of one medium: path below its root, and contents.
using MediumFiles = std::map<std::string, std::string>;

inline constexpr forms::ShiftState kNoKeys{};
inline constexpr forms::ShiftState kShift{true, false, false};

/// Folder that the selection dialog proposes at the demo workstation's time, and the staging folder.
inline constexpr const char* kProposal = "D:\\20120315093012\\";
inline constexpr const char* kStagingFolder = "C:\\Users\\Operator\\Temp\\120315093012";
inline constexpr const char* kDesktop = "C:\\Users\\Operator\\Desktop\\";
inline constexpr const char* kSetFolder = "D:\\Set\\";

/// Which boxes of the backup dialog are ticked.
struct Ticks {
  bool patient = false, system = false, log = false, report = false;
  bool deleteLogs = false;
};
inline constexpr Ticks kEverything{true, true, true, true};
inline constexpr Ticks kReportOnly{.report = true};
inline constexpr Ticks kLogsToDelete{.log = true, .deleteLogs = true};

/// The main menu's items.
enum class Menu { Backup, Restore, MaintenanceLog };
inline forms::CommandButton& Button(frmMainMenu& form, Menu item) {
  return form.cmdMenu[static_cast<std::size_t>(item)];
}

/// The restore dialog's boxes, in the order of the categories.
enum class Box { Patient, Menu, System, User, Explanation, ReportSet, Report, Counter };
using Boxes = std::set<Box>;
inline const Boxes kAllBoxes = {Box::Patient,     Box::Menu,      Box::System, Box::User,
                                Box::Explanation, Box::ReportSet, Box::Report, Box::Counter};
inline forms::CheckBox& BoxOf(frmRestore& form, Box box) {
  forms::CheckBox* const boxes[] = {&form.chkPatientData, &form.chkMenuData,        &form.chkSystemData,
                                    &form.chkUserData,    &form.chkExplanationData, &form.chkReportSetData,
                                    &form.chkReportData,  &form.chkIPCounter};
  return *boxes[static_cast<std::size_t>(box)];
}

struct Session : fakes::FakeHost {
  explicit Session(const Arrangement& arrange = Nothing) {
    FillDemoWorkstation(*this);
    clock.perLook = std::chrono::milliseconds(250);
    arrange(*this);
  }

  // What the operator does, each added to the script.
  template <class F>
  void At(std::function<void(F&)> step) {
    person.Expect<F>([this, step = std::move(step)](F& form) {
      ExpectReadyForInput(form);
      ExpectPlaceAndMove(form);
      const forms::Form* const covered = std::exchange(worked_, &form);
      step(form);
      worked_ = covered;
    });
  }
  template <class F>
  void Press(forms::CommandButton F::*button, forms::ShiftState keys = kNoKeys) {
    At<F>([=](F& form) { fakes::Press(form.*button, keys); });
  }
  template <class F>
  void Cancel(forms::ShiftState keys = kNoKeys) {
    Press(&F::cmdCancel, keys);
  }
  void SignIn(const std::string& name = fakes::kServiceUser, const std::string& password = "secret");
  void OpenMenuItem(Menu item) {
    At<frmMainMenu>([=](frmMainMenu& form) { fakes::Press(Button(form, item)); });
  }
  /// Ticks exactly these boxes and presses start.
  void StartBackup(const Ticks& ticks);
  /// The same in the restore dialog.
  void StartRestore(const Boxes& ticks = kAllBoxes);
  /// Without protection when it is said to be confirmed.
  void StartMaintenance(bool unprotected = false);
  /// OK in the selection dialog, on the proposed folder or on another one.
  void AcceptFolder(const std::string& folder = {});
  /// These messages come, all with the same answer.
  void See(const Ids& messages, host::Answer answer = host::Answer::Consented);

  // From the sign-in on, with every right.
  /// Up to the selection dialog.
  void BeginBackup(const Ticks& ticks);
  /// And through it, to the proposed folder where none is named.
  void BackUpTo(const std::string& folder, const Ticks& ticks = kReportOnly);
  /// Up to the restore dialog.
  void BeginRestore(const std::string& folder = kSetFolder, const std::string& user = fakes::kServiceUser);

  // To the end of the program.
  /// After these messages only the menu is left.
  void EndAfter(const Ids& messages);
  /// The last message says whether a backup has failed or was stopped; closes what is still open then. The host's
  /// files are as they were, and no backup is dated unless all but its audit record was written.
  void LeaveBackupAfter(const Ids& messages, host::Answer answer = host::Answer::Consented);
  void LeaveRestoreAfter(const Ids& messages, host::Answer answer = host::Answer::Consented);

  /// The program, from start-up to exit. Checks what holds at every exit.
  void Run();
  /// The same without the checks, for a program that is hit by faults.
  void RunUnchecked();
  /// A whole run of the program that backs everything up into `kSetFolder`.
  void BackUpEverything();

  /// Replaces what is in drive A:.
  void InsertDisk(const MediumFiles& contents);
  /// Files of the host system that the session has changed, added or removed, but for the
  /// program's log, the compacted databases and what the jobs' programs write.
  Paths ChangedHostFiles();
  bool IsTemporaryFolderEmpty() { return disk.Children(files.temporaryFolder).empty(); }
  bool IsBackupDated() const { return qx32.texts.contains("BackupDate"); }

  app::State state;  ///< as the program left it
  bool leavesStagingFolder = false;

 private:
  /// A dialog that waits for a person has its captions, the host's look, and no busy pointer.
  void ExpectReadyForInput(const forms::Form& form) const;
  /// A dialog is where it was left; the operator then draws it aside a little.
  void ExpectPlaceAndMove(forms::Form& form);
  /// While a program works, the operator can press nothing, and sees that.
  void ExpectBusy(const std::string& commandLine) const;

  const forms::Form* worked_ = nullptr;          ///< the dialog that the operator has at hand
  std::map<std::string, std::uint32_t> places_;  ///< left edges, by their names in the registry
  MediumFiles hostFiles_;
};

/// A descriptor that the demo workstation accepts, without line ends at its lines.
Paths DescriptorLines(const Paths& more = {});
std::string Lines(const Paths& lines, const std::string& end = "\r\n");
