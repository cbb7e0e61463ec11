#include "fakes/Cabinet.h"

#include <algorithm>
#include <charconv>
#include <string_view>

namespace fakes {
namespace {

constexpr std::size_t kHeaderSize = 36;

// A number of `width` bytes, the lowest first.
std::string Number(std::size_t number, std::size_t width) {
  std::string bytes;
  for (; width > 0; --width, number >>= 8) bytes += static_cast<char>(number & 0xFF);
  return bytes;
}

// A length in decimal, a line feed, then that many bytes.
std::string Text(const std::string& text) {
  return std::to_string(text.size()) + "\n" + text;
}

// Takes a text off the head; whatever there is when it is none.
std::string TakeText(std::string_view& rest) {
  std::size_t size = 0;
  std::from_chars(rest.data(), rest.data() + rest.size(), size);
  rest.remove_prefix(std::min(rest.find('\n'), rest.size() - 1) + 1);
  const std::string text(rest.substr(0, size));
  rest.remove_prefix(text.size());
  return text;
}

}  // namespace

std::string MakeCabinet(const CabinetContents& contents) {
  std::string body;
  for (const auto& [path, bytes] : contents) body += Text(path) + Text(bytes);
  // The fields of a real header that somebody may look at: signature, size, number of files.
  return "MSCF" + Number(0, 4) + Number(kHeaderSize + body.size(), 4) + Number(0, 16) + Number(contents.size(), 2) +
         Number(0, 6) + body;
}

std::optional<CabinetContents> ReadCabinet(const std::string& bytes) {
  CabinetContents contents;
  std::string_view rest = bytes;
  rest.remove_prefix(std::min(kHeaderSize, bytes.size()));
  while (!rest.empty()) {
    const std::string path = TakeText(rest);
    contents[path] = rest.empty() ? "" : TakeText(rest);
  }
  return bytes == MakeCabinet(contents) ? std::optional(contents) : std::nullopt;
}

}  // namespace fakes
