// What the selection dialog is opened for: backup, restore or maintenance log backup.
// Everything in which they differ, as far as the dialog is concerned, stands behind this.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "base/Outcome.h"

namespace media {

/// One per opening of the dialog, which calls it in this order: ProposeFolder once, Run for every OK, and MeantFolder
/// after one that was stopped, Unloaded once; SpaceNeeded whenever it shows the space, BrowseFrom for every Browse.
class SelectionOperation {
 public:
  virtual ~SelectionOperation() = default;

  /// The folder shown first; ends in "\". Also the place where the media drives are looked up.
  virtual std::string ProposeFolder() = 0;

  /// Bytes to be written; nothing when the folder is only read, and no space is shown.
  virtual std::optional<std::uint64_t> SpaceNeeded() const = 0;

  /// Carries the operation out on `SelectedFolder`. Done closes the dialog, Stopped leaves it open for another choice;
  /// a failure is shown, by the message that it carries, and closes it. The dialog sets the pointer back.
  virtual base::Outcome Run() = 0;

  /// Where Browse opens while `shown` is the folder in the dialog.
  virtual std::string BrowseFrom(const std::string& shown) { return shown; }

  /// After a Run that was stopped: the folder that the operator may have meant; empty where none is known.
  virtual std::string MeantFolder() { return {}; }

  /// The dialog goes: clears away what the operation has left for it.
  virtual void Unloaded() = 0;
};

}  // namespace media
