// The host's messages by number, from the table of its language database.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "common/Database.h"

namespace components {

enum class MessageIcon { kInformation, kQuestion, kWarning, kError };

struct Message {
  std::string text;  ///< with its insertions in place
  bool isQuestion = false;
  MessageIcon icon = MessageIcon::kWarning;
};

/// The words around every message.
struct MessageWords {
  std::string ok, consent, refuse, title;
};

class MessageCatalogue {
 public:
  /// Connects to the language database. Without it, messages and words are built-in English:
  /// that the catalogue is missing is itself something that an operator must be told.
  MessageCatalogue();

  /// Message `id`; `insertions` replace "%1", "%2" and "%3". A number that the catalogue does
  /// not have becomes a message that says so.
  Message Find(std::int32_t id, const std::array<std::string, 3>& insertions);
  MessageWords Words();

 private:
  std::optional<std::vector<std::optional<std::string>>> Row(std::int32_t id);
  std::string Word(std::int32_t id, const char* builtIn);

  std::unique_ptr<reference::Database> database_;
  std::string table_;
};

}  // namespace components
