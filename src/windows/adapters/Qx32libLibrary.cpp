// Calls into QX32lib.dll.
#include "windows/adapters/Qx32libLibrary.h"

#include "app/ResultCodes.h"
#include "windows/adapters/AnsiBuffer.h"

namespace windows {
namespace {

constexpr std::size_t kValueSize = 256;

}  // namespace

Qx32libLibrary::Qx32libLibrary() : library_(L"QX32lib.dll") {
  library_.Find("QXSysDBConnect", connect_);
  library_.Find("QXSysDBReadszValue", readszValue_);
  library_.Find("QXSysDBClose", close_);
}

std::int32_t Qx32libLibrary::SysDBConnect(const std::string& connection) {
  return connect_ == nullptr ? app::kFailed : connect_(ToCodePage(connection).c_str());
}

std::int32_t Qx32libLibrary::SysDBReadszValue(const std::string& group, const std::string& name, std::string& value) {
  if (readszValue_ == nullptr) return app::kFailed;
  AnsiBuffer buffer(kValueSize);
  const long result = readszValue_(ToCodePage(group).c_str(), ToCodePage(name).c_str(), buffer.Data());
  if (result != app::kFailed) value = buffer.Text();
  return result;
}

std::int32_t Qx32libLibrary::SysDBClose() {
  return close_ == nullptr ? app::kFailed : close_();
}

}  // namespace windows
