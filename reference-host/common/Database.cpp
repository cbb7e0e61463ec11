// Runs statements through ODBC's wide calls.
#include "common/Database.h"

#include <windows.h>

#include <sql.h>
#include <sqlext.h>

#include <algorithm>

#include "common/ConnectionText.h"
#include "common/Host.h"
#include "windows/adapters/Text.h"

namespace reference {

namespace {

/// Milliseconds that the driver waits for a database which another process has locked.
constexpr char kLockTimeout[] = "2000";

SQLWCHAR* Characters(std::wstring& text) {
  return text.data();
}

bool FileExists(const std::string& path) {
  const DWORD attributes = GetFileAttributesW(windows::Utf16(path).c_str());
  return attributes != INVALID_FILE_ATTRIBUTES && !(attributes & FILE_ATTRIBUTE_DIRECTORY);
}

/// A statement handle that frees itself.
class Statement {
 public:
  explicit Statement(SQLHDBC connection) { SQLAllocHandle(SQL_HANDLE_STMT, connection, &handle_); }
  ~Statement() {
    if (handle_) SQLFreeHandle(SQL_HANDLE_STMT, handle_);
  }
  Statement(const Statement&) = delete;
  Statement& operator=(const Statement&) = delete;

  bool Execute(const std::string& statement, const std::vector<std::string>& parameters) {
    std::wstring text = windows::Utf16(statement);
    if (!handle_ || !SQL_SUCCEEDED(SQLPrepareW(handle_, Characters(text), static_cast<SQLINTEGER>(text.size())))) {
      return false;
    }
    std::vector<std::wstring> values;
    std::vector<SQLLEN> sizes;
    for (const std::string& parameter : parameters) {
      values.push_back(windows::Utf16(parameter));
      sizes.push_back(static_cast<SQLLEN>(values.back().size() * sizeof(wchar_t)));
    }
    for (std::size_t i = 0; i < values.size(); ++i) {
      const SQLULEN characters = std::max<SQLULEN>(1, static_cast<SQLULEN>(values[i].size()));
      if (!SQL_SUCCEEDED(SQLBindParameter(handle_, static_cast<SQLUSMALLINT>(i + 1), SQL_PARAM_INPUT, SQL_C_WCHAR,
                                          SQL_WVARCHAR, characters, 0, Characters(values[i]), sizes[i], &sizes[i]))) {
        return false;
      }
    }
    const SQLRETURN result = SQLExecute(handle_);
    return SQL_SUCCEEDED(result) || result == SQL_NO_DATA;
  }

  /// Reads the whole result; nothing when a row or a cell cannot be read.
  std::optional<Rows> ReadAll() {
    Rows rows;
    SQLSMALLINT count = 0;
    if (!SQL_SUCCEEDED(SQLNumResultCols(handle_, &count))) return std::nullopt;
    for (SQLSMALLINT column = 1; column <= count; ++column) DescribeColumn(column, rows);
    if (count == 0) return rows;
    SQLRETURN result;
    while (SQL_SUCCEEDED(result = SQLFetch(handle_))) {
      auto& cells = rows.cells.emplace_back();
      for (SQLSMALLINT column = 1; column <= count; ++column) {
        if (!ReadCell(column, cells.emplace_back())) return std::nullopt;
      }
    }
    if (result != SQL_NO_DATA) return std::nullopt;
    return rows;
  }

  std::string ErrorText() {
    SQLWCHAR state[6] = {};
    SQLWCHAR text[SQL_MAX_MESSAGE_LENGTH] = {};
    SQLINTEGER native = 0;
    SQLSMALLINT length = 0;
    SQLGetDiagRecW(SQL_HANDLE_STMT, handle_, 1, state, &native, text, SQL_MAX_MESSAGE_LENGTH, &length);
    return windows::Utf8(text);
  }

 private:
  void DescribeColumn(SQLSMALLINT column, Rows& rows) {
    SQLWCHAR name[256] = {};
    SQLSMALLINT length = 0, type = 0, digits = 0, nullable = 0;
    SQLULEN size = 0;
    SQLDescribeColW(handle_, static_cast<SQLUSMALLINT>(column), name, 256, &length, &type, &size, &digits, &nullable);
    rows.columns.push_back(windows::Utf8(name));
    rows.numeric.push_back(type == SQL_INTEGER || type == SQL_SMALLINT || type == SQL_TINYINT || type == SQL_BIGINT ||
                           type == SQL_DOUBLE || type == SQL_FLOAT || type == SQL_REAL || type == SQL_NUMERIC);
  }

