// Runs statements through SQLite, which is linked into each program of the host: no driver is needed for that.
#include "common/Database.h"

#include <sqlite3.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <string_view>

#include "common/ConnectionText.h"
#include "common/Host.h"

namespace reference {

namespace {

/// Milliseconds to wait for a database which another process has locked.
constexpr int kLockTimeout = 2000;

int TimeoutOf(const ConnectionText& connection) {
  const std::string text = connection.Value("Timeout").value_or(std::string());
  int timeout = kLockTimeout;
  std::from_chars(text.data(), text.data() + text.size(), timeout);
  return timeout;
}

/// Whether a column of this declared type holds numbers, by the rules of the database.
bool IsNumericType(std::string type) {
  std::ranges::transform(type, type.begin(), [](char letter) {
    return letter >= 'a' && letter <= 'z' ? static_cast<char>(letter - 'a' + 'A') : letter;
  });
  return std::ranges::any_of(std::to_array<std::string_view>({"INT", "REAL", "FLOA", "DOUB", "NUM", "DEC"}),
                             [&](std::string_view word) { return type.find(word) != std::string::npos; });
}

/// A statement that frees itself.
class Statement {
 public:
  Statement(sqlite3* connection, const std::string& text) {
    sqlite3_prepare_v2(connection, text.c_str(), static_cast<int>(text.size()), &statement_, nullptr);
  }
  ~Statement() { sqlite3_finalize(statement_); }
  Statement(const Statement&) = delete;
  Statement& operator=(const Statement&) = delete;

  bool Bind(const std::vector<std::string>& parameters) {
    int place = 0;
    return statement_ && std::ranges::all_of(parameters, [&](const std::string& text) {
             return sqlite3_bind_text(statement_, ++place, text.data(), static_cast<int>(text.size()),
                                      SQLITE_TRANSIENT) == SQLITE_OK;
           });
  }

  /// Runs it and reads the whole result; nothing when it fails.
  std::optional<Rows> ReadAll() {
    Rows rows;
    int result = sqlite3_step(statement_);
    for (int column = 0; column < sqlite3_column_count(statement_); ++column) {
      rows.columns.push_back(sqlite3_column_name(statement_, column));
      rows.numeric.push_back(IsNumeric(column));
    }
    for (; result == SQLITE_ROW; result = sqlite3_step(statement_)) {
      auto& cells = rows.cells.emplace_back();
      for (int column = 0; column < sqlite3_column_count(statement_); ++column) cells.push_back(Cell(column));
    }
    return result == SQLITE_DONE ? std::optional(std::move(rows)) : std::nullopt;
  }

 private:
  /// By the declaration; a column that is computed has none, and its first value says it.
  bool IsNumeric(int column) const {
    if (const char* const type = sqlite3_column_decltype(statement_, column)) return IsNumericType(type);
    const int kind = sqlite3_column_type(statement_, column);
    return kind == SQLITE_INTEGER || kind == SQLITE_FLOAT;
  }

  std::optional<std::string> Cell(int column) const {
    const auto* const text = reinterpret_cast<const char*>(sqlite3_column_text(statement_, column));
    if (!text) return std::nullopt;
    return std::string(text, static_cast<std::size_t>(sqlite3_column_bytes(statement_, column)));
  }

  sqlite3_stmt* statement_ = nullptr;
};

bool Attach(Database& database, const Attachment& attachment) {
  return database.Run("ATTACH DATABASE ? AS \"" + attachment.name + '"', {attachment.path}).has_value();
}

}  // namespace

void Database::Closer::operator()(sqlite3* connection) const {
  sqlite3_close_v2(connection);
}

Database::Database(Connection connection) : connection_(std::move(connection)) {}

std::unique_ptr<Database> Database::Open(const std::string& connection) {
  ConnectionText text(connection);
  const std::vector<Attachment> attachments = ParseAttachments(text.Take("Attach"));
  const auto path = text.Value("Database");
  if (!path) return nullptr;
  sqlite3* opened = nullptr;
  // Neither this file nor those that are attached are made where they are missing.
  const int result = sqlite3_open_v2(path->c_str(), &opened, SQLITE_OPEN_READWRITE, nullptr);
  Connection owner(opened);
  if (result != SQLITE_OK) return nullptr;
  sqlite3_busy_timeout(opened, TimeoutOf(text));
  std::unique_ptr<Database> database(new Database(std::move(owner)));
  for (const Attachment& attachment : attachments) {
    if (!Attach(*database, attachment)) return nullptr;
  }
  return database;
}

std::unique_ptr<Database> Database::OpenEntry(const std::string& entry) {
  const auto connection = ReadPathEntry(entry);
  return connection ? Open(*connection) : nullptr;
}

std::optional<Rows> Database::Run(const std::string& statement, std::string* error) {
  return Run(statement, {}, error);
}

std::optional<Rows> Database::Run(const std::string& statement, const std::vector<std::string>& parameters,
                                  std::string* error) {
  Statement prepared(connection_.get(), statement);
  std::optional<Rows> rows;
  if (prepared.Bind(parameters)) rows = prepared.ReadAll();
  if (!rows && error) *error = sqlite3_errmsg(connection_.get());
  return rows;
}

std::optional<std::string> Database::Setting(const std::string& group, const std::string& name) {
  const auto rows = Run("SELECT VALUE FROM T_CONFIG WHERE GROUP_NAME = ? AND NAME = ?", {group, name});
  return rows && !rows->cells.empty() ? rows->cells[0][0] : std::nullopt;
}

}  // namespace reference
