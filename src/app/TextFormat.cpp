// Fixed formats of dates, sizes and numbers.
#include "app/TextFormat.h"

#include <algorithm>

namespace app {
namespace {

/// `number`, not negative, with zeros in front up to `width` digits.
std::string Digits(std::int64_t number, std::size_t width) {
  std::string digits = std::to_string(number);
  if (digits.size() < width) digits.insert(0, width - digits.size(), '0');
  return digits;
}

std::string Join(const std::string& first, const std::string& second, const std::string& third,
                 const std::string& separator) {
  return first + separator + second + separator + third;
}

std::string Date(const host::LocalTime& time, const std::string& separator) {
  return Join(Digits(time.year, 4), Digits(time.month, 2), Digits(time.day, 2), separator);
}

std::string TimeOfDay(const host::LocalTime& time, const std::string& separator) {
  return Join(Digits(time.hour, 2), Digits(time.minute, 2), Digits(time.second, 2), separator);
}

std::string WithThousandsCommas(std::string digits) {
  for (std::size_t place = digits.size(); place > 3;) {
    place -= 3;
    digits.insert(place, 1, ',');
  }
  return digits;
}

}  // namespace

std::string FormatLogTime(const host::LocalTime& time) {
  return Date(time, "/") + " " + TimeOfDay(time, ":");
}

std::string FormatShortStamp(const host::LocalTime& time) {
  return FormatLongStamp(time).substr(2);
}

std::string FormatLongStamp(const host::LocalTime& time) {
  return FormatDay(time) + TimeOfDay(time, "");
}

std::string FormatDay(const host::LocalTime& time) {
  return Date(time, "");
}

std::string FormatMegabytes(std::uint64_t bytes) {
  constexpr std::uint64_t kMegabyte = 1024ULL * 1024ULL;
  std::uint64_t whole = bytes / kMegabyte;
  std::uint64_t hundredths = (bytes % kMegabyte * 100 + kMegabyte / 2) / kMegabyte;
  if (hundredths == 100) {
    ++whole;
    hundredths = 0;
  }
  return WithThousandsCommas(std::to_string(whole)) + "." + Digits(static_cast<std::int64_t>(hundredths), 2);
}

std::string FormatPieceNumber(std::int32_t number) {
  return Digits(number, 3);
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

}  // namespace app
