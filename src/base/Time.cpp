// How this system writes dates and times into names and lines.
#include "base/Time.h"

#include "base/Text.h"

namespace base {
namespace {

std::string Join(int first, std::size_t digits, int second, int third, const std::string& separator) {
  return WithLeadingZeros(first, digits) + separator + WithLeadingZeros(second, 2) + separator +
         WithLeadingZeros(third, 2);
}

std::string Date(const LocalTime& time, const std::string& separator) {
  return Join(time.year, 4, time.month, time.day, separator);
}

std::string TimeOfDay(const LocalTime& time, const std::string& separator) {
  return Join(time.hour, 2, time.minute, time.second, separator);
}

}  // namespace

std::string FormatLogTime(const LocalTime& time) {
  return Date(time, "/") + " " + TimeOfDay(time, ":");
}

std::string FormatShortStamp(const LocalTime& time) {
  return FormatLongStamp(time).substr(2);
}

std::string FormatLongStamp(const LocalTime& time) {
  return FormatDay(time) + TimeOfDay(time, "");
}

std::string FormatDay(const LocalTime& time) {
  return Date(time, "");
}

}  // namespace base
