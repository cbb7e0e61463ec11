// Reads messages from the table that the system configuration names, and knows a few without it.
#include "components/MessageCatalogue.h"

#include <algorithm>
#include <cctype>

namespace components {
namespace {

struct BuiltIn {
  std::int32_t id;
  const char* text;
};

// What can go wrong before the catalogue is open.
constexpr BuiltIn kBuiltIn[] = {
    {60260, "The host application could not be started."},
    {60314, "The user utility is running. Close it first."},
    {60315, "The service utility is running. Close it first."},
    {60316, "This program is already running."},
    {60320, "The message catalogue could not be opened."},
    {60321, "The system configuration database could not be opened or closed."},
    {60322, "The appearance settings could not be read from the registry."},
    {60325, "The system configuration does not name the message table."},
    {60326, "An entry of the path table could not be read."},
    {61603, "The scheduled backup is running. Wait until it has finished."},
};

std::string BuiltInText(std::int32_t id) {
  const auto* found =
      std::find_if(std::begin(kBuiltIn), std::end(kBuiltIn), [&](auto& entry) { return entry.id == id; });
  if (found != std::end(kBuiltIn)) return found->text;
  return "Message " + std::to_string(id) + " cannot be shown: the message catalogue could not be opened.";
}

// One pass, so that a "%2" inside an inserted text stays as it is.
std::string Insert(const std::string& text, const std::array<std::string, 3>& insertions) {
  std::string result;
  for (std::size_t at = 0; at < text.size(); ++at) {
    const char digit = text[at] == '%' && at + 1 < text.size() ? text[at + 1] : '\0';
    if (digit < '1' || digit > '3') {
      result += text[at];
      continue;
    }
    result += insertions[static_cast<std::size_t>(digit - '1')];
    ++at;
  }
  return result;
}

MessageIcon IconOf(const std::string& name) {
  if (name == "question") return MessageIcon::kQuestion;
  if (name == "warning") return MessageIcon::kWarning;
  return name == "error" ? MessageIcon::kError : MessageIcon::kInformation;
}

bool IsTableName(const std::string& name) {
  return !name.empty() && std::all_of(name.begin(), name.end(), [](unsigned char character) {
    return std::isalnum(character) || character == '_';
  });
}

// The configuration says "kind:table"; empty when it cannot be read.
std::string TableName() {
  const auto database = reference::Database::OpenEntry("SysMasterDB");
  const auto value = database ? database->Setting("SysConfig", "MsgTableName") : std::nullopt;
  return value ? value->substr(value->find(':') + 1) : std::string();
}

}  // namespace

MessageCatalogue::MessageCatalogue() : table_(TableName()) {
  if (IsTableName(table_)) database_ = reference::Database::OpenEntry("LangStrDB");
}

std::optional<std::vector<std::optional<std::string>>> MessageCatalogue::Row(std::int32_t id) {
  if (!database_) return std::nullopt;
  auto rows = database_->Run("SELECT String, BUTTONS, ICON FROM " + table_ + " WHERE ID = " + std::to_string(id));
  if (!rows || rows->cells.empty() || !rows->cells.front().front()) return std::nullopt;
  return std::move(rows->cells.front());
}

Message MessageCatalogue::Find(std::int32_t id, const std::array<std::string, 3>& insertions) {
  if (!database_) return {BuiltInText(id), false, MessageIcon::kError};
  const auto row = Row(id);
  if (!row) return {std::to_string(id) + ": Not Defined!", false, MessageIcon::kWarning};
  return {Insert(*(*row)[0], insertions), (*row)[1] == "2", IconOf((*row)[2].value_or(""))};
}

std::string MessageCatalogue::Word(std::int32_t id, const char* builtIn) {
  const auto row = Row(id);
  return row ? *row->front() : builtIn;
}

MessageWords MessageCatalogue::Words() {
  return {Word(67001, "OK"), Word(67002, "&Yes"), Word(67003, "&No"), Word(67004, "Tarsus")};
}

}  // namespace components
