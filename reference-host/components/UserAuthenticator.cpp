// Verifies passwords and function rights.
#include <windows.h>

#include <bcrypt.h>

#include <array>
#include <cstdlib>
#include <string_view>

#include "components/Components.h"

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

/// How the host keeps passwords: SHA-256 over the UTF-8 bytes of salt and password, as 64 lower-case hexadecimal
/// digits. Nothing when the system's cryptography fails.
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

std::optional<reference::Rows> QueryUsers(const std::string& statement, const std::vector<std::string>& parameters) {
  const auto database = reference::Database::OpenEntry("UserDB");
  return database ? database->Run(statement, parameters) : std::nullopt;
}

}  // namespace

UserAuthenticator::UserAuthenticator() {
  AddMethod(L"Verify", &UserAuthenticator::Verify);
  AddMethod(L"CheckFunction", &UserAuthenticator::CheckFunction);
}

std::int32_t UserAuthenticator::Verify(const std::string& userId, const std::string& password, std::int32_t& kind) {
  const auto users = QueryUsers("SELECT USER_KIND, SALT, PASSWORD_HASH FROM T_MUSER WHERE USER_ID = ?", {userId});
  if (!users) return kDatabaseFault;
  if (users->cells.empty()) return kUnknownUser;
  const auto& user = users->cells.front();
  const auto hash = HashPassword(user[1].value_or(""), password);
  if (!hash) return kDatabaseFault;
  if (!user[2] || *user[2] != *hash) return kWrongPassword;
  kind = std::atoi(user[0].value_or("0").c_str());
  return kDone;
}

std::int32_t UserAuthenticator::CheckFunction(const std::string& userId, std::int32_t code, std::int32_t& granted) {
  granted = 1;
  const auto users = QueryUsers(
      "SELECT R.FUNCTION_CODE FROM T_MUSER U LEFT JOIN T_FUNCTION_RIGHT R ON "
      "R.USER_ID = U.USER_ID AND R.FUNCTION_CODE = " +
          std::to_string(code) + " WHERE U.USER_ID = ?",
      {userId});
  if (!users) return kDatabaseFault;
  if (users->cells.empty()) return kUnknownUser;
  if (users->cells.front().front()) granted = 0;
  return kDone;
}

}  // namespace components
