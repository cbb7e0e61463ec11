// What the host keeps of the operator's doings: operation records and the audit trail.
#pragma once

#include <cstddef>
#include <memory>
#include <string>

#include "host/Components.h"

namespace app {

struct State;

enum class SignInOut : std::size_t { SignIn = 0, SignOut = 1 };
enum class Phase : std::size_t { Start = 0, End = 1 };

class Records {
 public:
  /// `state` tells who is signed in, and the host's words for what is recorded.
  Records(host::ComponentFactory& components, const State& state) : components_(components), state_(state) {}

  /// Creates the host's operation recorder. Where that fails, RecordOperation tries again.
  void CreateOperationRecorder() { recorder_ = components_.CreateOperationRecorder(); }
  void ReleaseOperationRecorder() { recorder_.reset(); }

  /// Hands a step to the host's operation recorder; its answer is ignored.
  void RecordOperation(const std::string& screen, const std::string& action);

  /// Writes a sign-in or sign-out to the audit trail.
  base::Outcome RecordSignInOut(SignInOut which);

  /// Writes the phase of one category to the audit trail; `target` counts the state's `CategoryNames` (0 to 9; 9 is an
  /// empty name).
  base::Outcome RecordCategoryPhase(Phase phase, std::size_t target);

 private:
  host::ComponentFactory& components_;
  const State& state_;
  std::unique_ptr<host::OperationRecorder> recorder_;
};

}  // namespace app
