// The message catalogue and the display of messages by number.
#pragma once

#include <cstdint>
#include <string>

#include "app/ResultCodes.h"

namespace app {

class Application;

/// Opens the catalogue's table `MsgTableName` and keeps it open. Returns 0, non-zero on failure.
ResultCode OpenMessageCatalogue(Application& application, const std::string& connection);

/// Creates the host's message dialog, which every later message is shown with. Where that fails,
/// ShowMessage tries again.
void CreateMessageDialog(Application& application);

/// The catalogue's text behind `id`; "Not Defined!" where there is none.
std::string GetMessageText(Application& application, std::int32_t id);

/// Shows message `id` with `text` as its third insertion, clears `PendingMessageId`, and
/// returns the button's code: in a two-choice prompt kRefused or kConsented.
std::int16_t ShowMessage(Application& application, std::int32_t id, const std::string& text = {});

/// The same with insertions of the caller's choice: message 60521 wants its figure in the second.
std::int16_t ShowMessage(Application& application, std::int32_t id, const std::string& text1, const std::string& text2,
                         const std::string& text3);

/// Shows `PendingMessageId` where a step has left one, else `defaultId`.
void ShowPendingMessage(Application& application, std::int32_t defaultId);

}  // namespace app
