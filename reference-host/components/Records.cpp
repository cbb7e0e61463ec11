// What the host keeps in writing: log lines, operators' actions, the audit trail.
#include <windows.h>

#include <cstdio>
#include <initializer_list>

#include "components/Components.h"
#include "components/Files.h"
#include "windows/adapters/Text.h"

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
  const auto database = reference::Database::OpenEntry("AuditDB");
  if (!database) return kFailed;
  std::vector<std::string> row{Now()};
  std::string places = "?";
  for (const std::string& value : values) {
    row.push_back(value);
    places += ",?";
  }
  return database->Run("INSERT INTO " + table + " VALUES (" + places + ")", row) ? kDone : kFailed;
}

}  // namespace

LogWriter::LogWriter() {
  AddProperty(L"FilePath", &LogWriter::SetFilePath);
  AddProperty(L"Mode", &LogWriter::SetMode);
  AddMethod(L"WriteLine", &LogWriter::WriteLine);
}

std::int32_t LogWriter::WriteLine(const std::string& line) {
  const DWORD disposition = append_ ? OPEN_ALWAYS : CREATE_ALWAYS;
  const FileHandle file(CreateFileW(windows::Utf16(path_).c_str(), FILE_APPEND_DATA,
                                    FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr, disposition,
                                    FILE_ATTRIBUTE_NORMAL, nullptr));
  if (!file) return kFailed;
  append_ = true;
  // One write for the whole line: lines of several writers then never mix.
  const std::string bytes = windows::ToCodePageStrictly(line) + "\r\n";
  DWORD written = 0;
  const bool done = WriteFile(file.Get(), bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
  return done && written == bytes.size() ? kDone : kFailed;
}

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
