// A session that restores: what its operator does, and backup sets to restore from.
#pragma once

#include <array>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "restore/frmRestore.h"
#include "unit/flows/Session.h"

using restore::frmRestore;

/// Files of one medium: path below its root, and contents.
using MediumFiles = std::map<std::string, std::string>;

inline constexpr const char* kSetFolder = "D:\\Set\\";

/// The dialog's boxes, in the order of the categories.
inline constexpr std::array<forms::CheckBox frmRestore::*, restore::kCategories> kBoxes = {
    &frmRestore::chkPatientData, &frmRestore::chkMenuData,        &frmRestore::chkSystemData,
    &frmRestore::chkUserData,    &frmRestore::chkExplanationData, &frmRestore::chkReportSetData,
    &frmRestore::chkReportData,  &frmRestore::chkIPCounter};

struct RestoreSession : flows::Session {
  /// Opens the restore of the set in `folder`, up to the restore dialog.
  void BeginRestore(const std::string& folder, const std::string& user = fakes::kServiceUser);
  void AtRestore(std::function<void(frmRestore&)> step) { person.Expect<frmRestore>(std::move(step)); }
  /// Presses start with exactly these boxes ticked, one character for each: "x" or "-".
  void StartRestore(const std::string& ticks = "xxxxxxxx");
  void CancelRestore();
  /// Closes the selection dialog and the menu, after a set that was not restored.
  void LeaveSelection();

  /// A whole run of the program that backs everything up into `kSetFolder`.
  void BackUpEverything();
  /// Replaces what is in drive A:.
  void InsertDisk(const MediumFiles& contents);
};

/// A descriptor that the demo workstation accepts, without line ends at its lines.
std::vector<std::string> DescriptorLines(const std::vector<std::string>& more = {});
std::string Lines(const std::vector<std::string>& lines, const std::string& end = "\r\n");
