// Whether a drive holds a medium that can be used.
#pragma once

#include <cstdint>
#include <string>

#include "app/Application.h"
#include "app/ResultCodes.h"

namespace media {

inline constexpr std::int32_t kDriveError = -1;
inline constexpr std::int32_t kDriveUnusable = 0;
inline constexpr std::int32_t kNoMedium = 1;
/// A medium that can be read, but must be prepared before anything is written to it.
inline constexpr std::int32_t kReadableMedium = 2;
inline constexpr std::int32_t kMediumReady = 3;

/// Asks the host's media component, created for this one call and set up with `MediaAppCommand`.
/// A component that is missing answers kDriveError.
std::int32_t GetDriveStatus(app::Application& application, const std::string& driveOrFolder);

/// The messages of one operation for the answers that stop it or make it wait.
struct MediumMessages {
  std::int32_t error = 0;     ///< kDriveError
  std::int32_t unusable = 0;  ///< kDriveUnusable
  std::int32_t insert = 0;    ///< kNoMedium: a two-choice prompt, asked again until there is a medium
};

enum class Medium {
  Ready,
  Readable,  ///< kReadableMedium: what that means is the caller's decision
  Stopped,   ///< an error was shown, or the operator stopped
};

/// Asks for the status of `drive` until it is one that decides, serving the user interface between.
Medium WaitForMedium(app::Application& application, const std::string& drive, const MediumMessages& messages);

/// Whether the drive of `SelectedFolder` may be read: kDone, or kStopped when the operator stopped
/// or an error was shown.
app::ResultCode CheckSourceDrive(app::Application& application);

/// The drive and error messages of everything that reads a backup set.
inline constexpr MediumMessages kSourceMessages{63410, 63411, 64400};

}  // namespace media
