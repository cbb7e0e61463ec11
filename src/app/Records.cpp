// What the host keeps of the operator's doings.
#include "app/Records.h"

#include "app/Application.h"

namespace app {
namespace {

base::Outcome NoAuditTrail() {
  return base::Failure("the audit trail component cannot be created");
}

}  // namespace

void Records::RecordOperation(const std::string& screen, const std::string& action) {
  if (!recorder_) CreateOperationRecorder();
  if (!recorder_) return;
  static_cast<void>(recorder_->Record(state_.HostName, state_.UserId, "BackupUtility", screen, action));
}

base::Outcome Records::RecordSignInOut(SignInOut which) {
  const auto trail = components_.CreateAuditTrail();
  if (!trail) return NoAuditTrail();
  const std::string& word = state_.SignInOutWords[static_cast<std::size_t>(which)];
  return trail->RecordSignInOut(state_.UserId, word, state_.ProgramTitle);
}

base::Outcome Records::RecordCategoryPhase(Phase phase, std::size_t target) {
  if (target >= state_.CategoryNames.size()) return base::Failure("no category has this number");
  const auto trail = components_.CreateAuditTrail();
  if (!trail) return NoAuditTrail();
  return trail->RecordCategoryPhase(state_.UserId, state_.PhaseWords[static_cast<std::size_t>(phase)],
                                    state_.CategoryNames[target]);
}

}  // namespace app
