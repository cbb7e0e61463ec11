// Reads a source forward, in large pieces.
#include "cabinet/Source.h"

#include <algorithm>
#include <cstring>

namespace cabinet {
namespace {

constexpr std::size_t kReadAtOnce = std::size_t{1} << 16;

std::int64_t Append(Source& source, std::vector<std::uint8_t>& bytes, std::size_t count) {
  const std::size_t before = bytes.size();
  bytes.resize(before + count);
  const std::int64_t got = source.ReadAt(before, bytes.data() + before, count);
  bytes.resize(before + static_cast<std::size_t>(std::max<std::int64_t>(got, 0)));
  return got;
}

}  // namespace

std::int64_t AppendNext(Source& source, std::vector<std::uint8_t>& bytes, std::size_t count) {
  const std::int64_t got = Append(source, bytes, std::max(count, kReadAtOnce));
  return got < 0 ? Append(source, bytes, count) : got;
}

const std::uint8_t* Window::At(std::uint64_t offset, std::size_t count) {
  cannotBeRead_ = false;
  const bool there = offset >= start_ && offset - start_ <= size_ && size_ - (offset - start_) >= count;
  if (!there && !Fill(offset, count)) return nullptr;
  return bytes_.get() + (offset - start_);
}

bool Window::Fill(std::uint64_t offset, std::size_t count) {
  const bool overlaps = offset >= start_ && offset - start_ < size_;
  const std::size_t kept = overlaps ? size_ - static_cast<std::size_t>(offset - start_) : 0;
  std::memmove(bytes_.get(), bytes_.get() + (size_ - kept), kept);
  start_ = offset;
  size_ = kept;
  // Where one bad place spoils a large piece, the bytes that are wanted may still be had.
  return count <= kReach && (Read(count, kSize) || (cannotBeRead_ && Read(count, count)));
}

/// Until there are `count` bytes, asking for as many as `atMost`.
bool Window::Read(std::size_t count, std::size_t atMost) {
  cannotBeRead_ = false;
  while (size_ < count) {
    const std::int64_t got = source_.ReadAt(start_ + size_, bytes_.get() + size_, atMost - size_);
    cannotBeRead_ = got < 0;
    if (got <= 0) return false;
    size_ += static_cast<std::size_t>(got);
  }
  return true;
}

}  // namespace cabinet
