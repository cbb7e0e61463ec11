// The host's three DLLs behind their contracts.
#pragma once

#include "host/Libraries.h"
#include "windows/adapters/HostLibrary.h"

namespace windows {

class Qx32Library : public host::QX32 {
 public:
  Qx32Library();
  const HostLibrary& Library() const { return library_; }

  base::Outcome GetString(const std::string& name, std::size_t capacity, std::string& value) override;
  base::Outcome RegGetKeySZ(const std::string& name, std::string& value) override;
  base::Outcome RegGetKeyDWORD(const std::string& name, std::uint32_t& value) override;
  base::Outcome RegSetKeySZ(const std::string& name, const std::string& value) override;
  base::Outcome RegSetKeyDWORD(const std::string& name, std::uint32_t value) override;
  std::string GetHostname() override;
  std::string GetSoftwareVersion() override;

 private:
  HostLibrary library_;
  HostExport<long __stdcall(const char* name, char* value)> getString_;
  HostExport<long __stdcall(const char* name, char* value)> regGetKeySZ_;
  HostExport<long __stdcall(const char* name, unsigned long* value)> regGetKeyDWORD_;
  HostExport<long __stdcall(const char* name, const char* value)> regSetKeySZ_;
  HostExport<long __stdcall(const char* name, unsigned long value)> regSetKeyDWORD_;
  HostExport<long __stdcall(char* value)> getHostname_;
  HostExport<long __stdcall(char* value)> getSoftwareVersion_;
};

class Qx32libLibrary : public host::QX32lib {
 public:
  Qx32libLibrary();
  const HostLibrary& Library() const { return library_; }

  base::Outcome SysDBConnect(const std::string& connection) override;
  base::Outcome SysDBReadszValue(const std::string& group, const std::string& name, std::string& value) override;
  base::Outcome SysDBClose() override;

 private:
  HostLibrary library_;
  HostExport<long __stdcall(const char* connection)> connect_;
  HostExport<long __stdcall(const char* group, const char* name, char* value)> readszValue_;
  HostExport<long __stdcall()> close_;
};

class QxNetDBLibrary : public host::QXNetDB {
 public:
  QxNetDBLibrary();
  const HostLibrary& Library() const { return library_; }

  base::Outcome Connect(const std::string& location) override;
  base::Outcome GetEquip(const std::string& kind, std::vector<std::int32_t>& numbers) override;
  base::Outcome GetDriveInfo(std::int32_t number, host::MediaRecord& record) override;
  void Close() override;

 private:
  HostLibrary library_;
  HostExport<long __stdcall(const char* location)> connect_;
  // `numbers` has room for kEquipmentLimit of them; the result is their count.
  HostExport<long __stdcall(const char* kind, long* numbers)> getEquip_;
  // `value` is a number that this program does not use; the texts have 255 characters each.
  HostExport<long __stdcall(long number, long* value, char* attribute, char* drive, char* third, char* type,
                            char* command)>
      getDriveInfo_;
  HostExport<long __stdcall()> close_;
};

}  // namespace windows
