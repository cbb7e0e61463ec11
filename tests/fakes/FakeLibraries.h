// The three host libraries, with tables that a test fills.
#pragma once

#include <map>
#include <numeric>
#include <utility>

#include "fakes/CallCounter.h"
#include "host/QX32.h"
#include "host/QX32lib.h"
#include "host/QXNetDB.h"

namespace fakes {

/// 0 with the value, or -1 when the table does not have it.
template <class Value>
std::int32_t LookUp(const std::map<std::string, Value>& table, const std::string& name, Value& value) {
  const auto found = table.find(name);
  if (found == table.end()) return -1;
  value = found->second;
  return 0;
}

class FakeQX32 : public host::QX32 {
 public:
  explicit FakeQX32(CallCounter& calls) : calls_(calls) {}
  std::map<std::string, std::string> pathTable;
  std::int32_t found = 0;  ///< the answer for an entry that is there
  /// Below the host's key; a leading "\" of a name does not count.
  std::map<std::string, std::string> texts;
  std::map<std::string, std::uint32_t> numbers;

  std::int32_t GetString(const std::string& name, std::size_t capacity, std::string& value) override {
    std::string whole;
    if (Fails(__func__, name) || LookUp(pathTable, name, whole) != 0) return -1;
    value = whole.substr(0, capacity);
    return found;
  }
  std::int32_t RegGetKeySZ(const std::string& name, std::string& value) override {
    return Fails(__func__, name) ? -1 : LookUp(texts, BelowHostKey(name), value);
  }
  std::int32_t RegGetKeyDWORD(const std::string& name, std::uint32_t& value) override {
    return Fails(__func__, name) ? -1 : LookUp(numbers, BelowHostKey(name), value);
  }
  std::int32_t RegSetKeySZ(const std::string& name, const std::string& value) override {
    if (Fails(__func__, name)) return -1;
    texts[BelowHostKey(name)] = value;
    return 0;
  }
  std::int32_t RegSetKeyDWORD(const std::string& name, std::uint32_t value) override {
    if (Fails(__func__, name)) return -1;
    numbers[BelowHostKey(name)] = value;
    return 0;
  }
  std::string GetHostname() override { return Fails(__func__) ? "" : "WS-RADIOLOGY-1"; }
  std::string GetSoftwareVersion() override { return Fails(__func__) ? "" : "3.00"; }

 private:
  bool Fails(const char* method, const std::string& name = {}) { return calls_.Fails("QX32", method, name); }
  static std::string BelowHostKey(const std::string& name) { return name.substr(name.starts_with('\\') ? 1 : 0); }

  CallCounter& calls_;
};

class FakeQX32lib : public host::QX32lib {
 public:
  explicit FakeQX32lib(CallCounter& calls) : calls_(calls) {}
  std::string connection;                     ///< the only one that opens
  std::map<std::string, std::string> values;  ///< "Group/Name"

  std::int32_t SysDBConnect(const std::string& wanted) override {
    open_ = !calls_.Fails("QX32lib", __func__, wanted) && wanted == connection;
    return open_ ? 0 : -1;
  }
  std::int32_t SysDBReadszValue(const std::string& group, const std::string& name, std::string& value) override {
    return calls_.Fails("QX32lib", __func__, name) || !open_ ? -1 : LookUp(values, group + "/" + name, value);
  }
  std::int32_t SysDBClose() override {
    return calls_.Fails("QX32lib", __func__) || !std::exchange(open_, false) ? -1 : 0;
  }

 private:
  CallCounter& calls_;
  bool open_ = false;
};

class FakeQXNetDB : public host::QXNetDB {
 public:
  explicit FakeQXNetDB(CallCounter& calls) : calls_(calls) {}
  std::string location;                    ///< the only one that opens
  std::vector<host::MediaRecord> records;  ///< equipment numbers count from 100
  bool open = false;
  int closes = 0;

  std::int32_t Connect(const std::string& wanted) override {
    open = !calls_.Fails("QXNetDB", __func__, wanted) && wanted == location;
    return open ? 0 : -1;
  }
  std::int32_t GetEquip(const std::string& kind, std::vector<std::int32_t>& numbers) override {
    numbers.clear();
    if (calls_.Fails("QXNetDB", __func__, kind) || !open || kind != "MEDIA") return -1;
    numbers.resize(records.size());
    std::iota(numbers.begin(), numbers.end(), kFirstNumber);
    return static_cast<std::int32_t>(numbers.size());
  }
  std::int32_t GetDriveInfo(std::int32_t number, host::MediaRecord& record) override {
    const auto index = static_cast<std::size_t>(number - kFirstNumber);
    if (calls_.Fails("QXNetDB", __func__) || !open || index >= records.size()) return -1;
    record = records[index];
    return 0;
  }
  void Close() override {
    open = false;
    ++closes;
  }

 private:
  static constexpr std::int32_t kFirstNumber = 100;
  CallCounter& calls_;
};

}  // namespace fakes
