// One connection to a database of the demonstration host.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

struct sqlite3;

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
  /// `connection` is an ODBC connection string, such as "DRIVER=SQLite3;Database=C:\Tarsus\Database\Users.db". Of its
  /// keys "Database" and "Timeout" count, which is in milliseconds.
  /// The key "Attach" is our own and lists further databases with the names that statements give
  /// them: "Attach=Patient=C:\Tarsus\Database\Patient.db,Study=C:\Tarsus\Database\Study.db".
  /// Null when it cannot be opened; a missing database file counts as that and is not created.
  static std::unique_ptr<Database> Open(const std::string& connection);
  /// The same with the connection string of a path table's entry, such as "StudyDB"; null without that entry.
  static std::unique_ptr<Database> OpenEntry(const std::string& entry);

  /// Runs one statement in SQLite's dialect. Nothing on an error, whose text is then in `error`, where given.
  std::optional<Rows> Run(const std::string& statement, std::string* error = nullptr);
  /// The same with text parameters for the "?" in the statement.
  std::optional<Rows> Run(const std::string& statement, const std::vector<std::string>& parameters,
                          std::string* error = nullptr);
  /// A setting of the system configuration; nothing when it is not there or the database is another one.
  std::optional<std::string> Setting(const std::string& group, const std::string& name);

 private:
  struct Closer {
    void operator()(sqlite3* connection) const;
  };
  using Connection = std::unique_ptr<sqlite3, Closer>;
  explicit Database(Connection connection);

  Connection connection_;
};

}  // namespace reference
