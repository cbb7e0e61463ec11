// The message numbers in which an ordinary backup and a maintenance log backup differ, though both
// are written in the same way.
#pragma once

#include "app/Application.h"
#include "media/MediaDrives.h"

namespace backupset {

struct WritingMessages {
  const char* job;  ///< what the log calls it
  app::JobKind kind{};
  media::MediumMessages medium;
  app::MessageId prepareMedium{};  ///< question: the medium must be formatted
  app::MessageId formatFailed{};
  app::MessageId formatCancelled{};  ///< floppies only
  app::MessageId unusableFloppy{};   ///< floppies only: they are formatted without a question
  app::MessageId changeDisk{};       ///< floppies only: prompt
  app::MessageId labelFailed{};
  app::MessageId noSpace{};
  app::MessageId foreignLabel{};  ///< question: the volume is not one of ours
  app::MessageId createFolder{};  ///< question
  app::MessageId folderNotCreated{};
  app::MessageId overwrite{};  ///< question
  app::MessageId descriptorFailed{};
  app::MessageId warnings{};  ///< before `finished`, when the job has left any
  app::MessageId finished{};
  app::MessageId stopped{};
  app::MessageId failed{};      ///< where a step has failed that has no message of its own
  app::MessageId stepFailed{};  ///< likewise, for Result::StepFailed
};

/// The numbers of an ordinary backup; of a maintenance log backup when that is `operation`.
const WritingMessages& MessagesOf(app::Operation operation);

/// The outcome of writing a set, with the message that belongs to a failure that has none.
base::Outcome WithDefaultMessage(base::Outcome outcome, const WritingMessages& messages);

}  // namespace backupset
