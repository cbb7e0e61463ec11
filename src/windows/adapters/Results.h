// Why a call of Windows or of COM failed, in words: the one place that asks the system what its numbers mean.
//
// The words are "<subject>: <the system's text> (<number>)" on one line, in UTF-8. The subject is what the call was
// about: a path, a command line, the name of a component's method.
#pragma once

#include <string>

#include "base/Outcome.h"
#include "windows/adapters/Win32.h"
// After Win32.h, on which it rests.
#include <oaidl.h>

namespace windows {

/// A failed call of Windows. `error` is what GetLastError answered directly behind the call, before anything else could
/// change it.
base::Outcome Failed(const std::string& subject, DWORD error);

/// For calls that answer with an error number, of which 0 is none.
base::Outcome OutcomeOfError(DWORD error, const std::string& subject);

/// For calls that answer TRUE or FALSE and leave the error to GetLastError. To be written round the call itself, so
/// that nothing comes between the two:
///
///   return OutcomeOf(CreateDirectoryW(name.c_str(), nullptr), path);
base::Outcome OutcomeOf(BOOL succeeded, const std::string& subject);

/// A failed call of COM. What the component itself says in `exception`, text and number, goes before the system's own;
/// its texts are freed here.
base::Outcome FailedCom(const std::string& subject, HRESULT result, EXCEPINFO* exception = nullptr);

/// A call of the host's that was carried out, and whose answer stands for a failure.
base::Outcome Refused(const std::string& subject, long answer);

/// Which answers of a host's call stand for a failure.
enum class FailsAt { AnyButZero, MinusOne };

/// What the answer of a host's call stands for.
base::Outcome OutcomeOfAnswer(FailsAt rule, long answer, const std::string& subject);

}  // namespace windows
