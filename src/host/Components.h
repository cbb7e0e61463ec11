// The host system's components, each a COM object behind a small contract.
//
// Texts are UTF-8. A component that cannot be created is a null pointer from its factory; a call that cannot be carried
// out answers like the component's own refusal, so that callers treat both alike.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "base/Outcome.h"

namespace host {

/// The button that closed a message. In a two-choice prompt the values mean refusal and consent.
enum class Answer : std::int32_t { NotShown = 0, Refused = 1, Consented = 2 };

/// Shows catalogue messages in the host's own window.
class MessageDialog {
 public:
  virtual ~MessageDialog() = default;

  /// Sets the two display options. Called once, with 1 and 1, after creation.
  virtual void SetDisplayOptions(std::int32_t first, std::int32_t second) = 0;

  /// Shows message `id` with three insertion texts, modally, and returns the button's code.
  virtual Answer Show(base::MessageId id, const std::string& text1, const std::string& text2,
                      const std::string& text3) = 0;
};

/// Appends lines to a log file. Created for one line and released after it.
class LogWriter {
 public:
  virtual ~LogWriter() = default;
  virtual void SetFilePath(const std::string& path) = 0;
  virtual void SetMode(std::int32_t mode) = 0;
  /// Writes `line` and a line end; the file is created when it is missing.
  virtual base::Outcome WriteLine(const std::string& line) = 0;
};

/// The host's record of what operators did on which screen.
class OperationRecorder {
 public:
  virtual ~OperationRecorder() = default;
  virtual base::Outcome Record(const std::string& hostName, const std::string& userId, const std::string& program,
                               const std::string& screen, const std::string& action) = 0;
};

/// The host's audit trail. Created for one record and released after it.
class AuditTrail {
 public:
  virtual ~AuditTrail() = default;
  virtual base::Outcome RecordSignInOut(const std::string& userId, const std::string& word,
                                        const std::string& programTitle) = 0;
  virtual base::Outcome RecordCategoryPhase(const std::string& userId, const std::string& phaseWord,
                                            const std::string& categoryName) = 0;
};

/// SQL on the host database; used for the user view `V_MUSER`.
class UserQuery {
 public:
  virtual ~UserQuery() = default;
  /// Runs a statement in the host database's dialect.
  virtual base::Outcome Execute(const std::string& statement) = 0;
  /// Rows of the last statement; 0 when it failed.
  virtual std::int32_t RowCount() = 0;
  /// The value of `row` and `column`, both from 0; nothing when it cannot be read.
  virtual std::optional<std::string> Value(std::int32_t row, std::int32_t column) = 0;
};

/// Verifies passwords and function rights against the host's user database.
class UserAuthenticator {
 public:
  virtual ~UserAuthenticator() = default;
  /// `userKind` is 6 for a privileged user. Returns 0 when the password is
  /// right, 1 to 3 when the sign-in is refused, anything else on a fault.
  virtual std::int32_t Verify(const std::string& userId, const std::string& password, std::int32_t& userKind) = 0;
  /// `granted` tells whether the user may use `functionCode`. Failed when the component could not tell.
  virtual base::Outcome CheckFunction(const std::string& userId, std::int32_t functionCode, bool& granted) = 0;
};

/// What the media component says of a drive. Any other value means nothing, and one asks again.
enum class DriveStatus : std::int32_t {
  Error = -1,
  Unusable = 0,
  NoMedium = 1,
  Readable = 2,  ///< can be read, but must be prepared before anything is written to it
  Ready = 3
};

/// Knows the media in the host's drives. Created for each use.
class MediaComponent {
 public:
  virtual ~MediaComponent() = default;
  virtual DriveStatus GetDriveStatus(const std::string& driveOrFolder) = 0;
  /// Prepares (formats) the medium in `drive`.
  virtual base::Outcome PrepareDrive(const std::string& drive, const std::string& workDrive, std::int32_t option1,
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
  virtual base::Outcome OpenQuery(const std::string& statement) = 0;
  /// `count` is what the component answered, also where it failed.
  virtual base::Outcome RecordCount(std::int32_t& count) = 0;
  /// `row` and `column` count from 0.
  virtual base::Outcome FieldValue(std::int32_t row, std::int32_t column, std::string& value) = 0;
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
