// The workstation's local time and its formats.
#include "windows/adapters/Win32Clock.h"

#include "windows/adapters/Text.h"
#include "windows/adapters/Win32.h"

namespace windows {
namespace {

constexpr int kLongestFormat = 256;

SYSTEMTIME SystemTimeOf(const host::LocalTime& time) {
  SYSTEMTIME result{};
  result.wYear = static_cast<WORD>(time.year);
  result.wMonth = static_cast<WORD>(time.month);
  result.wDay = static_cast<WORD>(time.day);
  result.wHour = static_cast<WORD>(time.hour);
  result.wMinute = static_cast<WORD>(time.minute);
  result.wSecond = static_cast<WORD>(time.second);
  return result;
}

}  // namespace

host::LocalTime Win32Clock::Now() {
  SYSTEMTIME now;
  GetLocalTime(&now);
  return {now.wYear, now.wMonth, now.wDay, now.wHour, now.wMinute, now.wSecond};
}

std::string Win32Clock::ShortDate(const host::LocalTime& time) {
  const SYSTEMTIME date = SystemTimeOf(time);
  wchar_t text[kLongestFormat] = {};
  GetDateFormatEx(LOCALE_NAME_USER_DEFAULT, DATE_SHORTDATE, &date, nullptr, text, kLongestFormat, nullptr);
  return Utf8(text);
}

std::string Win32Clock::LongTime(const host::LocalTime& time) {
  const SYSTEMTIME moment = SystemTimeOf(time);
  wchar_t text[kLongestFormat] = {};
  GetTimeFormatEx(LOCALE_NAME_USER_DEFAULT, 0, &moment, nullptr, text, kLongestFormat);
  return Utf8(text);
}

}  // namespace windows
