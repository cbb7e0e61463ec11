// The message catalogue, and the databases behind the host's components and its network configuration library. The
// reference host's own catalogue is the list of what the program takes from one.
#include <charconv>
#include <memory>
#include <string_view>

#include "app/External.h"
#include "app/Messages.h"
#include "app/StartUp.h"
#include "app/TextFormat.h"
#include "host-check/CatalogueText.h"
#include "host-check/Checks.h"
#include "media/MediaDrive.h"

namespace hostcheck {
namespace {

/// Texts from here on belong to the reference host's message dialog.
constexpr std::int32_t kFirstOfHost = 67000;

/// What the program shows for a text that it does not find.
constexpr char kNotDefined[] = "Not Defined!";

void CheckTexts(Report& report, app::Application& application) {
  int found = 0;
  for (const std::string& line : app::Split(kCatalogue, '\n')) {
    std::int32_t id = 0;
    std::from_chars(line.data(), line.data() + line.size(), id);
    if (id == 0 || id >= kFirstOfHost) continue;
    if (app::GetMessageText(application, id) == kNotDefined) {
      report.Require(false, "catalogue text " + std::to_string(id), line.substr(line.rfind('\t') + 1));
    } else {
      ++found;
    }
  }
  report.Require(found > 0, "catalogue texts: " + std::to_string(found), "dialogs, messages and records");
}

void CheckUsers(Report& report, host::ComponentFactory& components) {
  std::int32_t status = app::kFailed;
  const auto query = components.CreateUserQuery();
  if (query) query->Execute("SELECT DISP_NAME, USER_ID FROM V_MUSER ORDER BY USER_ORDER_NO", status);
  report.Require(status == 0, "view V_MUSER (DISP_NAME, USER_ID, USER_ORDER_NO)", "list of users at sign-in");
  if (status == 0) report.Expect(query->RowCount() > 0, "rows of V_MUSER", "somebody who can sign in");
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
    std::int32_t error = app::kFailed;
    const auto query = components.CreateStudyDatabaseQuery();
    if (query) query->OpenQuery(statement, error);
    if (error == 0) query->RecordCount(error);
    report.Require(error == 0, "study databases: " + std::string(statement), purpose);
  }
}

void CheckDrives(Report& report, app::Application& application) {
  std::string location;
  app::GetPathEntry(application, "NetConfigDB", location);
  host::QXNetDB& database = application.host.qxNetDB;
  const bool open = database.Connect(location) == 0;
  database.Close();
  report.Require(open, "network configuration database", "media drives");
  const std::string drive = open ? media::GetDefaultMediaDrive(application) : std::string();
  report.Expect(!drive.empty(), "media drive " + drive, "the first one with the attribute WRITABLE is proposed");
}

}  // namespace

void CheckCatalogue(Report& report, app::Application& application) {
  const std::int32_t problem = app::InitSystemDatabase(application);
  report.Require(problem == 0, "system configuration database",
                 problem == 0 ? "names the message table" : "the start ends with message " + std::to_string(problem));
  std::string connection;
  app::GetPathEntry(application, "LangStrDB", connection);
  const bool open = app::OpenMessageCatalogue(application, connection) == app::kDone;
  report.Require(open, "catalogue table " + application.state.MsgTableName, "all texts of the program");
  if (open) CheckTexts(report, application);
}

void CheckDatabases(Report& report, app::Application& application) {
  CheckUsers(report, application.host.components);
  CheckStudies(report, application.host.components);
  CheckDrives(report, application);
}

}  // namespace hostcheck
