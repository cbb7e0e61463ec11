// One session at the demo workstation: the whole program from start-up to exit,
// and the things that its operator does.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "access/Dialogs.h"
#include "access/frmMainMenu.h"
#include "access/frmUserAuthentication.h"
#include "app/Application.h"
#include "backup/frmBackup.h"
#include "fakes/FakeHost.h"
#include "media/frmSelectFolder.h"

namespace flows {

using backup::frmBackup;
using media::frmSelectFolder;
using operator_access::frmMainMenu;
using operator_access::frmUserAuthentication;

inline constexpr forms::ShiftState kNoKeys{};
inline constexpr forms::ShiftState kShift{true, false, false};

/// Which boxes of the backup dialog are ticked.
struct Ticks {
  bool patient = false;
  bool system = false;
  bool log = false;
  bool report = false;
  bool deleteLogs = false;
};

inline constexpr Ticks kEverything{true, true, true, true};

struct Session : fakes::FakeHost {
  Session();

  // What the operator does, each added to the script.
  void SignIn(const std::string& name, const std::string& password = "secret");
  void CancelSignIn(forms::ShiftState keys = kShift);
  void OpenBackup();
  /// Ticks exactly these boxes and presses start.
  void StartBackup(const Ticks& ticks);
  void CancelBackup();
  /// OK in the selection dialog, on the proposed folder or on another one.
  void AcceptFolder(const std::string& folder = {});
  void CancelFolder();
  void EndMenu(forms::ShiftState keys = kShift);

  /// Signs in with every right, opens the backup dialog and starts a backup.
  void BeginBackup(const Ticks& ticks);
  /// After a backup that failed or was stopped: closes everything that is still open.
  void LeaveBackup();

  /// The program, from start-up to exit. Checks what holds at every exit.
  void Run();
  /// The same without the checks, for a program that is hit by faults.
  void RunUnchecked();

  /// Files of the host system that the session has changed, added or removed, but for the
  /// program's log, the compacted databases and what the jobs' programs write.
  std::vector<std::string> ChangedHostFiles();
  /// Whether no work folder is left.
  bool IsTemporaryFolderEmpty();
  bool WasHostStarted() const;

  app::State state;  ///< as the program left it

 private:
  std::map<std::string, std::string> hostFiles_;
};

/// Folder that the selection dialog proposes at the demo workstation's time.
inline constexpr const char* kProposal = "D:\\20120315093012\\";

}  // namespace flows
