// QX32.dll behind its contract.
#pragma once

#include "host/QX32.h"
#include "windows/adapters/HostLibrary.h"

namespace windows {

class Qx32Library : public host::QX32 {
 public:
  Qx32Library();
  const HostLibrary& Library() const { return library_; }

  std::int32_t GetString(const std::string& name, std::size_t capacity, std::string& value) override;
  std::int32_t RegGetKeySZ(const std::string& name, std::string& value) override;
  std::int32_t RegGetKeyDWORD(const std::string& name, std::uint32_t& value) override;
  std::int32_t RegSetKeySZ(const std::string& name, const std::string& value) override;
  std::int32_t RegSetKeyDWORD(const std::string& name, std::uint32_t value) override;
  std::string GetHostname() override;
  std::string GetSoftwareVersion() override;

 private:
  HostLibrary library_;
  // The exports, in the DLL's own types.
  long(__stdcall* getString_)(const char* name, char* value) = nullptr;
  long(__stdcall* regGetKeySZ_)(const char* name, char* value) = nullptr;
  long(__stdcall* regGetKeyDWORD_)(const char* name, unsigned long* value) = nullptr;
  long(__stdcall* regSetKeySZ_)(const char* name, const char* value) = nullptr;
  long(__stdcall* regSetKeyDWORD_)(const char* name, unsigned long value) = nullptr;
  long(__stdcall* getHostname_)(char* value) = nullptr;
  long(__stdcall* getSoftwareVersion_)(char* value) = nullptr;
};

}  // namespace windows
