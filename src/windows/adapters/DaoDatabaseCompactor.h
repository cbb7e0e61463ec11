// Compacting through the Access database engine.
#pragma once

#include "host/DatabaseCompactor.h"

namespace windows {

class DaoDatabaseCompactor : public host::DatabaseCompactor {
 public:
  std::int32_t Compact(const std::string& source, const std::string& target, const std::string& locale) override;
};

}  // namespace windows
