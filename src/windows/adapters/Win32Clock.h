// The workstation's local time and its formats.
#pragma once

#include "host/Clock.h"

namespace windows {

class Win32Clock : public host::Clock {
 public:
  host::LocalTime Now() override;
  /// Both formats are those of the Windows user's own regional settings.
  std::string ShortDate(const host::LocalTime& time) override;
  std::string LongTime(const host::LocalTime& time) override;
};

}  // namespace windows
