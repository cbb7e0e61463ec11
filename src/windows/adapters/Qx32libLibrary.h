// QX32lib.dll behind its contract.
#pragma once

#include "host/QX32lib.h"
#include "windows/adapters/HostLibrary.h"

namespace windows {

class Qx32libLibrary : public host::QX32lib {
 public:
  Qx32libLibrary();
  const HostLibrary& Library() const { return library_; }

  std::int32_t SysDBConnect(const std::string& connection) override;
  std::int32_t SysDBReadszValue(const std::string& group, const std::string& name, std::string& value) override;
  std::int32_t SysDBClose() override;

 private:
  HostLibrary library_;
  long(__stdcall* connect_)(const char* connection) = nullptr;
  long(__stdcall* readszValue_)(const char* group, const char* name, char* value) = nullptr;
  long(__stdcall* close_)() = nullptr;
};

}  // namespace windows
