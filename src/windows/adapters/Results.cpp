// The system's numbers, and the words that go with them.
#include "windows/adapters/Results.h"

#include <oleauto.h>

#include <algorithm>

#include "base/Text.h"
#include "windows/adapters/Text.h"

namespace windows {
namespace {

/// What `text` says, without line ends and without blanks around it.
std::string OneLine(std::string text) {
  std::ranges::replace_if(
      text, [](char character) { return static_cast<unsigned char>(character) < ' '; }, ' ');
  return base::Trim(text);
}

/// In the language of the Windows user; empty for a number that the system does not know.
std::string SystemText(DWORD code) {
  constexpr DWORD kFlags = FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS;
  wchar_t* text = nullptr;
  const DWORD length = FormatMessageW(kFlags, nullptr, code, 0, reinterpret_cast<wchar_t*>(&text), 0, nullptr);
  const LocalMemory<wchar_t> owner(text);
  return length == 0 ? std::string() : OneLine(Utf8({text, length}));
}

base::Outcome FailedWith(const std::string& subject, const std::string& text, const std::string& number) {
  const std::string beginning = subject.empty() ? std::string() : subject + ": ";
  return base::Failure(beginning + (text.empty() ? "failed" : text) + " (" + number + ")");
}

/// As documentation writes a result of COM: "0x80040154".
std::string Hexadecimal(HRESULT result) {
  constexpr char kDigits[] = "0123456789ABCDEF";
  std::string text = "0x";
  for (int shift = 28; shift >= 0; shift -= 4) text += kDigits[(static_cast<unsigned long>(result) >> shift) & 0xF];
  return text;
}

/// Takes the description out and frees all texts.
std::string TakeDescription(EXCEPINFO& exception) {
  if (exception.pfnDeferredFillIn != nullptr) exception.pfnDeferredFillIn(&exception);
  const BSTR words = exception.bstrDescription;
  const std::string description = words == nullptr ? std::string() : OneLine(Utf8({words, SysStringLen(words)}));
  for (const BSTR text : {exception.bstrDescription, exception.bstrSource, exception.bstrHelpFile}) SysFreeString(text);
  return description;
}

}  // namespace

base::Outcome Failed(const std::string& subject, DWORD error) {
  return FailedWith(subject, SystemText(error), std::to_string(error));
}

base::Outcome OutcomeOfError(DWORD error, const std::string& subject) {
  return error == ERROR_SUCCESS ? base::Outcome() : Failed(subject, error);
}

base::Outcome OutcomeOf(BOOL succeeded, const std::string& subject) {
  const DWORD error = GetLastError();
  return succeeded != FALSE ? base::Outcome() : Failed(subject, error);
}

base::Outcome FailedCom(const std::string& subject, HRESULT result, EXCEPINFO* exception) {
  std::string text;
  if (exception != nullptr) {
    text = TakeDescription(*exception);
    if (FAILED(exception->scode)) result = exception->scode;
  }
  return FailedWith(subject, text.empty() ? SystemText(static_cast<DWORD>(result)) : text, Hexadecimal(result));
}

base::Outcome Refused(const std::string& subject, long answer) {
  return base::Failure(subject + ": answered " + std::to_string(answer));
}

base::Outcome OutcomeOfAnswer(FailsAt rule, long answer, const std::string& subject) {
  constexpr long kDone = 0;
  constexpr long kFault = -1;
  const bool failed = rule == FailsAt::AnyButZero ? answer != kDone : answer == kFault;
  return failed ? Refused(subject, answer) : base::Outcome();
}

}  // namespace windows
