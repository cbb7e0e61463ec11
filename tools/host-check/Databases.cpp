// The message catalogue, and the databases behind the host's components and its network configuration library. The
// reference host's own catalogue is the list of what the program takes from one.
#include <algorithm>
#include <array>
#include <charconv>
#include <string_view>

#include "app/StartUp.h"
#include "base/Text.h"
#include "host-check/CatalogueText.h"
#include "host-check/Checks.h"
#include "media/MediaDrives.h"

namespace hostcheck {
namespace {

/// Texts from here on belong to the reference host's message dialog.
constexpr std::int32_t kFirstOfHost = 67000;

/// Shown only where the catalogue has them: those of older hosts do not.
constexpr std::array kOptional = {app::MessageId::BackupWarnings,      app::MessageId::RestoreWarnings,
                                  app::MessageId::MaintenanceWarnings, app::MessageId::RestoreInterrupted,
                                  app::MessageId::DocumentNotOpened,   app::MessageId::LastBackupCaption,
                                  app::MessageId::PastJobsCaption,     app::MessageId::JobRunsReason};

bool IsOptional(app::MessageId id) {
  const bool isOfPastJobs = id >= app::MessageId::JobsTitle && id <= app::MessageId::JobWarningsWord;
  return isOfPastJobs || std::ranges::find(kOptional, id) != kOptional.end();
}

void ReportMissingText(Report& report, app::MessageId id, const std::string& text) {
  const std::string subject = "catalogue text " + std::to_string(static_cast<std::int32_t>(id));
  if (!IsOptional(id)) return report.Require(false, subject, text);
  report.Expect(false, subject, text + " (not shown without it)");
}

void CheckTexts(Report& report, app::Messages& messages) {
  int found = 0;
  for (const std::string& line : base::Split(kCatalogue, '\n')) {
    std::int32_t id = 0;
    std::from_chars(line.data(), line.data() + line.size(), id);
    if (id == 0 || id >= kFirstOfHost) continue;
    if (messages.IsDefined(app::MessageId{id})) {
      ++found;
    } else {
      ReportMissingText(report, app::MessageId{id}, line.substr(line.rfind('\t') + 1));
    }
  }
  report.Require(found > 0, "catalogue texts: " + std::to_string(found), "dialogs, messages and records");
}

void CheckUsers(Report& report, host::ComponentFactory& components) {
  const auto query = components.CreateUserQuery();
  const bool answers =
      query && query->Execute("SELECT DISP_NAME, USER_ID FROM V_MUSER ORDER BY USER_ORDER_NO").IsDone();
  report.Require(answers, "view V_MUSER (DISP_NAME, USER_ID, USER_ORDER_NO)", "list of users at sign-in");
  if (answers) report.Expect(query->RowCount() > 0, "rows of V_MUSER", "somebody who can sign in");
}

void CheckStudies(Report& report, host::ComponentFactory& components) {
  const struct {
    const char* statement;
    const char* purpose;
  } queries[] = {
      {"SELECT * FROM Patient.dbo.T_TPATIENT", "number of patients in the maintenance dialog"},
      {"SELECT * FROM Study.dbo.T_TSTUDY", "number of studies in the maintenance dialog"},
      {"SELECT * FROM UserData.dbo.T_MUSER", "number of users in the maintenance dialog"},
      {"SELECT RIGHT(URL,LEN(URL)-7),STUDY_DATETIME FROM T_TSTUDY INNER JOIN T_TDATA_FILE ON T_TSTUDY.STUDY_SEQ = "
       "T_TDATA_FILE.STUDY_SEQ WHERE URL LIKE '%.ddo' AND STUDY_DATETIME >= DATEADD(day,-1,GETDATE())",
       "recent images of a maintenance log"},
  };
  for (const auto& [statement, purpose] : queries) {
    const auto query = components.CreateStudyDatabaseQuery();
    std::int32_t count = 0;
    const bool answers = query && query->OpenQuery(statement).IsDone() && query->RecordCount(count).IsDone();
    report.Require(answers, "study databases: " + std::string(statement), purpose);
  }
}

void CheckDrives(Report& report, app::Application& application) {
  std::string location;
  static_cast<void>(application.paths.GetPathEntry("NetConfigDB", location));  // the path table has a check of its own
  host::QXNetDB& database = application.host.qxNetDB;
  const bool open = database.Connect(location).IsDone();
  database.Close();
  report.Require(open, "network configuration database", "media drives");
  media::MediaDrives drives(application.host, application.paths, application.messages, application.failures);
  const std::string drive = open ? drives.GetDefaultMediaDrive() : std::string();
  report.Expect(!drive.empty(), "media drive " + drive, "the first one with the attribute WRITABLE is proposed");
}

}  // namespace

void CheckCatalogue(Report& report, app::Application& application) {
  const host::Host& host = application.host;
  const base::Outcome read = app::InitSystemDatabase(host.qx32, host.qx32lib, application.state.MsgTableName);
  const auto message = static_cast<std::int32_t>(read.PendingMessageId);
  report.Require(read.IsDone(), "system configuration database",
                 read.IsDone() ? "names the message table" : "the start ends with message " + std::to_string(message));
  std::string connection;
  static_cast<void>(application.paths.GetPathEntry("LangStrDB", connection));  // the path table has a check of its own
  const bool open = application.messages.OpenMessageCatalogue(connection, application.state.MsgTableName).IsDone();
  report.Require(open, "catalogue table " + application.state.MsgTableName, "all texts of the program");
  if (open) CheckTexts(report, application.messages);
}

void CheckDatabases(Report& report, app::Application& application) {
  CheckUsers(report, application.host.components);
  CheckStudies(report, application.host.components);
  CheckDrives(report, application);
}

}  // namespace hostcheck
