// The message catalogue's table through ADO.
#pragma once

#include "host/CatalogueTable.h"
#include "windows/adapters/Dispatch.h"

namespace windows {

class AdoCatalogueTable : public host::CatalogueTable {
 public:
  std::int32_t Open(const std::string& connection, const std::string& tableName) override;
  std::int32_t SetFilter(const std::string& criterion) override;
  bool AtEnd() override;
  std::optional<std::string> StringField() override;
  void Close() override;
  void Abandon() override;

 private:
  // The recordset goes first: it rests on the connection.
  Dispatch connection_;
  Dispatch recordset_;
};

}  // namespace windows
