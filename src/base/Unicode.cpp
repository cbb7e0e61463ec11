// Decoding of UTF-8 and folding of letter case.
#include "base/Unicode.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>

namespace base {
namespace {

/// Invalid bytes are moved here, among the surrogates, which valid UTF-8 never yields.
constexpr char32_t kInvalidByte = 0xDC00;

/// What a lead byte announces: how many bytes follow it, its own bits, and the smallest
/// character that needs so many bytes.
struct Lead {
  std::size_t following;
  char32_t bits;
  char32_t smallest;
};

Lead ReadLead(unsigned char byte) {
  if (byte >= 0xF0 && byte <= 0xF4) return {3, byte & 0x07U, 0x10000};
  if (byte >= 0xE0 && byte < 0xF0) return {2, byte & 0x0FU, 0x800};
  if (byte >= 0xC2 && byte < 0xE0) return {1, byte & 0x1FU, 0x80};
  return {0, byte < 0x80 ? byte : kInvalidByte + byte, 0};
}

bool IsSurrogate(char32_t character) {
  return character >= 0xD800 && character <= 0xDFFF;
}

/// Capitals from `first` to `last`, `step` apart, whose small letters lie `distance` further.
struct CapitalRange {
  char32_t first;
  char32_t last;
  char32_t step;
  std::int32_t distance;
};

// Pairs only: Windows keeps the long s, the micro sign and the Greek symbol forms apart from
// the letters they stand for, and the Turkish i letters have no partner. The final sigma,
// which shares its capital with the common one, is the exception. Sorted by `first`.
constexpr CapitalRange kCapitals[] = {
    {0x0041, 0x005A, 1, 32},   {0x00C0, 0x00D6, 1, 32}, {0x00D8, 0x00DE, 1, 32}, {0x0100, 0x012E, 2, 1},
    {0x0132, 0x0136, 2, 1},    {0x0139, 0x0147, 2, 1},  {0x014A, 0x0176, 2, 1},  {0x0178, 0x0178, 1, -121},
    {0x0179, 0x017D, 2, 1},    {0x0370, 0x0372, 2, 1},  {0x0376, 0x0376, 1, 1},  {0x037F, 0x037F, 1, 116},
    {0x0386, 0x0386, 1, 38},   {0x0388, 0x038A, 1, 37}, {0x038C, 0x038C, 1, 64}, {0x038E, 0x038F, 1, 63},
    {0x0391, 0x03A1, 1, 32},   {0x03A3, 0x03AB, 1, 32}, {0x03C2, 0x03C2, 1, 1},  {0x03CF, 0x03CF, 1, 8},
    {0x03D8, 0x03EE, 2, 1},    {0x03F7, 0x03F7, 1, 1},  {0x03F9, 0x03F9, 1, -7}, {0x03FA, 0x03FA, 1, 1},
    {0x03FD, 0x03FF, 1, -130}, {0x0400, 0x040F, 1, 80}, {0x0410, 0x042F, 1, 32}, {0x0460, 0x0480, 2, 1},
    {0x048A, 0x04BE, 2, 1},    {0x04C0, 0x04C0, 1, 15}, {0x04C1, 0x04CD, 2, 1},  {0x04D0, 0x052E, 2, 1},
    {0x1E00, 0x1E94, 2, 1},    {0x1EA0, 0x1EFE, 2, 1},  {0xFF21, 0xFF3A, 1, 32},
};

}  // namespace

char32_t TakeCharacter(std::string_view& text) {
  const auto first = static_cast<unsigned char>(text.front());
  const Lead lead = ReadLead(first);
  char32_t character = lead.bits;
  bool valid = text.size() > lead.following;
  for (std::size_t i = 1; valid && i <= lead.following; ++i) {
    const auto next = static_cast<unsigned char>(text[i]);
    valid = (next & 0xC0U) == 0x80U;
    character = (character << 6U) | (next & 0x3FU);
  }
  valid = valid &&
          (lead.following == 0 || (character >= lead.smallest && character <= 0x10FFFF && !IsSurrogate(character)));
  text.remove_prefix(valid ? lead.following + 1 : 1);
  return valid ? character : kInvalidByte + first;
}

std::u32string ToCharacters(std::string_view text) {
  std::u32string characters;
  characters.reserve(text.size());
  while (!text.empty()) characters.push_back(TakeCharacter(text));
  return characters;
}

char32_t FoldCase(char32_t character) {
  const auto* range =
      std::upper_bound(std::begin(kCapitals), std::end(kCapitals), character,
                       [](char32_t wanted, const CapitalRange& candidate) { return wanted < candidate.first; });
  if (range == std::begin(kCapitals)) return character;
  --range;
  if (character > range->last || (character - range->first) % range->step != 0) return character;
  return static_cast<char32_t>(static_cast<std::int32_t>(character) + range->distance);
}

std::u32string Folded(std::string_view text) {
  std::u32string folded = ToCharacters(text);
  for (char32_t& character : folded) character = FoldCase(character);
  return folded;
}

std::size_t WideLength(std::string_view text) {
  std::size_t length = 0;
  for (const char character : text) {
    const auto byte = static_cast<unsigned char>(character);
    if ((byte & 0xC0u) == 0x80u) continue;  // goes with the byte before it
    length += byte >= 0xF0u ? 2 : 1;        // beyond the first plane: a surrogate pair
  }
  return length;
}

}  // namespace base
