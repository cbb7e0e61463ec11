// The message catalogue and the display of messages by number.
#include "app/Messages.h"

#include <cstdint>

namespace app {
namespace {

constexpr auto kNotDefined = "Not Defined!";

/// The text of the row that the filter has left, if any.
std::string FilteredText(host::CatalogueTable& catalogue) {
  if (catalogue.AtEnd()) return kNotDefined;
  return catalogue.StringField().value_or(kNotDefined);
}

}  // namespace

base::Outcome Messages::OpenMessageCatalogue(const std::string& connection, const std::string& tableName) {
  return catalogue_.Open(connection, tableName);
}

base::Outcome Declined(MessageId question) {
  return {base::Result::Stopped, "question " + std::to_string(static_cast<std::int32_t>(question)) + " was declined"};
}

std::string Messages::GetMessageText(MessageId id) {
  const bool filtered = catalogue_.SetFilter("ID = " + std::to_string(static_cast<std::int32_t>(id))).IsDone();
  const std::string text = filtered ? FilteredText(catalogue_) : kNotDefined;
  // A table that cannot be shown whole again is not to be trusted with the text either.
  return catalogue_.SetFilter({}).IsDone() ? text : kNotDefined;
}

void Messages::TellWarnings(MessageId id, std::size_t warnings) {
  if (warnings > 0 && IsDefined(id)) ShowMessage(id, std::to_string(warnings));
}

bool Messages::IsDefined(MessageId id) {
  return GetMessageText(id) != kNotDefined;
}

void Messages::CreateMessageDialog() {
  dialog_ = components_.CreateMessageDialog();
  if (dialog_) dialog_->SetDisplayOptions(1, 1);
}

host::Answer Messages::ShowMessage(MessageId id, const std::string& text) {
  return ShowMessage(id, {}, {}, text);
}

host::Answer Messages::ShowMessage(MessageId id, const std::string& text1, const std::string& text2,
                                   const std::string& text3) {
  if (!dialog_) CreateMessageDialog();
  return dialog_ ? dialog_->Show(id, text1, text2, text3) : host::Answer::NotShown;
}

}  // namespace app
