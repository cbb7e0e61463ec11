// The host system's components, each a COM object behind a small contract.
//
// Texts are UTF-8. A component that cannot be created is a null pointer from
// its factory; a call that cannot be carried out answers -1 (or false), so
// that callers treat a host fault like the component's own refusal.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

namespace host {

/// Shows catalogue messages in the host's own window.
class MessageDialog {
 public:
  virtual ~MessageDialog() = default;

  /// Sets the two display options. Called once, with 1 and 1, after creation.
  virtual void SetDisplayOptions(std::int32_t first, std::int32_t second) = 0;

  /// Shows message `id` with three insertion texts, modally, and returns the
  /// button's code: in a two-choice prompt 1 is the operator's refusal and 2 the
  /// consent. 0 when the message could not be shown.
  virtual std::int32_t Show(std::int32_t id, const std::string& text1, const std::string& text2,
                            const std::string& text3) = 0;
};

/// Appends lines to a log file. Created for one line and released after it.
class LogWriter {
 public:
  virtual ~LogWriter() = default;
  virtual void SetFilePath(const std::string& path) = 0;
  virtual void SetMode(std::int32_t mode) = 0;
  /// Writes `line` and a line end; the file is created when it is missing.
  virtual std::int32_t WriteLine(const std::string& line) = 0;
};

/// The host's record of what operators did on which screen.
class OperationRecorder {
 public:
  virtual ~OperationRecorder() = default;
  virtual std::int32_t Record(const std::string& hostName, const std::string& userId, const std::string& program,
                              const std::string& screen, const std::string& action) = 0;
};

/// The host's audit trail. Created for one record and released after it. 0 means recorded.
class AuditTrail {
 public:
  virtual ~AuditTrail() = default;
  virtual std::int32_t RecordSignInOut(const std::string& userId, const std::string& word,
                                       const std::string& programTitle) = 0;
  virtual std::int32_t RecordCategoryPhase(const std::string& userId, const std::string& phaseWord,
                                           const std::string& categoryName) = 0;
};

/// SQL on the host database; used for the user view `V_MUSER`.
class UserQuery {
 public:
  virtual ~UserQuery() = default;
  /// Runs a statement in the host database's dialect. `status` is 0 on success.
  virtual void Execute(const std::string& statement, std::int32_t& status) = 0;
  /// Rows of the last statement; 0 when it failed.
  virtual std::int32_t RowCount() = 0;
  /// The value of `row` and `column`, both from 0. `status` is 0 on success.
  virtual std::string Value(std::int32_t row, std::int32_t column, std::int32_t& status) = 0;
};

/// Verifies passwords and function rights against the host's user database.
class UserAuthenticator {
 public:
  virtual ~UserAuthenticator() = default;
  /// `userKind` is 6 for a privileged user. Returns 0 when the password is
  /// right, 1 to 3 when the sign-in is refused, anything else on a fault.
  virtual std::int32_t Verify(const std::string& userId, const std::string& password, std::int32_t& userKind) = 0;
  /// `granted` is 0 when the user may use `functionCode`, non-zero when not.
  virtual std::int32_t CheckFunction(const std::string& userId, std::int32_t functionCode, std::int32_t& granted) = 0;
};

/// Knows the media in the host's drives. Created for each use.
class MediaComponent {
 public:
  virtual ~MediaComponent() = default;
  /// 3 ready; 1 no medium; 2 a medium that may be read only; 0 and -1 errors.
  virtual std::int32_t GetDriveStatus(const std::string& driveOrFolder) = 0;
  /// Prepares (formats) the medium in `drive`. 0 on success.
  virtual std::int32_t PrepareDrive(const std::string& drive, const std::string& workDrive, std::int32_t option1,
                                    std::int32_t option2) = 0;
  /// Hands over the media program's command line; called before every status query.
  virtual void SetUp(const std::string& programCommand) = 0;
};

/// Copies files without the patients on the host's list. Called in the order
/// list database, source, destination, then one of the two filters.
class PersonalInfoFilter {
 public:
  virtual ~PersonalInfoFilter() = default;
  virtual void SetListDatabase(const std::string& path) = 0;
  virtual void SetSource(const std::string& path) = 0;
  virtual void SetDestination(const std::string& folder) = 0;
  /// 0 on success; any other value is a code that the operator is shown.
  virtual std::int32_t FilterImages() = 0;
  virtual std::int32_t FilterFiles() = 0;
};

/// Read-only SQL on the host's study databases. Created for each use.
class StudyDatabaseQuery {
 public:
  virtual ~StudyDatabaseQuery() = default;
  /// A non-zero `error` means that the query or the read failed.
  virtual void OpenQuery(const std::string& statement, std::int32_t& error) = 0;
  virtual std::int32_t RecordCount(std::int32_t& error) = 0;
  virtual std::string FieldValue(std::int32_t row, std::int32_t column, std::int32_t& error) = 0;
};

/// Creates the host's components.
class ComponentFactory {
 public:
  virtual ~ComponentFactory() = default;
  virtual std::unique_ptr<MessageDialog> CreateMessageDialog() = 0;
  virtual std::unique_ptr<LogWriter> CreateLogWriter() = 0;
  virtual std::unique_ptr<OperationRecorder> CreateOperationRecorder() = 0;
  virtual std::unique_ptr<AuditTrail> CreateAuditTrail() = 0;
  virtual std::unique_ptr<UserQuery> CreateUserQuery() = 0;
  virtual std::unique_ptr<UserAuthenticator> CreateUserAuthenticator() = 0;
  virtual std::unique_ptr<MediaComponent> CreateMediaComponent() = 0;
  virtual std::unique_ptr<PersonalInfoFilter> CreatePersonalInfoFilter() = 0;
  virtual std::unique_ptr<StudyDatabaseQuery> CreateStudyDatabaseQuery() = 0;
};

}  // namespace host
