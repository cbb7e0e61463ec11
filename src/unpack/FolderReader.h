// Unpacks the data of a cabinet's folders, on all processors and in their order.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>

#include "base/Outcome.h"
#include "cabinet/Source.h"
#include "cabinet/Structure.h"

namespace unpack {

/// Takes the next piece of a folder's data; false ends the reading.
using Sink = std::function<bool(const std::uint8_t* data, std::size_t size)>;

/// The cause where blocks have no checksum and that is not allowed.
inline constexpr const char* kNoChecksum = "its data have no checksum";

/// Done for what can be unpacked; the cause of a failure is words about "it", the cabinet.
base::Outcome CheckMethod(cabinet::Method method);

/// Reads one folder after the other, of any number of cabinets. Its threads and its memory, which depends on their
/// number alone, serve them all.
class FolderReader {
 public:
  /// `threads`: how many work, the caller's own included; at least 1.
  explicit FolderReader(unsigned threads);
  ~FolderReader();

  /// Unpacks all data of the folder of that index of the cabinet that `structure` was read from into `sink`, which gets
  /// only data whose checksums were right. `allowUnchecked` lets blocks without one pass, unless the cabinet is
  /// guarded. Stopped where the sink ended it. Fails where anything is damaged, with what stood before the damage
  /// passed on; and of a guarded cabinet, when all was passed on and is not what the folder was written with.
  base::Outcome Read(cabinet::Source& source, const cabinet::Structure& structure, std::size_t index,
                     bool allowUnchecked, const Sink& sink);

 private:
  class Unpacking;

  std::unique_ptr<Unpacking> unpacking_;
};

}  // namespace unpack
