// Tarsus.UserQuery and Tarsus.StudyDatabaseQuery: statements in the host's SQL
// dialect on the databases behind the path table's entries "UserDB" and "StudyDB".
#pragma once

#include "common/Database.h"
#include "components/Component.h"

namespace components {

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

/// Status 0 is success, 1 failure.
class UserQuery final : public Component {
 public:
  UserQuery();
  void Execute(const std::string& statement, std::int32_t& status);
  std::int32_t RowCount() { return query_.RowCount(); }
  void Value(std::int32_t row, std::int32_t column, std::string& value, std::int32_t& status);

 private:
  HostQuery query_{"UserDB"};
};

/// Error 0 is success, 1 failure. After a failed OpenQuery the other two fail as well.
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

}  // namespace components
