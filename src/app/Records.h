// What the host keeps of the operator's doings: operation records and the audit trail.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace app {

class Application;

/// Hands a step to the host's operation recorder; its answer is ignored.
void RecordOperation(Application& application, const std::string& screen, const std::string& action);

enum class SignInOut : std::size_t { SignIn = 0, SignOut = 1 };
/// Writes a sign-in or sign-out to the audit trail. 0 means recorded.
std::int32_t RecordSignInOut(Application& application, const std::string& userId, SignInOut which);

enum class Phase : std::size_t { Start = 0, End = 1 };
/// Writes the phase of one category to the audit trail; `category` counts `CategoryNames`
/// (0 to 9; 9 is an empty name). 0 means recorded.
std::int32_t RecordCategoryPhase(Application& application, const std::string& userId, Phase phase,
                                 std::size_t category);

}  // namespace app
