// Where the bytes of a cabinet come from.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace cabinet {

/// A file, or something like one, that is read at any place. It stays as it is while it is read.
class Source {
 public:
  virtual ~Source() = default;

  /// Reads up to `count` bytes from `offset` on. Returns how many, 0 at the end, -1 where they cannot be read; fewer
  /// than asked for mean no more than that.
  virtual std::int64_t ReadAt(std::uint64_t offset, void* data, std::size_t count) = 0;

  /// How long it is, in bytes.
  virtual std::uint64_t Size() = 0;
};

/// Appends to `bytes`, which are the beginning of `source`, a piece of what follows: a large one, or `count` bytes
/// where a bad place spoils that. Returns as ReadAt does.
std::int64_t AppendNext(Source& source, std::vector<std::uint8_t>& bytes, std::size_t count);

/// A part of a source in memory, which goes forward with what is asked for: for reading all of it once, in its order.
class Window {
 public:
  explicit Window(Source& source) : source_(source) {}

  /// The `count` bytes from `offset` on, at most kReach of them; valid until the next call. Null where the source ends
  /// before, or cannot be read.
  const std::uint8_t* At(std::uint64_t offset, std::size_t count);

  /// Whether the last null came from a source that cannot be read.
  bool CannotBeRead() const { return cannotBeRead_; }

  static constexpr std::size_t kReach = std::size_t{1} << 16;

 private:
  bool Fill(std::uint64_t offset, std::size_t count);
  bool Read(std::size_t count, std::size_t atMost);

  static constexpr std::size_t kSize = 4 * kReach;

  Source& source_;
  std::unique_ptr<std::uint8_t[]> bytes_ = std::make_unique_for_overwrite<std::uint8_t[]>(kSize);
  std::uint64_t start_ = 0;  // where bytes_ stand in the source
  std::size_t size_ = 0;     // how many of them are there
  bool cannotBeRead_ = false;
};

}  // namespace cabinet
