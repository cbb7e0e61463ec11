// Small rules on text, and the fixed formats of numbers.
#include "base/Text.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <system_error>

#include "base/Unicode.h"

namespace base {
namespace {

std::string WithThousandsCommas(std::string digits) {
  for (std::size_t place = digits.size(); place > 3;) {
    place -= 3;
    digits.insert(place, 1, ',');
  }
  return digits;
}

}  // namespace

std::string Trim(std::string_view text) {
  const std::size_t first = text.find_first_not_of(' ');
  if (first == std::string_view::npos) return {};
  return std::string(text.substr(first, text.find_last_not_of(' ') - first + 1));
}

std::string Quoted(std::string_view text) {
  return "\"" + std::string(text) + "\"";
}

std::vector<std::string> Split(std::string_view text, char separator) {
  std::vector<std::string> pieces;
  pieces.reserve(static_cast<std::size_t>(std::ranges::count(text, separator)) + 1);
  for (std::size_t end = text.find(separator); end != std::string_view::npos; end = text.find(separator)) {
    pieces.emplace_back(text.substr(0, end));
    text.remove_prefix(end + 1);
  }
  pieces.emplace_back(text);
  return pieces;
}

std::string Replaced(std::string text, const std::string& from, const std::string& to) {
  if (from.empty()) return text;
  for (std::size_t at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size())) {
    text.replace(at, from.size(), to);
  }
  return text;
}

std::string CutAtNul(const std::string& text, bool stripPrefix) {
  const std::size_t colon = stripPrefix ? text.find(':') : std::string::npos;
  const std::size_t first = colon == std::string::npos ? 0 : colon + 1;
  return text.substr(first, text.find('\0', first) - first);
}

std::string FixedWidth(std::string_view text, std::size_t width) {
  std::string_view rest = text;
  std::size_t count = 0;
  for (; count < width && !rest.empty(); ++count) TakeCharacter(rest);
  return std::string(text.substr(0, text.size() - rest.size())).append(width - count, ' ');
}

std::int32_t LeadingNumber(std::string_view text) {
  const std::string trimmed = Trim(text);
  std::uint32_t number = 0;  // without a sign: a pasted "-" is no digit
  const auto [end, error] = std::from_chars(trimmed.data(), trimmed.data() + trimmed.size(), number);
  constexpr std::int32_t kLargest = std::numeric_limits<std::int32_t>::max();
  const bool tooLarge = error == std::errc::result_out_of_range || number > std::uint32_t{kLargest};
  return tooLarge ? kLargest : static_cast<std::int32_t>(number);
}

std::string WithLeadingZeros(std::int64_t number, std::size_t digits) {
  std::string text = std::to_string(number);
  if (text.size() < digits) text.insert(0, digits - text.size(), '0');
  return text;
}

std::string FormatMegabytes(std::uint64_t bytes) {
  constexpr std::uint64_t kMegabyte = 1024ULL * 1024ULL;
  std::uint64_t whole = bytes / kMegabyte;
  std::uint64_t hundredths = (bytes % kMegabyte * 100 + kMegabyte / 2) / kMegabyte;
  if (hundredths == 100) {
    ++whole;
    hundredths = 0;
  }
  return WithThousandsCommas(std::to_string(whole)) + "." + WithLeadingZeros(static_cast<std::int64_t>(hundredths), 2);
}

std::string FormatSize(std::uint64_t bytes) {
  constexpr std::uint64_t kKilobyte = 1024;
  if (bytes >= kKilobyte * kKilobyte) return FormatMegabytes(bytes) + " MB";
  return std::to_string((bytes + kKilobyte - 1) / kKilobyte) + " KB";
}

}  // namespace base
