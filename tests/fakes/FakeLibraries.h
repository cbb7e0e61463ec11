// The three host libraries, with tables that a test fills.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "fakes/CallCounter.h"
#include "host/QX32.h"
#include "host/QX32lib.h"
#include "host/QXNetDB.h"

namespace fakes {

class FakeQX32 : public host::QX32 {
 public:
  explicit FakeQX32(CallCounter& calls) : calls_(calls) {}
  std::map<std::string, std::string> pathTable;
  std::int32_t found = 0;  ///< the answer for an entry that is there
  /// Below the host's key; a leading "\" of a name does not count.
  std::map<std::string, std::string> texts;
  std::map<std::string, std::uint32_t> numbers;
  std::string hostName = "WS-RADIOLOGY-1";
  std::string softwareVersion = "3.00";

  std::int32_t GetString(const std::string& name, std::size_t capacity, std::string& value) override;
  std::int32_t RegGetKeySZ(const std::string& name, std::string& value) override;
  std::int32_t RegGetKeyDWORD(const std::string& name, std::uint32_t& value) override;
  std::int32_t RegSetKeySZ(const std::string& name, const std::string& value) override;
  std::int32_t RegSetKeyDWORD(const std::string& name, std::uint32_t value) override;
  std::string GetHostname() override;
  std::string GetSoftwareVersion() override;

 private:
  CallCounter& calls_;
};

class FakeQX32lib : public host::QX32lib {
 public:
  explicit FakeQX32lib(CallCounter& calls) : calls_(calls) {}
  std::string connection;                     ///< the only one that opens
  std::map<std::string, std::string> values;  ///< "Group/Name"
  bool open = false;

  std::int32_t SysDBConnect(const std::string& connection) override;
  std::int32_t SysDBReadszValue(const std::string& group, const std::string& name, std::string& value) override;
  std::int32_t SysDBClose() override;

 private:
  CallCounter& calls_;
};

class FakeQXNetDB : public host::QXNetDB {
 public:
  explicit FakeQXNetDB(CallCounter& calls) : calls_(calls) {}
  std::string location;                    ///< the only one that opens
  std::vector<host::MediaRecord> records;  ///< equipment numbers count from 100
  bool open = false;
  int closes = 0;

  std::int32_t Connect(const std::string& location) override;
  std::int32_t GetEquip(const std::string& kind, std::vector<std::int32_t>& numbers) override;
  std::int32_t GetDriveInfo(std::int32_t number, host::MediaRecord& record) override;
  void Close() override;

 private:
  CallCounter& calls_;
};

}  // namespace fakes
