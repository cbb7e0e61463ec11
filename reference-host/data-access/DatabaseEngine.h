// DAO.DBEngine.36: compacts databases.
#pragma once

#include "data-access/Automation.h"

namespace dataaccess {

class DatabaseEngine final : public AutomationObject {
 public:
  DatabaseEngine();

 private:
  Outcome Call(DISPID id, bool writes, const Arguments& arguments, VARIANT& result) override;
};

}  // namespace dataaccess
