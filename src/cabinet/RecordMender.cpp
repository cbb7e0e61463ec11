// Puts a wrong byte in the records of a guarded cabinet right.
#include "cabinet/RecordMender.h"

#include <bit>
#include <optional>

namespace cabinet {
namespace {

/// In how many bytes of records one wrong byte is looked for: among more, too many would be worth trying. One wrong bit
/// is always looked for.
constexpr std::size_t kMostForOneByte = 16384;

/// Puts the one byte right that makes the records of a guarded cabinet differ from their CRC.
class RecordMender {
 public:
  explicit RecordMender(Beginning& records) : records_(records) {}

  bool Mend() {
    if (!LooksGuarded()) return false;
    const std::uint32_t end = Get32(&records_.bytes[kFoldersAtInGuarded]);
    if (MendWithin(end)) return true;
    for (unsigned bit = 0; bit < 32; ++bit) {
      if (MendEnd(end ^ 1U << bit, bit)) return true;
    }
    return false;
  }

 private:
  /// One bit of the mark may be the damaged one.
  bool LooksGuarded() {
    if (!records_.Have(kFoldersAtInGuarded + kFolderRecordSize)) return false;
    int bits = 0;
    for (std::size_t i = 0; i < kCrcMark.size(); ++i) {
      const auto wanted = static_cast<std::uint8_t>(kCrcMark[i]);
      bits += std::popcount(static_cast<unsigned>(records_.bytes[kCrcMarkAt + i] ^ wanted));
    }
    return bits <= 1;
  }

  /// How the CRC of the first `end` bytes differs from the one that they hold; nothing where they cannot be the
  /// records.
  std::optional<std::uint32_t> Difference(std::uint32_t end) {
    if (end < kFoldersAtInGuarded + kFolderRecordSize || !records_.Have(end)) return std::nullopt;
    const auto first = records_.bytes.begin();
    return RecordsCrc({first, first + static_cast<std::ptrdiff_t>(end)}) ^ Get32(&records_.bytes[kCrcAt]);
  }

  /// For records that end where the first folder's data begin.
  bool MendWithin(std::uint32_t end) {
    const std::optional<std::uint32_t> difference = Difference(end);
    if (!difference || *difference == 0) return false;
    if (std::has_single_bit(*difference)) {  // the CRC itself
      Put32(&records_.bytes[kCrcAt], Get32(&records_.bytes[kCrcAt]) ^ *difference);
      return true;
    }
    const auto accept = [end](const WrongBytes& wrong) {
      const bool few = std::has_single_bit(wrong.mask) || end <= kMostForOneByte;
      return wrong.mask < 0x100 && few && (wrong.at < kCrcAt || wrong.at >= kCrcAt + 4);  // those count as 0
    };
    const std::optional<WrongBytes> wrong = FindWrongBytes(end, 0, *difference, accept);
    if (wrong) Change(*wrong);
    return wrong.has_value();
  }

  /// For records whose own end is what is damaged.
  bool MendEnd(std::uint32_t end, unsigned bit) {
    if (end > records_.Size() || !records_.Have(end)) return false;
    const WrongBytes wrong{kFoldersAtInGuarded + bit / 8, 1U << bit % 8};
    Change(wrong);
    const std::optional<std::uint32_t> difference = Difference(end);
    if (difference && *difference == 0) return true;
    Change(wrong);
    return false;
  }

  void Change(const WrongBytes& wrong) {
    records_.bytes[wrong.at] = static_cast<std::uint8_t>(records_.bytes[wrong.at] ^ wrong.mask);
  }

  Beginning& records_;
};

}  // namespace

bool MendRecords(Beginning& records) {
  return RecordMender(records).Mend();
}

}  // namespace cabinet
