// The local time, and how this system writes dates and times into names and lines.
#pragma once

#include <string>

namespace base {

struct LocalTime {
  int year = 0;
  int month = 1;  ///< 1 to 12
  int day = 1;
  int hour = 0;
  int minute = 0;
  int second = 0;
};

/// "yyyy/mm/dd hh:mm:ss", the log's time stamp.
std::string FormatLogTime(const LocalTime& time);
/// "yymmddhhmmss": the work folder's name.
std::string FormatShortStamp(const LocalTime& time);
/// "yyyymmddhhnnss": the proposed folder's name.
std::string FormatLongStamp(const LocalTime& time);
/// "yyyymmdd": the registry's backup date.
std::string FormatDay(const LocalTime& time);

}  // namespace base
