// One ODBC connection to a database of the demonstration host.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace reference {

/// A statement's result, read whole. A cell without a value is a NULL of the database.
struct Rows {
  std::vector<std::string> columns;
  std::vector<bool> numeric;  ///< per column, whether the database declares it a number
  std::vector<std::vector<std::optional<std::string>>> cells;
};

/// Rewrites the host dialect's forms that SQLite does not parse: N'text', database.dbo.table,
/// DATEADD(day,n,GETDATE()), RIGHT(x,n), LEN(x). Everything else stays as it is, what stands in
/// text literals too. A database's name becomes the name under which it is attached.
std::string RewriteHostDialect(const std::string& statement);

class Database {
 public:
  /// `connection` is an ODBC connection string, such as "DRIVER=SQLite3;Database=C:\Tarsus\Database\Users.db".
  /// The key "Attach" is our own and lists further databases with the names that statements give
  /// them: "Attach=Patient=C:\Tarsus\Database\Patient.db,Study=C:\Tarsus\Database\Study.db".
  /// Null when it cannot be opened; a missing database file counts as that and is not created.
  static std::unique_ptr<Database> Open(const std::string& connection);
  ~Database();

  /// Runs one statement in SQLite's dialect. Nothing on an error, whose text is then in `error`, where given.
  std::optional<Rows> Run(const std::string& statement, std::string* error = nullptr);
  /// The same with text parameters for the "?" in the statement.
  std::optional<Rows> Run(const std::string& statement, const std::vector<std::string>& parameters,
                          std::string* error = nullptr);

 private:
  struct Handles;
  explicit Database(std::unique_ptr<Handles> handles);
  std::unique_ptr<Handles> handles_;
};

}  // namespace reference
