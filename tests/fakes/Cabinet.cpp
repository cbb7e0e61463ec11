#include "fakes/Cabinet.h"

#include <charconv>

namespace fakes {
namespace {

constexpr const char* kMark = "CABINET\n";

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
  std::string cabinet = kMark;
  for (const auto& [path, bytes] : contents) {
    AddText(cabinet, path);
    AddText(cabinet, bytes);
  }
  return cabinet + "END";
}

std::optional<CabinetContents> ReadCabinet(const std::string& bytes) {
  if (!bytes.starts_with(kMark)) return std::nullopt;
  CabinetContents contents;
  std::size_t at = std::string(kMark).size();
  while (bytes.substr(at) != "END") {
    const auto path = TakeText(bytes, at);
    const auto file = path ? TakeText(bytes, at) : std::nullopt;
    if (!file) return std::nullopt;
    contents[*path] = *file;
  }
  return contents;
}

}  // namespace fakes
