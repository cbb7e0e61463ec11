// The host's components, reached late-bound.
#pragma once

#include "host/Components.h"

namespace windows {

/// Creates the components by their ProgIDs; one that is not registered is a null pointer.
class ComComponentFactory : public host::ComponentFactory {
 public:
  std::unique_ptr<host::MessageDialog> CreateMessageDialog() override;
  std::unique_ptr<host::LogWriter> CreateLogWriter() override;
  std::unique_ptr<host::OperationRecorder> CreateOperationRecorder() override;
  std::unique_ptr<host::AuditTrail> CreateAuditTrail() override;
  std::unique_ptr<host::UserQuery> CreateUserQuery() override;
  std::unique_ptr<host::UserAuthenticator> CreateUserAuthenticator() override;
  std::unique_ptr<host::MediaComponent> CreateMediaComponent() override;
  std::unique_ptr<host::PersonalInfoFilter> CreatePersonalInfoFilter() override;
  std::unique_ptr<host::StudyDatabaseQuery> CreateStudyDatabaseQuery() override;
};

}  // namespace windows
