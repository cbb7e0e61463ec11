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

/// The name by which the database driver opens the Windows path `path`. On the demonstration machine
/// the driver is a library of the system below Wine and knows no drive letters; where Wine is absent,
/// and for a path in a folder that does not exist, the path itself.
std::string DriverPath(const std::string& path);

class Database {
 public:
  /// `connection` is an ODBC connection string, such as "DRIVER=SQLite3;Database=C:\Tarsus\Database\Users.db".
  /// The key "Attach" is our own and lists further databases with the names that statements give
  /// them: "Attach=Patient=C:\Tarsus\Database\Patient.db,Study=C:\Tarsus\Database\Study.db".
  /// Null when it cannot be opened; a missing database file counts as that and is not created.
  static std::unique_ptr<Database> Open(const std::string& connection);
  /// The same with the connection string of a path table's entry, such as "StudyDB"; null without that entry.
  static std::unique_ptr<Database> OpenEntry(const std::string& entry);
  ~Database();

  /// Runs one statement in SQLite's dialect. Nothing on an error, whose text is then in `error`, where given.
  std::optional<Rows> Run(const std::string& statement, std::string* error = nullptr);
  /// The same with text parameters for the "?" in the statement.
  std::optional<Rows> Run(const std::string& statement, const std::vector<std::string>& parameters,
                          std::string* error = nullptr);
  /// A setting of the system configuration; nothing when it is not there or the database is another one.
  std::optional<std::string> Setting(const std::string& group, const std::string& name);

 private:
  struct Handles;
  explicit Database(std::unique_ptr<Handles> handles);
  std::unique_ptr<Handles> handles_;
};

}  // namespace reference
