// The message catalogue and the display of messages by number.
#pragma once

#include <cstddef>
#include <memory>
#include <string>

#include "app/MessageIds.h"
#include "host/Components.h"
#include "host/Databases.h"

namespace app {

class Messages {
 public:
  Messages(host::CatalogueTable& catalogue, host::ComponentFactory& components)
      : catalogue_(catalogue), components_(components) {}

  /// Opens the catalogue's table and keeps it open.
  base::Outcome OpenMessageCatalogue(const std::string& connection, const std::string& tableName);

  /// Creates the host's message dialog, which every later message is shown with. Where that fails, ShowMessage tries
  /// again.
  void CreateMessageDialog();
  /// Lets the host's message dialog go; a later message creates another one.
  void ReleaseMessageDialog() { dialog_.reset(); }

  /// The catalogue's text behind `id`; "Not Defined!" where there is none.
  std::string GetMessageText(MessageId id);

  /// Shows message `id` with `text` as its third insertion, and returns the code of the button.
  host::Answer ShowMessage(MessageId id, const std::string& text = {});
  /// The same with insertions of the caller's choice: message 60521 wants its figure in the second.
  host::Answer ShowMessage(MessageId id, const std::string& text1, const std::string& text2, const std::string& text3);

  /// Shows the question `id` and tells whether the operator consents. One that could not be shown counts as refused:
  /// formatting, overwriting and deleting stand behind some of them.
  bool Consents(MessageId id) { return ShowMessage(id) == host::Answer::Consented; }
  /// The same for a prompt that waits for something to be done, such as a disk to be changed: the host's dialog is
  /// told so by the kind "2".
  bool Prompt(MessageId id) { return ShowMessage(id, "2") == host::Answer::Consented; }

  /// Tells how many warnings a job has left, where there are any and the catalogue knows how to say so.
  void TellWarnings(MessageId id, std::size_t warnings);

  /// Whether the catalogue has a text behind `id`.
  bool IsDefined(MessageId id);

 private:
  host::CatalogueTable& catalogue_;
  host::ComponentFactory& components_;
  std::unique_ptr<host::MessageDialog> dialog_;
};

/// What stops a step whose question or prompt was not consented to.
base::Outcome Declined(MessageId question);

}  // namespace app
