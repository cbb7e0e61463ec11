// The local time, and how this system writes dates and times.
#pragma once

#include <string>

namespace host {

struct LocalTime {
  int year = 0;
  int month = 1;  ///< 1 to 12
  int day = 1;
  int hour = 0;
  int minute = 0;
  int second = 0;
};

class Clock {
 public:
  virtual ~Clock() = default;
  virtual LocalTime Now() = 0;
  /// The system's short date format.
  virtual std::string ShortDate(const LocalTime& time) = 0;
  /// The system's long time format.
  virtual std::string LongTime(const LocalTime& time) = 0;
};

}  // namespace host
