// The host's DLLs and components, and the data access, through the adapters that the program uses them with.
#include <vector>

#include "host-check/Checks.h"
#include "windows/adapters/Components.h"
#include "windows/adapters/Databases.h"
#include "windows/adapters/Dispatch.h"
#include "windows/adapters/Libraries.h"
#include "windows/adapters/Text.h"

namespace hostcheck {
namespace {

void CheckLibrary(Report& report, const windows::HostLibrary& library, const std::string& name,
                  const std::string& purpose) {
  report.Require(library.IsLoaded(), name, purpose + "; beside the program or in the system folder");
  if (!library.IsLoaded()) return;
  for (const auto& [exportName, found] : library.Exports()) {
    report.Require(found, name + " export " + exportName, purpose);
  }
}

struct Contract {
  const wchar_t* progId;
  const char* purpose;
  std::vector<const wchar_t*> operations;
};

std::vector<Contract> Contracts() {
  return {
      {windows::kMessageDialogProgId, "messages", {L"DisplayOption1", L"DisplayOption2", L"ShowMessage"}},
      {windows::kLogWriterProgId, "the operation log", {L"FilePath", L"Mode", L"WriteLine"}},
      {windows::kOperationRecorderProgId, "operation records", {L"Record"}},
      {windows::kAuditTrailProgId, "audit trail; no sign-in without it", {L"RecordSignInOut", L"RecordCategoryPhase"}},
      {windows::kUserQueryProgId, "list of users", {L"Execute", L"RowCount", L"Value"}},
      {windows::kUserAuthenticatorProgId, "sign-in and rights", {L"Verify", L"CheckFunction"}},
      {windows::kMediaComponentProgId, "state and formatting of media", {L"SetUp", L"GetDriveStatus", L"PrepareDrive"}},
      {windows::kPersonalInfoFilterProgId,
       "personal information; no backup without it",
       {L"ListDatabase", L"Source", L"Destination", L"FilterImages", L"FilterFiles"}},
      {windows::kStudyDatabaseQueryProgId,
       "numbers and images of the maintenance log",
       {L"OpenQuery", L"RecordCount", L"FieldValue"}},
      {windows::kConnectionProgId, "message catalogue", {L"Open", L"Close"}},
      {windows::kRecordsetProgId, "message catalogue", {L"Open", L"Filter", L"EOF", L"Fields", L"Close"}},
  };
}

bool IsRegistered(const wchar_t* progId) {
  CLSID classId = {};
  return SUCCEEDED(CLSIDFromProgID(progId, &classId));
}

bool Knows(const windows::Dispatch& component, std::wstring operation) {
  LPOLESTR name = operation.data();
  DISPID id = DISPID_UNKNOWN;
  return SUCCEEDED(component.Object()->GetIDsOfNames(IID_NULL, &name, 1, LOCALE_USER_DEFAULT, &id));
}

void CheckContract(Report& report, const Contract& contract) {
  const std::string name = windows::Utf8(contract.progId);
  const windows::Dispatch component(contract.progId);
  if (!component) {
    const char* const state = IsRegistered(contract.progId) ? " (cannot be created)" : " (not registered)";
    return report.Require(false, "component " + name + state, contract.purpose);
  }
  report.Require(true, "component " + name, contract.purpose);
  for (const wchar_t* operation : contract.operations) {
    report.Require(Knows(component, operation), "component " + name + "." + windows::Utf8(operation), contract.purpose);
  }
}

bool HasDatabaseEngine() {
  for (const wchar_t* progId : windows::kDatabaseEngineProgIds) {
    const windows::Dispatch engine(progId);
    if (engine && Knows(engine, L"CompactDatabase")) return true;
  }
  return false;
}

}  // namespace

void CheckLibraries(Report& report) {
  CheckLibrary(report, windows::Qx32Library().Library(), "QX32.dll", "path table and registry");
  CheckLibrary(report, windows::Qx32libLibrary().Library(), "QX32lib.dll", "system configuration database");
  CheckLibrary(report, windows::QxNetDBLibrary().Library(), "QXNetDB.dll", "media drives");
}

void CheckComponents(Report& report) {
  for (const Contract& contract : Contracts()) CheckContract(report, contract);
  report.Expect(HasDatabaseEngine(), "component DAO.DBEngine.36 or .120",
                "compacts the host's databases at sign-in; left out without it");
}

}  // namespace hostcheck
