// Tarsus.UserAuthenticator: passwords and function rights of the host's users,
// in T_MUSER and T_FUNCTION_RIGHT behind the path table's entry "UserDB".
#pragma once

#include "components/Component.h"

namespace components {

/// Results of both routines: 0 done, 1 unknown user, 2 wrong password, 9 fault of the database.
class UserAuthenticator final : public Component {
 public:
  UserAuthenticator();
  /// `kind` is the user's kind (6 is a privileged user) on result 0, else 0.
  std::int32_t Verify(const std::string& userId, const std::string& password, std::int32_t& kind);
  /// `granted` is 0 when the user may use function `code`, and 1 when not or not known.
  std::int32_t CheckFunction(const std::string& userId, std::int32_t code, std::int32_t& granted);
};

}  // namespace components
