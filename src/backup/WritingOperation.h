// What the two operations that write a set have in common towards the selection dialog.
#pragma once

#include "app/Application.h"
#include "backup/OperationMessages.h"
#include "media/SelectionOperation.h"

namespace backup {

/// Shows the space, has its failures' messages from the operations' table, and clears the staging
/// folder away when the dialog goes (message 60361 when that fails). What is proposed and what OK does
/// is left to the one operation and the other.
class WritingOperation : public media::SelectionOperation {
 public:
  WritingOperation(app::Application& application, app::Operation operation)
      : application_(application), messages_(MessagesOf(operation)) {}

  bool ShowsSpace() const override { return true; }
  media::FailureMessages DefaultMessages() const override { return messages_.failures; }
  void Unloaded() override;

 protected:
  app::Application& application_;
  const OperationMessages& messages_;
};

}  // namespace backup
