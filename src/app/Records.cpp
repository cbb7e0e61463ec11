// What the host keeps of the operator's doings: operation records and the audit trail.
#include "app/Records.h"

#include "app/Application.h"
#include "app/ResultCodes.h"

namespace app {

void RecordOperation(Application& application, const std::string& screen, const std::string& action) {
  if (!application.operationRecorder) {
    application.operationRecorder = application.host.components.CreateOperationRecorder();
  }
  if (!application.operationRecorder) return;
  application.operationRecorder->Record(application.state.HostName, application.state.UserId, "BackupUtility", screen,
                                        action);
}

std::int32_t RecordSignInOut(Application& application, const std::string& userId, SignInOut which) {
  const std::unique_ptr<host::AuditTrail> trail = application.host.components.CreateAuditTrail();
  if (!trail) return kFailed;
  const std::string& word = application.state.SignInOutWords[static_cast<std::size_t>(which)];
  return trail->RecordSignInOut(userId, word, application.state.ProgramTitle);
}

std::int32_t RecordCategoryPhase(Application& application, const std::string& userId, Phase phase,
                                 std::size_t category) {
  const State& state = application.state;
  if (category >= state.CategoryNames.size()) return kFailed;
  const std::unique_ptr<host::AuditTrail> trail = application.host.components.CreateAuditTrail();
  if (!trail) return kFailed;
  return trail->RecordCategoryPhase(userId, state.PhaseWords[static_cast<std::size_t>(phase)],
                                    state.CategoryNames[category]);
}

}  // namespace app
