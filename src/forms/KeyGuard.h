// Tells the keys that are meant for a dialog from those that were meant for the one before it.
#pragma once

#include <cstdint>

namespace forms {

/// For a dialog that can start what nobody can take back: a key means it when a moment has passed without one. Times
/// are milliseconds of a clock that may run over.
class KeyGuard {
 public:
  /// As long as a person needs to see what has come to the front.
  static constexpr std::uint32_t kMoment = 1000;

  /// The dialog has come to the front.
  void Shown(std::uint32_t now) { restsSince_ = now; }

  /// Whether the key that went down at `when`, perhaps before the dialog was there, means the dialog. `isRepeated`: it
  /// has been held down. One that does not mean it begins the moment anew, so hammering never gets through.
  bool Takes(std::uint32_t when, bool isRepeated) {
    const auto rested = static_cast<std::int32_t>(when - restsSince_);
    if (rested >= static_cast<std::int32_t>(kMoment) && !isRepeated) return true;
    if (rested > 0) restsSince_ = when;
    return false;
  }

 private:
  std::uint32_t restsSince_ = 0;
};

}  // namespace forms
