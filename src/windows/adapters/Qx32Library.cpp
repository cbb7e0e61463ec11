// Calls into QX32.dll.
#include "windows/adapters/Qx32Library.h"

#include "app/ResultCodes.h"
#include "windows/adapters/AnsiBuffer.h"

namespace windows {
namespace {

constexpr std::size_t kRegistryTextSize = 256;
constexpr std::size_t kHostnameSize = 16;
constexpr std::size_t kSoftwareVersionSize = 128;

std::string FixedText(long(__stdcall* function)(char*), std::size_t capacity) {
  AnsiBuffer buffer(capacity);
  if (function != nullptr) function(buffer.Data());
  return buffer.Text();
}

}  // namespace

Qx32Library::Qx32Library() : library_(L"QX32.dll") {
  library_.Find("_QXGetString@8", getString_);
  library_.Find("_QXRegGetKeySZ@8", regGetKeySZ_);
  library_.Find("_QXRegGetKeyDWORD@8", regGetKeyDWORD_);
  library_.Find("_QXRegSetKeySZ@8", regSetKeySZ_);
  library_.Find("_QXRegSetKeyDWORD@8", regSetKeyDWORD_);
  library_.Find("_QXGetHostname@4", getHostname_);
  library_.Find("_QXGetSoftwareVersion@4", getSoftwareVersion_);
}

std::int32_t Qx32Library::GetString(const std::string& name, std::size_t capacity, std::string& value) {
  if (getString_ == nullptr) return app::kFailed;
  AnsiBuffer buffer(capacity);
  const long result = getString_(ToCodePage(name).c_str(), buffer.Data());
  if (result == app::kDone) value = buffer.Text();
  return result;
}

std::int32_t Qx32Library::RegGetKeySZ(const std::string& name, std::string& value) {
  if (regGetKeySZ_ == nullptr) return app::kFailed;
  AnsiBuffer buffer(kRegistryTextSize);
  const long result = regGetKeySZ_(ToCodePage(name).c_str(), buffer.Data());
  if (result != app::kFailed) value = buffer.Text();
  return result;
}

std::int32_t Qx32Library::RegGetKeyDWORD(const std::string& name, std::uint32_t& value) {
  if (regGetKeyDWORD_ == nullptr) return app::kFailed;
  unsigned long number = 0;
  const long result = regGetKeyDWORD_(ToCodePage(name).c_str(), &number);
  if (result != app::kFailed) value = number;
  return result;
}

std::int32_t Qx32Library::RegSetKeySZ(const std::string& name, const std::string& value) {
  if (regSetKeySZ_ == nullptr) return app::kFailed;
  return regSetKeySZ_(ToCodePage(name).c_str(), ToCodePage(value).c_str());
}

std::int32_t Qx32Library::RegSetKeyDWORD(const std::string& name, std::uint32_t value) {
  if (regSetKeyDWORD_ == nullptr) return app::kFailed;
  return regSetKeyDWORD_(ToCodePage(name).c_str(), value);
}

std::string Qx32Library::GetHostname() {
  return FixedText(getHostname_, kHostnameSize);
}

std::string Qx32Library::GetSoftwareVersion() {
  return FixedText(getSoftwareVersion_, kSoftwareVersionSize);
}

}  // namespace windows
