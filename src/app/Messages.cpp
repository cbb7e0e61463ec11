// The message catalogue and the display of messages by number.
#include "app/Messages.h"

#include "app/Application.h"

namespace app {
namespace {

constexpr auto kNotDefined = "Not Defined!";

/// The text of the row that the filter has left, if any.
std::string FilteredText(host::CatalogueTable& catalogue) {
  if (catalogue.AtEnd()) return kNotDefined;
  return catalogue.StringField().value_or(kNotDefined);
}

}  // namespace

ResultCode OpenMessageCatalogue(Application& application, const std::string& connection) {
  return application.host.catalogue.Open(connection, application.state.MsgTableName);
}

std::string GetMessageText(Application& application, std::int32_t id) {
  host::CatalogueTable& catalogue = application.host.catalogue;
  const bool filtered = catalogue.SetFilter("ID = " + std::to_string(id)) == kDone;
  const std::string text = filtered ? FilteredText(catalogue) : kNotDefined;
  // A table that cannot be shown whole again is not to be trusted with the text either.
  return catalogue.SetFilter({}) == kDone ? text : kNotDefined;
}

void CreateMessageDialog(Application& application) {
  application.messageDialog = application.host.components.CreateMessageDialog();
  if (application.messageDialog) application.messageDialog->SetDisplayOptions(1, 1);
}

std::int16_t ShowMessage(Application& application, std::int32_t id, const std::string& text) {
  return ShowMessage(application, id, {}, {}, text);
}

std::int16_t ShowMessage(Application& application, std::int32_t id, const std::string& text1, const std::string& text2,
                         const std::string& text3) {
  if (!application.messageDialog) CreateMessageDialog(application);
  std::int32_t button = 0;
  if (application.messageDialog) button = application.messageDialog->Show(id, text1, text2, text3);
  application.state.PendingMessageId = 0;
  return static_cast<std::int16_t>(button);
}

void ShowPendingMessage(Application& application, std::int32_t defaultId) {
  const std::int32_t pending = application.state.PendingMessageId;
  ShowMessage(application, pending != 0 ? pending : defaultId);
}

}  // namespace app
