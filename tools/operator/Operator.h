// An operator's work at the program: signing in, backing up, ending.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "operator/Program.h"
#include "operator/Workstation.h"

namespace endtoend {

struct User {
  std::string name;  ///< as the sign-in dialog lists it
  std::string password;
};

/// Demonstration users, one for each right.
inline const User kPrivileged{"Service", "field-engineer"};
inline const User kBoth{"Jürgen Müller", "grüne-Äpfel"};
inline const User kBackupOnly{"Emily Brown", "morning-walk"};
inline const User kRestoreOnly{"Thomas Keller", "blue-bicycle"};

/// Which boxes of the backup dialog to tick.
struct Categories {
  bool patient = false;
  bool system = false;
  bool log = false;
  bool report = false;
};

class Operator {
 public:
  /// Called after each step, with the window that the step led to on the screen.
  using Narrator = std::function<void(const std::string& step, const Window& window)>;

  explicit Operator(Narrator narrator = {}) : program_(kProgram), narrator_(std::move(narrator)) {}

  Program& TheProgram() { return program_; }

  Window SignInDialog();
  /// Fills the sign-in dialog and presses OK.
  void TrySignIn(const User& user);
  /// Signs in and returns the main menu.
  Window SignIn(const User& user = kPrivileged);
  Window MainMenu();
  /// Opens the backup dialog and ticks exactly `categories`.
  Window OpenBackup(const Categories& categories);
  /// Presses Start in the backup dialog and returns the destination dialog.
  Window StartBackup(const Window& backupDialog);
  Window DestinationDialog();
  /// Types a folder, where one is given, and presses OK.
  void Accept(const Window& destinationDialog, const std::string& folder = {});
  /// Opens the restore of the set in `folder` and returns the restore dialog.
  Window OpenRestore(const std::string& folder);
  /// Chooses what a maintenance bundle holds, collects it, and returns the destination dialog. The
  /// question that an unprotected bundle raises is consented to.
  Window CollectMaintenanceLog(bool protect, int imageDays);
  /// Opens the past jobs and returns their dialog.
  Window OpenPastJobs();
  /// Waits for the next message and returns its number; it stays open.
  base::MessageId NextMessage();
  /// Answers the next message and returns its number.
  base::MessageId Answer(endtoend::Answer answer = endtoend::Answer::Consent);
  /// Consents to every message up to `last`; throws on one that is neither that nor in `allowed`.
  void ConsentUntil(base::MessageId last, const std::vector<base::MessageId>& allowed);
  /// Ends the program from the main menu.
  void End(bool withShift = true);

 private:
  void Tell(const std::string& step, const Window& window) const;

  Program program_;
  Narrator narrator_;
};

}  // namespace endtoend
