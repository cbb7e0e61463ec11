// Splits connection strings and puts them together again.
#include "common/ConnectionText.h"

#include <algorithm>
#include <cctype>

namespace reference {

namespace {

std::string_view Trim(std::string_view text) {
  const std::size_t first = text.find_first_not_of(" \t\r\n");
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(" \t\r\n") - first + 1);
}

bool SameKey(std::string_view one, std::string_view other) {
  const auto lower = [](char letter) { return std::tolower(static_cast<unsigned char>(letter)); };
  return std::ranges::equal(one, other, {}, lower, lower);
}

/// The "key=value" pieces between the separators.
std::vector<std::pair<std::string, std::string>> SplitPairs(std::string_view text, char separator) {
  std::vector<std::pair<std::string, std::string>> pairs;
  while (!text.empty()) {
    const std::string_view piece = text.substr(0, text.find(separator));
    text.remove_prefix(std::min(text.size(), piece.size() + 1));
    const std::size_t equals = piece.find('=');
    const std::string_view key = Trim(piece.substr(0, equals));
    if (equals == std::string_view::npos || key.empty()) continue;
    pairs.emplace_back(key, Trim(piece.substr(equals + 1)));
  }
  return pairs;
}

}  // namespace

ConnectionText::ConnectionText(std::string_view connection) : pairs_(SplitPairs(connection, ';')) {}

std::optional<std::string> ConnectionText::Value(std::string_view key) const {
  for (const auto& [name, value] : pairs_) {
    if (SameKey(name, key)) return value;
  }
  return std::nullopt;
}

std::string ConnectionText::Take(std::string_view key) {
  std::string value = Value(key).value_or(std::string());
  std::erase_if(pairs_, [key](const auto& pair) { return SameKey(pair.first, key); });
  return value;
}

std::vector<Attachment> ParseAttachments(std::string_view list) {
  std::vector<Attachment> attachments;
  for (auto& [name, path] : SplitPairs(list, ',')) attachments.push_back({std::move(name), std::move(path)});
  return attachments;
}

}  // namespace reference
