// QXNetDB.dll behind its contract.
#pragma once

#include "host/QXNetDB.h"
#include "windows/adapters/HostLibrary.h"

namespace windows {

class QxNetDBLibrary : public host::QXNetDB {
 public:
  QxNetDBLibrary();
  const HostLibrary& Library() const { return library_; }

  std::int32_t Connect(const std::string& location) override;
  std::int32_t GetEquip(const std::string& kind, std::vector<std::int32_t>& numbers) override;
  std::int32_t GetDriveInfo(std::int32_t number, host::MediaRecord& record) override;
  void Close() override;

 private:
  HostLibrary library_;
  long(__stdcall* connect_)(const char* location) = nullptr;
  // `numbers` has room for kEquipmentLimit of them; the result is their count.
  long(__stdcall* getEquip_)(const char* kind, long* numbers) = nullptr;
  // `value` is a number that this program does not use; the texts have 255 characters each.
  long(__stdcall* getDriveInfo_)(long number, long* value, char* attribute, char* drive, char* third, char* type,
                                 char* command) = nullptr;
  long(__stdcall* close_)() = nullptr;
};

}  // namespace windows
