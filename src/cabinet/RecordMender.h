// Puts a wrong byte in the records of a guarded cabinet right, by their CRC.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <vector>

#include "cabinet/Blocks.h"
#include "cabinet/Source.h"

namespace cabinet {

inline constexpr std::size_t kFoldersAtInGuarded = kCrcAt + 4;

/// More than the records of any cabinet take.
inline constexpr std::size_t kMostRecords = std::size_t{1} << 26;

/// A source whose first bytes were read, and may have been put right.
class Beginning : public Source {
 public:
  explicit Beginning(Source& source) : source_(source) {}

  /// Whether the first `count` bytes are there. They are read once.
  bool Have(std::uint64_t count) {
    if (count > std::min<std::uint64_t>(source_.Size(), kMostRecords)) return false;
    while (bytes.size() < count) {
      if (AppendNext(source_, bytes, static_cast<std::size_t>(count) - bytes.size()) <= 0) return false;
    }
    return true;
  }

  std::int64_t ReadAt(std::uint64_t offset, void* data, std::size_t count) override {
    if (offset >= bytes.size()) return source_.ReadAt(offset, data, count);
    const std::size_t here = std::min(count, bytes.size() - static_cast<std::size_t>(offset));
    std::memcpy(data, bytes.data() + offset, here);
    return static_cast<std::int64_t>(here);
  }
  std::uint64_t Size() override { return source_.Size(); }

  std::vector<std::uint8_t> bytes;

 private:
  Source& source_;
};

/// Finds the one byte that makes the records of a guarded cabinet differ from their CRC, and puts it right. Returns
/// whether there was one; where not, the records are as they were.
bool MendRecords(Beginning& records);

}  // namespace cabinet
