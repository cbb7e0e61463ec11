// How answers of Windows and of COM become result codes: 0 done, -1 failed.
// The cause stays behind; no caller could act on it.
#pragma once

#include <cstdint>

#include "app/ResultCodes.h"
#include "windows/adapters/Win32.h"

namespace windows {

/// For calls that answer TRUE or FALSE.
inline std::int32_t ResultOf(BOOL succeeded) {
  return succeeded != FALSE ? app::kDone : app::kFailed;
}

/// For COM calls.
inline std::int32_t ResultOfCom(HRESULT result) {
  return SUCCEEDED(result) ? app::kDone : app::kFailed;
}

}  // namespace windows
