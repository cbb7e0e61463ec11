// Compacting through the Access database engine.
#include "windows/adapters/DaoDatabaseCompactor.h"

#include "windows/adapters/Dispatch.h"
#include "windows/adapters/ProgIds.h"
#include "windows/adapters/Results.h"

namespace windows {

std::int32_t DaoDatabaseCompactor::Compact(const std::string& source, const std::string& target,
                                           const std::string& locale) {
  for (const wchar_t* progId : kDatabaseEngineProgIds) {
    const Dispatch engine(progId);
    if (engine) return ResultOfCom(engine.Call(L"CompactDatabase", source, target, locale));
  }
  return app::kFailed;
}

}  // namespace windows
