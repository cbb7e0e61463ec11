// The host's components, reached late-bound.
#pragma once

#include "host/Components.h"
#include "windows/adapters/Win32Desktop.h"

namespace windows {

// The names under which an integrator registers the host's components; "out" arguments are passed by reference.
inline constexpr wchar_t kMessageDialogProgId[] = L"Tarsus.MessageDialog";
inline constexpr wchar_t kLogWriterProgId[] = L"Tarsus.LogWriter";
inline constexpr wchar_t kOperationRecorderProgId[] = L"Tarsus.OperationRecorder";
inline constexpr wchar_t kAuditTrailProgId[] = L"Tarsus.AuditTrail";
inline constexpr wchar_t kUserQueryProgId[] = L"Tarsus.UserQuery";
inline constexpr wchar_t kUserAuthenticatorProgId[] = L"Tarsus.UserAuthenticator";
inline constexpr wchar_t kMediaComponentProgId[] = L"Tarsus.MediaComponent";
inline constexpr wchar_t kPersonalInfoFilterProgId[] = L"Tarsus.PersonalInfoFilter";
inline constexpr wchar_t kStudyDatabaseQueryProgId[] = L"Tarsus.StudyDatabaseQuery";

/// Creates the components by their ProgIDs; one that is not registered is a null pointer.
class ComComponentFactory : public host::ComponentFactory {
 public:
  /// `loop`, when given, is served before each message: the host may take its time to show one.
  explicit ComComponentFactory(Win32MessageLoop* loop = nullptr) : loop_(loop) {}

  std::unique_ptr<host::MessageDialog> CreateMessageDialog() override;
  std::unique_ptr<host::LogWriter> CreateLogWriter() override;
  std::unique_ptr<host::OperationRecorder> CreateOperationRecorder() override;
  std::unique_ptr<host::AuditTrail> CreateAuditTrail() override;
  std::unique_ptr<host::UserQuery> CreateUserQuery() override;
  std::unique_ptr<host::UserAuthenticator> CreateUserAuthenticator() override;
  std::unique_ptr<host::MediaComponent> CreateMediaComponent() override;
  std::unique_ptr<host::PersonalInfoFilter> CreatePersonalInfoFilter() override;
  std::unique_ptr<host::StudyDatabaseQuery> CreateStudyDatabaseQuery() override;

 private:
  Win32MessageLoop* loop_;
};

}  // namespace windows
