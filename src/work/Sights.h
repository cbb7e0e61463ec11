// What can be seen of another program's work from outside, while it is waited for.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>

#include "app/Progress.h"
#include "host/Desktop.h"
#include "host/FileSystem.h"

namespace work {

/// Bytes of the files directly in a folder; 0 when it cannot be listed.
std::uint64_t BytesIn(host::FileSystem& files, const std::string& folder);

/// Bytes of whatever grows while a program works, such as the file that it makes. May be empty: nothing is to be seen.
using Sight = std::function<std::uint64_t()>;

/// The size of a file; 0 while it is not there.
Sight SizeOfFile(host::FileSystem& files, const std::string& path);

/// Bytes of all files in a folder and below it. Of a large tree few folders are looked at: what has not changed while
/// something else has is taken for finished, as programs that copy do one folder after the other. Serves the user
/// interface after each folder.
Sight SizeOfTree(host::FileSystem& files, host::MessageLoop& loop, const std::string& folder);

/// Looks at a program's work: what has grown since the last look is told to the part of the job at work. Looking takes
/// less than a hundredth of the time, whatever there is to be looked at, but for the one look in some time without
/// which the bar would stand.
class Observation {
 public:
  /// All must outlive the observation.
  Observation(host::Clock& clock, app::Progress& progress, const Sight& sight)
      : clock_(clock), progress_(progress), sight_(sight) {}

  /// Looks, and returns after how long to look again. To be called first when the program has begun: programs that end
  /// at once are not looked at. The first look finds what was there before.
  std::chrono::milliseconds Look();

 private:
  host::Clock& clock_;
  app::Progress& progress_;
  const Sight& sight_;
  bool begun_ = false;
  std::optional<std::uint64_t> seen_;
};

}  // namespace work
