// The components that the host offers, each for its own contract. Texts are UTF-8 inside.
#pragma once

#include <optional>
#include <string>

#include "common/Database.h"
#include "common/Host.h"
#include "components/Component.h"

namespace components {

class PatientList;

using reference::kDone;
using reference::kFailed;

/// Shows the host's messages by number.
class MessageDialog final : public Component {
 public:
  /// The code of the chosen button. A plain message is answered as a refused question is.
  enum Answer : std::int32_t { kNotShown = 0, kOkOrRefusal = 1, kConsent = 2 };

  MessageDialog();

  /// 1: the message's number stands in the window's corner. 0 as long as it is not set.
  void SetDisplayOption1(std::int32_t value) { showId_ = value == 1; }
  /// 1: the window belongs to the caller's active window, stays above it and blocks it. 0, as
  /// long as it is not set: the window stands by itself above all windows, and blocks none.
  void SetDisplayOption2(std::int32_t value) { owned_ = value == 1; }

  /// Shows message `id` with its insertions "%1", "%2", "%3" and waits for the answer, serving
  /// the thread's messages. An Answer.
  std::int32_t ShowMessage(std::int32_t id, const std::string& text1, const std::string& text2,
                           const std::string& text3);

 private:
  bool showId_ = false;
  bool owned_ = false;
};

/// Appends lines to a text log.
class LogWriter final : public Component {
 public:
  LogWriter();

  void SetFilePath(const std::string& path) { path_ = path; }
  /// 1 appends; any other mode begins the file anew with the next line.
  void SetMode(std::int32_t mode) { append_ = mode == 1; }
  /// Writes `line` in the system's code page and a line end. The file is opened for this line
  /// alone, so that other programs may read, move or delete it at any time. kDone or kFailed.
  std::int32_t WriteLine(const std::string& line);

 private:
  std::string path_;
  bool append_ = true;
};

/// What operators did, kept in the database behind the path table's entry "AuditDB". All results: kDone or kFailed.
class OperationRecorder final : public Component {
 public:
  OperationRecorder();
  std::int32_t Record(const std::string& host, const std::string& user, const std::string& program,
                      const std::string& screen, const std::string& action);
};

/// Who signed in and out, and which categories were begun and ended, kept beside it. All results: kDone or kFailed.
class AuditTrail final : public Component {
 public:
  AuditTrail();
  /// `word` says which of the two it is, in the language of the host.
  std::int32_t RecordSignInOut(const std::string& userId, const std::string& word, const std::string& title);
  std::int32_t RecordCategoryPhase(const std::string& userId, const std::string& phase, const std::string& category);
};

/// The rows of the last statement on one of the host's databases.
class HostQuery {
 public:
  explicit HostQuery(std::string pathEntry) : pathEntry_(std::move(pathEntry)) {}

  /// Reads the whole result, so that no lock stays behind. On a failure there are no rows.
  bool Run(const std::string& statement);
  std::int32_t RowCount() const;
  /// Both counted from 0. A NULL of the database is an empty text; nothing for a cell that is not there.
  std::optional<std::string> Cell(std::int32_t row, std::int32_t column) const;

 private:
  std::string pathEntry_;
  reference::Rows rows_;
};

/// Statements in the host's SQL dialect on the databases behind the path table's entries "UserDB" and "StudyDB". A
/// status or error of 0 is success, 1 failure.
class UserQuery final : public Component {
 public:
  UserQuery();
  void Execute(const std::string& statement, std::int32_t& status);
  std::int32_t RowCount() { return query_.RowCount(); }
  void Value(std::int32_t row, std::int32_t column, std::string& value, std::int32_t& status);

 private:
  HostQuery query_{"UserDB"};
};

/// After a failed OpenQuery the other two fail as well.
class StudyDatabaseQuery final : public Component {
 public:
  StudyDatabaseQuery();
  void OpenQuery(const std::string& statement, std::int32_t& error);
  std::int32_t RecordCount(std::int32_t& error);
  std::string FieldValue(std::int32_t row, std::int32_t column, std::int32_t& error);

 private:
  HostQuery query_{"StudyDB"};
  bool open_ = false;
};

/// Passwords and function rights of the host's users, in T_MUSER and T_FUNCTION_RIGHT behind the path table's entry
/// "UserDB". Both routines answer kDone or a Failure.
class UserAuthenticator final : public Component {
 public:
  enum Failure : std::int32_t { kUnknownUser = 1, kWrongPassword = 2, kDatabaseFault = 9 };

  UserAuthenticator();
  /// `kind` is the user's kind (6 is a privileged user) on kDone, else 0.
  std::int32_t Verify(const std::string& userId, const std::string& password, std::int32_t& kind);
  /// `granted` is 0 when the user may use function `code`, and 1 when not or not known.
  std::int32_t CheckFunction(const std::string& userId, std::int32_t code, std::int32_t& granted);
};

/// The state of drives and media, and their preparation.
class MediaComponent final : public Component {
 public:
  MediaComponent();

  /// What GetDriveStatus answers. kNoMedium is for drives of removable media alone. kNotWritable is a medium that must
  /// be prepared before anything can be written to it: one that is not formatted, or write-protected.
  enum Status : std::int32_t { kError = -1, kNoDrive = 0, kNoMedium = 1, kNotWritable = 2, kReady = 3 };

  /// The Status of `drive`: a letter ("E"), a drive ("E:") or a folder. A folder that does not exist yet has the
  /// status of its drive.
  std::int32_t GetDriveStatus(const std::string& drive);

  /// Formats the medium in `drive` where it is not formatted, by the system's own program; empties it otherwise. Then
  /// gives it the host's volume label. Refuses every drive that is not of removable media, and media that are
  /// write-protected. kDone or kFailed. `workDrive` and the options have no meaning to drives that need no program of
  /// their own.
  std::int32_t PrepareDrive(const std::string& drive, const std::string& workDrive, std::int32_t option1,
                            std::int32_t option2);

  /// The command line of the medium's own program. Drives of this host are reached through
  /// Windows alone, so it is taken and not run.
  void SetUp(const std::string& command) { static_cast<void>(command); }
};

/// Copies files without what belongs to the patients on the host's deletion list. Both filters answer kDone, also when
/// there was nothing to copy, or a Failure.
///
/// Everything lands in the destination's folder of the source's own name, made with the first
/// file that is copied.
class PersonalInfoFilter final : public Component {
 public:
  /// The last one: a file could not be read or written.
  enum Failure : std::int32_t { kListUnreadable = 1, kNoSource = 2, kCopyFailed = 3 };

  PersonalInfoFilter();

  /// The path of the list's database file, or an ODBC connection string.
  void SetListDatabase(const std::string& path) { listDatabase_ = path; }
  void SetSource(const std::string& path);
  void SetDestination(const std::string& folder);

  /// Copies the *.ddo files below the source folder, but those of listed patients. With a file
  /// "range.txt" in the source, which holds a number of days ("-30"), only those changed since.
  std::int32_t FilterImages();

  /// Copies the source file, or the files directly in the source folder. Text files lose the
  /// lines that name a listed patient; a file that has such a name itself stays behind.
  std::int32_t FilterFiles();

 private:
  bool CopyImages(const PatientList& patients, const std::wstring& subFolder, const FILETIME& since) const;
  bool CopyFiltered(const PatientList& patients, const std::wstring& from, const std::wstring& toFolder,
                    const std::wstring& name) const;

  std::string listDatabase_;
  std::wstring source_, destination_;  // without and with a "\" at the end
};

}  // namespace components
