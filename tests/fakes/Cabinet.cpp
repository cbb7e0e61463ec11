#include "fakes/Cabinet.h"

#include <charconv>

namespace fakes {
namespace {

constexpr std::size_t kHeaderSize = 36;

// A number of `width` bytes, the lowest first.
std::string Number(std::size_t number, std::size_t width) {
  std::string bytes;
  for (; width > 0; --width, number >>= 8) bytes += static_cast<char>(number & 0xFF);
  return bytes;
}

// The fields of a real cabinet's header that somebody may look at: signature, size, number of files.
std::string Header(std::size_t size, std::size_t files) {
  return "MSCF" + Number(0, 4) + Number(size, 4) + Number(0, 16) + Number(files, 2) + Number(0, 6);
}

// A length in decimal, a line feed, then that many bytes.
void AddText(std::string& cabinet, const std::string& text) {
  cabinet += std::to_string(text.size()) + "\n" + text;
}

std::optional<std::string> TakeText(const std::string& cabinet, std::size_t& at) {
  const std::size_t end = cabinet.find('\n', at);
  if (end == std::string::npos) return std::nullopt;
  std::size_t size = 0;
  std::from_chars(cabinet.data() + at, cabinet.data() + end, size);
  if (cabinet.size() - end - 1 < size) return std::nullopt;
  at = end + 1 + size;
  return cabinet.substr(end + 1, size);
}

}  // namespace

std::string MakeCabinet(const CabinetContents& contents) {
  std::string body;
  for (const auto& [path, bytes] : contents) {
    AddText(body, path);
    AddText(body, bytes);
  }
  body += "END";
  return Header(kHeaderSize + body.size(), contents.size()) + body;
}

std::optional<CabinetContents> ReadCabinet(const std::string& bytes) {
  if (bytes.size() < kHeaderSize) return std::nullopt;
  CabinetContents contents;
  std::size_t at = kHeaderSize;
  while (bytes.compare(at, std::string::npos, "END") != 0) {
    const auto path = TakeText(bytes, at);
    const auto file = path ? TakeText(bytes, at) : std::nullopt;
    if (!file) return std::nullopt;
    contents[*path] = *file;
  }
  if (!bytes.starts_with(Header(bytes.size(), contents.size()))) return std::nullopt;
  return contents;
}

}  // namespace fakes
