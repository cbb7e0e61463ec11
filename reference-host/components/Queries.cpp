// Runs the program's statements on the databases of users and studies.
#include "components/Components.h"

namespace components {

bool HostQuery::Run(const std::string& statement) {
  rows_ = {};
  const auto database = reference::Database::OpenEntry(pathEntry_);
  if (!database) return false;
  auto rows = database->Run(reference::RewriteHostDialect(statement));
  if (!rows) return false;
  rows_ = std::move(*rows);
  return true;
}

std::int32_t HostQuery::RowCount() const {
  return static_cast<std::int32_t>(rows_.cells.size());
}

std::optional<std::string> HostQuery::Cell(std::int32_t row, std::int32_t column) const {
  if (row < 0 || row >= RowCount() || column < 0) return std::nullopt;
  const auto& cells = rows_.cells[static_cast<std::size_t>(row)];
  if (static_cast<std::size_t>(column) >= cells.size()) return std::nullopt;
  return cells[static_cast<std::size_t>(column)].value_or("");
}

UserQuery::UserQuery() {
  AddMethod(L"Execute", &UserQuery::Execute);
  AddMethod(L"RowCount", &UserQuery::RowCount);
  AddMethod(L"Value", &UserQuery::Value);
}

void UserQuery::Execute(const std::string& statement, std::int32_t& status) {
  status = query_.Run(statement) ? 0 : 1;
}

void UserQuery::Value(std::int32_t row, std::int32_t column, std::string& value, std::int32_t& status) {
  const auto cell = query_.Cell(row, column);
  value = cell.value_or("");
  status = cell ? 0 : 1;
}

StudyDatabaseQuery::StudyDatabaseQuery() {
  AddMethod(L"OpenQuery", &StudyDatabaseQuery::OpenQuery);
  AddMethod(L"RecordCount", &StudyDatabaseQuery::RecordCount);
  AddMethod(L"FieldValue", &StudyDatabaseQuery::FieldValue);
}

void StudyDatabaseQuery::OpenQuery(const std::string& statement, std::int32_t& error) {
  open_ = query_.Run(statement);
  error = open_ ? 0 : 1;
}

std::int32_t StudyDatabaseQuery::RecordCount(std::int32_t& error) {
  error = open_ ? 0 : 1;
  return query_.RowCount();
}

std::string StudyDatabaseQuery::FieldValue(std::int32_t row, std::int32_t column, std::int32_t& error) {
  const auto cell = query_.Cell(row, column);
  error = cell ? 0 : 1;
  return cell.value_or("");
}

}  // namespace components