  bool ReadCell(SQLSMALLINT column, std::optional<std::string>& cell) {
    std::wstring value;
    for (;;) {
      wchar_t piece[1024] = {};
      SQLLEN size = 0;
      const SQLRETURN result = SQLGetData(handle_, static_cast<SQLUSMALLINT>(column), SQL_C_WCHAR, piece,
                                          static_cast<SQLLEN>(sizeof(piece)), &size);
      if (!SQL_SUCCEEDED(result)) return false;
      if (size == SQL_NULL_DATA) return true;
      value += piece;
      if (result == SQL_SUCCESS) break;
    }
    cell = windows::Utf8(value);
    return true;
  }

  SQLHSTMT handle_ = nullptr;
};

using GetUnixFileName = char*(CDECL*)(const wchar_t*);

GetUnixFileName FindConverter() {
  const FARPROC address = GetProcAddress(GetModuleHandleW(L"kernel32.dll"), "wine_get_unix_file_name");
  return reinterpret_cast<GetUnixFileName>(reinterpret_cast<void*>(address));
}

/// The connection string for the driver: its own file names, no creating, and no long wait for a lock.
std::string DriverText(ConnectionText connection) {
  if (const auto path = connection.Value("Database")) connection.Set("Database", DriverPath(*path));
  connection.Set("NoCreat", "1");
  if (!connection.Value("Timeout")) connection.Set("Timeout", kLockTimeout);
  return connection.Text();
}

bool Attach(Database& database, const Attachment& attachment) {
  if (!FileExists(attachment.path)) return false;
  return database.Run("ATTACH DATABASE ? AS \"" + attachment.name + '"', {DriverPath(attachment.path)}).has_value();
}

}  // namespace

std::string DriverPath(const std::string& path) {
  const GetUnixFileName convert = FindConverter();
  char* const converted = convert ? convert(windows::Utf16(path).c_str()) : nullptr;
  if (!converted) return path;
  std::string result = converted;
  HeapFree(GetProcessHeap(), 0, converted);
  return result;
}

struct Database::Handles {
  SQLHENV environment = nullptr;
  SQLHDBC connection = nullptr;
  bool connected = false;

  ~Handles() {
    if (connected) SQLDisconnect(connection);
    if (connection) SQLFreeHandle(SQL_HANDLE_DBC, connection);
    if (environment) SQLFreeHandle(SQL_HANDLE_ENV, environment);
  }

  bool Connect(const std::string& text) {
    if (!SQL_SUCCEEDED(SQLAllocHandle(SQL_HANDLE_ENV, SQL_NULL_HANDLE, &environment))) return false;
    SQLSetEnvAttr(environment, SQL_ATTR_ODBC_VERSION, reinterpret_cast<SQLPOINTER>(SQL_OV_ODBC3), 0);
    if (!SQL_SUCCEEDED(SQLAllocHandle(SQL_HANDLE_DBC, environment, &connection))) return false;
    std::wstring wide = windows::Utf16(text);
    SQLWCHAR completed[1024] = {};
    SQLSMALLINT length = 0;
    connected =
        SQL_SUCCEEDED(SQLDriverConnectW(connection, nullptr, Characters(wide), static_cast<SQLSMALLINT>(wide.size()),
                                        completed, 1024, &length, SQL_DRIVER_NOPROMPT));
    return connected;
  }
};

Database::Database(std::unique_ptr<Handles> handles) : handles_(std::move(handles)) {}
Database::~Database() = default;

std::unique_ptr<Database> Database::Open(const std::string& connection) {
  ConnectionText text(connection);
  const std::vector<Attachment> attachments = ParseAttachments(text.Take("Attach"));
  if (const auto path = text.Value("Database"); path && !FileExists(*path)) return nullptr;
  auto handles = std::make_unique<Handles>();
  if (!handles->Connect(DriverText(std::move(text)))) return nullptr;
  std::unique_ptr<Database> database(new Database(std::move(handles)));
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
  Statement prepared(handles_->connection);
  std::optional<Rows> rows;
  if (prepared.Execute(statement, parameters)) rows = prepared.ReadAll();
  if (!rows && error) *error = prepared.ErrorText();
  return rows;
}

std::optional<std::string> Database::Setting(const std::string& group, const std::string& name) {
  const auto rows = Run("SELECT VALUE FROM T_CONFIG WHERE GROUP_NAME = ? AND NAME = ?", {group, name});
  return rows && !rows->cells.empty() ? rows->cells[0][0] : std::nullopt;
}

}  // namespace reference
