#include "components/Records.h"

#include <windows.h>

#include <cstdio>
#include <initializer_list>

#include "common/Database.h"
#include "common/HostPaths.h"

namespace components {
namespace {

std::string Now() {
  SYSTEMTIME now = {};
  GetLocalTime(&now);
  char text[32] = {};
  std::snprintf(text, sizeof text, "%04u-%02u-%02u %02u:%02u:%02u", now.wYear, now.wMonth, now.wDay, now.wHour,
                now.wMinute, now.wSecond);
  return text;
}

// Adds a row of the present time and `values` to `table`.
std::int32_t Insert(const std::string& table, std::initializer_list<std::string> values) {
  const auto connection = reference::ReadPathEntry("AuditDB");
  const auto database = connection ? reference::Database::Open(*connection) : nullptr;
  if (!database) return -1;
  std::vector<std::string> row{Now()};
  std::string places = "?";
  for (const std::string& value : values) {
    row.push_back(value);
    places += ",?";
  }
  return database->Run("INSERT INTO " + table + " VALUES (" + places + ")", row) ? 0 : -1;
}

}  // namespace

OperationRecorder::OperationRecorder() {
  AddMethod(L"Record", &OperationRecorder::Record);
}

std::int32_t OperationRecorder::Record(const std::string& host, const std::string& user, const std::string& program,
                                       const std::string& screen, const std::string& action) {
  return Insert("T_OPERATION(RECORDED_AT,HOST_NAME,USER_ID,PROGRAM,SCREEN,ACTION)",
                {host, user, program, screen, action});
}

AuditTrail::AuditTrail() {
  AddMethod(L"RecordSignInOut", &AuditTrail::RecordSignInOut);
  AddMethod(L"RecordCategoryPhase", &AuditTrail::RecordCategoryPhase);
}

std::int32_t AuditTrail::RecordSignInOut(const std::string& userId, const std::string& word, const std::string& title) {
  return Insert("T_SIGN(RECORDED_AT,USER_ID,WORD,TITLE)", {userId, word, title});
}

std::int32_t AuditTrail::RecordCategoryPhase(const std::string& userId, const std::string& phase,
                                             const std::string& category) {
  return Insert("T_CATEGORY_PHASE(RECORDED_AT,USER_ID,PHASE,CATEGORY)", {userId, phase, category});
}

}  // namespace components
