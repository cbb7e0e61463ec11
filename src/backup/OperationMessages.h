// The message numbers in which an ordinary backup and a maintenance log backup differ, though both
// are written in the same way.
#pragma once

#include <cstdint>

#include "app/Application.h"
#include "media/DriveStatus.h"
#include "media/SelectionOperation.h"

namespace backup {

struct OperationMessages {
  media::MediumMessages medium;
  std::int32_t prepareMedium = 0;  ///< question: the medium must be formatted
  std::int32_t formatFailed = 0;
  std::int32_t formatCancelled = 0;  ///< floppies only
  std::int32_t unusableFloppy = 0;   ///< floppies only: they are formatted without a question
  std::int32_t changeDisk = 0;       ///< floppies only: prompt
  std::int32_t labelFailed = 0;
  std::int32_t noSpace = 0;
  std::int32_t foreignLabel = 0;  ///< question: the volume is not one of ours
  std::int32_t createFolder = 0;  ///< question
  std::int32_t folderNotCreated = 0;
  std::int32_t overwrite = 0;  ///< question
  std::int32_t descriptorFailed = 0;
  std::int32_t finished = 0;
  std::int32_t stopped = 0;
  media::FailureMessages failures;
};

/// The numbers of an ordinary backup; of a maintenance log backup when that is `operation`.
const OperationMessages& MessagesOf(app::Operation operation);

}  // namespace backup
