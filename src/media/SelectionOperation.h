// What the selection dialog is opened for: backup, restore or maintenance log backup.
// Everything in which they differ, as far as the dialog is concerned, stands behind this.
#pragma once

#include <cstdint>
#include <string>

#include "app/ResultCodes.h"

namespace media {

/// Message IDs for a failed operation that has not left a message of its own in `PendingMessageId`.
struct FailureMessages {
  std::int32_t failed = 0;      ///< result kFailed
  std::int32_t stepFailed = 0;  ///< result kStepFailed
};

/// One per opening of the dialog, which calls it in this order: ProposeFolder and ShowsSpace once,
/// Run for every OK, Unloaded once.
class SelectionOperation {
 public:
  virtual ~SelectionOperation() = default;

  /// The folder shown first; ends in "\". Also the place where the media drives are looked up.
  virtual std::string ProposeFolder() = 0;

  /// Whether needed and free space are shown: not when the folder is only read.
  virtual bool ShowsSpace() const = 0;

  /// Carries the operation out on `SelectedFolder`. kDone closes the dialog, kStopped leaves it open
  /// for another choice, kFailed and kStepFailed are shown as a message and close it. The operation
  /// keeps its own done flag; the dialog sets the pointer back.
  virtual app::ResultCode Run() = 0;

  /// The messages behind kFailed and kStepFailed. An operation that shows its failures itself and
  /// never returns these codes may leave both 0.
  virtual FailureMessages DefaultMessages() const = 0;

  /// The dialog goes: clears away what the operation has left for it.
  virtual void Unloaded() = 0;
};

}  // namespace media
