// The message catalogue's table through ADO, and compacting through the Access database engine.
#pragma once

#include "host/Databases.h"
#include "windows/adapters/Dispatch.h"

namespace windows {

// Data access, part of Windows and of the Access database engine.
inline constexpr wchar_t kConnectionProgId[] = L"ADODB.Connection";
inline constexpr wchar_t kRecordsetProgId[] = L"ADODB.Recordset";
/// Engines that can compact a database, in the order in which they are tried.
inline constexpr const wchar_t* kDatabaseEngineProgIds[] = {L"DAO.DBEngine.36", L"DAO.DBEngine.120"};

class AdoCatalogueTable : public host::CatalogueTable {
 public:
  base::Outcome Open(const std::string& connection, const std::string& tableName) override;
  base::Outcome SetFilter(const std::string& criterion) override;
  bool AtEnd() override;
  std::optional<std::string> StringField() override;
  void Close() override;
  void Abandon() override;

 private:
  // The recordset goes first: it rests on the connection.
  Dispatch connection_;
  Dispatch recordset_;
};

class DaoDatabaseCompactor : public host::DatabaseCompactor {
 public:
  base::Outcome Compact(const std::string& source, const std::string& target, const std::string& locale) override;
};

}  // namespace windows
