// The databases behind the host's components and its network configuration library.
#include "host-check/Checks.h"
#include "media/MediaDrives.h"

namespace hostcheck {
namespace {

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

void CheckDatabases(Report& report, app::Application& application) {
  CheckUsers(report, application.host.components);
  CheckStudies(report, application.host.components);
  CheckDrives(report, application);
}

}  // namespace hostcheck
