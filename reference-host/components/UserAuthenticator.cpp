#include "components/UserAuthenticator.h"

#include <cstdlib>

#include "common/Database.h"
#include "common/HostPaths.h"
#include "components/PasswordHash.h"

namespace components {
namespace {

enum : std::int32_t { kDone = 0, kUnknownUser = 1, kWrongPassword = 2, kDatabaseFault = 9 };

std::optional<reference::Rows> QueryUsers(const std::string& statement, const std::vector<std::string>& parameters) {
  const auto connection = reference::ReadPathEntry("UserDB");
  const auto database = connection ? reference::Database::Open(*connection) : nullptr;
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
