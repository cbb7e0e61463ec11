#include "components/PasswordHash.h"

#include <windows.h>

#include <bcrypt.h>

#include <array>
#include <string_view>

namespace components {
namespace {

// The system's SHA-256, open for one hash.
class Sha256 {
 public:
  Sha256() {
    if (BCryptOpenAlgorithmProvider(&algorithm_, BCRYPT_SHA256_ALGORITHM, nullptr, 0) < 0) algorithm_ = nullptr;
    if (algorithm_ && BCryptCreateHash(algorithm_, &hash_, nullptr, 0, nullptr, 0, 0) < 0) hash_ = nullptr;
  }
  ~Sha256() {
    if (hash_) BCryptDestroyHash(hash_);
    if (algorithm_) BCryptCloseAlgorithmProvider(algorithm_, 0);
  }
  Sha256(const Sha256&) = delete;
  Sha256& operator=(const Sha256&) = delete;

  bool Add(std::string bytes) {
    return hash_ &&
           BCryptHashData(hash_, reinterpret_cast<PUCHAR>(bytes.data()), static_cast<ULONG>(bytes.size()), 0) >= 0;
  }
  bool Finish(std::array<unsigned char, 32>& digest) {
    return hash_ && BCryptFinishHash(hash_, digest.data(), static_cast<ULONG>(digest.size()), 0) >= 0;
  }

 private:
  BCRYPT_ALG_HANDLE algorithm_ = nullptr;
  BCRYPT_HASH_HANDLE hash_ = nullptr;
};

}  // namespace

std::optional<std::string> HashPassword(const std::string& salt, const std::string& password) {
  Sha256 hash;
  std::array<unsigned char, 32> digest = {};
  if (!hash.Add(salt + password) || !hash.Finish(digest)) return std::nullopt;
  constexpr std::string_view kDigits = "0123456789abcdef";
  std::string text;
  for (const unsigned char byte : digest) {
    text += kDigits[byte >> 4];
    text += kDigits[byte & 15];
  }
  return text;
}

}  // namespace components
