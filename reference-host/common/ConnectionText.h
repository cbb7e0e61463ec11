// The parts of an ODBC connection string.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace reference {

/// Keys and values in their order, both without blanks around them. Keys compare without regard to case.
class ConnectionText {
 public:
  /// Splits "key=value;key=value"; pieces without a key or without "=" are dropped.
  explicit ConnectionText(std::string_view connection);

  std::optional<std::string> Value(std::string_view key) const;
  /// Takes the key out and returns what it held; empty when it was not there.
  std::string Take(std::string_view key);

 private:
  std::vector<std::pair<std::string, std::string>> pairs_;
};

/// A database that is attached to a connection under a name.
struct Attachment {
  std::string name;
  std::string path;
};

/// Splits "Patient=C:\a.db,Study=C:\b.db", the value of the key "Attach".
std::vector<Attachment> ParseAttachments(std::string_view list);

}  // namespace reference
