// Readers and writers on Windows files.
#include "windows/adapters/FileStreams.h"

#include <algorithm>
#include <limits>

#include "windows/adapters/Results.h"
#include "windows/adapters/Text.h"

namespace windows {
namespace {

constexpr std::size_t kBlockSize = 64 * 1024;
// One call of the system counts in 32 bits.
constexpr std::size_t kLargestTransfer = 64 * 1024 * 1024;
// Sectors have up to some kilobytes, memory pages too. Large, because nothing reads ahead; small enough to leave the
// screen alive between two blocks of a slow medium.
constexpr DWORD kUncachedBlockSize = 1024 * 1024;

bool IsPlace(std::uint64_t offset) {
  return offset <= std::uint64_t{std::numeric_limits<std::int64_t>::max()};
}

}  // namespace

bool FileTextReader::Refill() {
  block_.resize(kBlockSize);
  DWORD read = 0;
  failed_ = ReadFile(file_.Get(), block_.data(), static_cast<DWORD>(block_.size()), &read, nullptr) == FALSE;
  if (failed_) read = 0;
  block_.resize(read);
  position_ = 0;
  return read > 0;
}

bool FileTextReader::ReadLine(std::string& line) {
  if (position_ == block_.size() && !Refill()) return false;
  // Splitting the bytes is safe: in no code page is LF the second half of a character.
  std::string bytes;
  bool ended = false;
  do {
    const std::size_t end = std::min(block_.find('\n', position_), block_.size());
    bytes.append(block_, position_, end - position_);
    ended = end < block_.size();
    position_ = ended ? end + 1 : end;
  } while (!ended && Refill());
  if (failed_) return false;  // half a line may say something else than the whole one
  if (bytes.ends_with('\r')) bytes.pop_back();
  line = FromCodePage(bytes);
  return true;
}

base::Outcome FileBinaryWriter::Write(const std::byte* data, std::size_t count) {
  if (!file_) return Failed(path_, ERROR_INVALID_HANDLE);
  while (count > 0) {
    const DWORD part = static_cast<DWORD>(std::min(count, kLargestTransfer));
    DWORD written = 0;
    if (WriteFile(file_.Get(), data, part, &written, nullptr) == FALSE) return Failed(path_, GetLastError());
    if (written != part) return Failed(path_, ERROR_DISK_FULL);
    data += part;
    count -= part;
  }
  return {};
}

base::Outcome FileBinaryWriter::Close() {
  if (!file_) return {};
  // A full or faulty medium may refuse what it has only taken into its cache so far.
  base::Outcome flushed = OutcomeOf(FlushFileBuffers(file_.Get()), path_);
  base::Outcome closed = OutcomeOf(file_.Close(), path_);
  return flushed.IsDone() ? closed : flushed;
}

base::Outcome FileTextWriter::Write(const std::string& text) {
  const std::string bytes = ToCodePage(text);
  return file_.Write(reinterpret_cast<const std::byte*>(bytes.data()), bytes.size());
}

std::int64_t FileBinaryReader::Read(std::byte* data, std::size_t count) {
  constexpr std::int64_t kReadFault = -1;
  DWORD read = 0;
  const DWORD part = static_cast<DWORD>(std::min(count, kLargestTransfer));
  return ReadFile(file_.Get(), data, part, &read, nullptr) == FALSE ? kReadFault : std::int64_t{read};
}

bool FileBinaryReader::Seek(std::uint64_t offset) {
  LARGE_INTEGER place{};
  place.QuadPart = static_cast<LONGLONG>(offset);
  return IsPlace(offset) && SetFilePointerEx(file_.Get(), place, nullptr, FILE_BEGIN) != FALSE;
}

UncachedReader::UncachedReader(Handle file, const std::string& /*path*/)
    : file_(std::move(file)),
      block_(static_cast<std::byte*>(
          VirtualAlloc(nullptr, kUncachedBlockSize, MEM_COMMIT | MEM_RESERVE, PAGE_READWRITE))) {}

bool UncachedReader::Refill() {
  size_ = 0;
  blockAt_ = position_ - position_ % kUncachedBlockSize;
  OVERLAPPED place{};
  place.Offset = static_cast<DWORD>(blockAt_);
  place.OffsetHigh = static_cast<DWORD>(blockAt_ >> 32);
  DWORD read = 0;
  if (ReadFile(file_.Get(), block_.get(), kUncachedBlockSize, &read, &place) == FALSE)
    return GetLastError() == ERROR_HANDLE_EOF;
  size_ = read;
  return true;
}

std::int64_t UncachedReader::Read(std::byte* data, std::size_t count) {
  constexpr std::int64_t kReadFault = -1;
  const auto isInBlock = [this] { return position_ >= blockAt_ && position_ - blockAt_ < size_; };
  const bool isBehindEnd = size_ > 0 && size_ < kUncachedBlockSize && position_ >= blockAt_ + size_;
  if (count == 0 || isBehindEnd) return 0;
  if (!block_ || (!isInBlock() && !Refill())) return kReadFault;
  if (!isInBlock()) return 0;
  const auto from = static_cast<std::size_t>(position_ - blockAt_);
  const std::size_t taken = std::min(count, size_ - from);
  std::copy_n(block_.get() + from, taken, data);
  position_ += taken;
  return static_cast<std::int64_t>(taken);
}

bool UncachedReader::Seek(std::uint64_t offset) {
  if (!IsPlace(offset)) return false;
  position_ = offset;
  return true;
}

}  // namespace windows
