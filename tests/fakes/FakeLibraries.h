// The three host libraries, with tables that a test fills.
#pragma once

#include <map>
#include <numeric>

#include "fakes/CallCounter.h"
#include "host/Libraries.h"

namespace fakes {

/// Whether the table has the entry; only then `value` is set.
template <class Value>
bool LookUp(const std::map<std::string, Value>& table, const std::string& name, Value& value) {
  const auto found = table.find(name);
  if (found == table.end()) return false;
  value = found->second;
  return true;
}

class FakeQX32 : public host::QX32 {
 public:
  explicit FakeQX32(CallCounter& calls) : calls_(calls, "QX32") {}
  std::map<std::string, std::string> pathTable;
  /// Below the host's key; a leading "\" of a name does not count.
  std::map<std::string, std::string> texts;
  std::map<std::string, std::uint32_t> numbers;

  base::Outcome GetString(const std::string& name, std::size_t capacity, std::string& value) override {
    const auto look = [&] {
      std::string whole;
      if (!LookUp(pathTable, name, whole)) return false;
      value = whole.substr(0, capacity);
      return true;
    };
    return calls_.Do(__func__, name, look, "not in the path table");
  }
  base::Outcome RegGetKeySZ(const std::string& name, std::string& value) override {
    return calls_.Do(
        __func__, name, [&] { return LookUp(texts, BelowHostKey(name), value); }, kNotInRegistry);
  }
  base::Outcome RegGetKeyDWORD(const std::string& name, std::uint32_t& value) override {
    return calls_.Do(
        __func__, name, [&] { return LookUp(numbers, BelowHostKey(name), value); }, kNotInRegistry);
  }
  base::Outcome RegSetKeySZ(const std::string& name, const std::string& value) override {
    return calls_.Do(__func__, name, [&] { return texts.insert_or_assign(BelowHostKey(name), value), true; });
  }
  base::Outcome RegSetKeyDWORD(const std::string& name, std::uint32_t value) override {
    return calls_.Do(__func__, name, [&] { return numbers.insert_or_assign(BelowHostKey(name), value), true; });
  }
  std::string GetHostname() override { return calls_.Fails(__func__) ? "" : "WS-RADIOLOGY-1"; }
  std::string GetSoftwareVersion() override { return calls_.Fails(__func__) ? "" : "3.00"; }

 private:
  static constexpr const char* kNotInRegistry = "not in the registry";
  static std::string BelowHostKey(const std::string& name) { return name.substr(name.starts_with('\\') ? 1 : 0); }

  ContractCalls calls_;
};

class FakeQX32lib : public host::QX32lib {
 public:
  explicit FakeQX32lib(CallCounter& calls) : calls_(calls, "QX32lib") {}
  std::string connection;                     ///< the only one that opens
  std::map<std::string, std::string> values;  ///< "Group/Name"

  base::Outcome SysDBConnect(const std::string& wanted) override {
    open_ = false;
    return calls_.Do(
        __func__, wanted, [&] { return open_ = wanted == connection; }, "no such database");
  }
  base::Outcome SysDBReadszValue(const std::string& group, const std::string& name, std::string& value) override {
    const auto look = [&] { return open_ && LookUp(values, group + "/" + name, value); };
    return calls_.Do(__func__, name, look, "no such value");
  }
  base::Outcome SysDBClose() override {
    return calls_.Do(
        __func__, {}, [&] { return std::exchange(open_, false); }, "not open");
  }

 private:
  ContractCalls calls_;
  bool open_ = false;
};

class FakeQXNetDB : public host::QXNetDB {
 public:
  explicit FakeQXNetDB(CallCounter& calls) : calls_(calls, "QXNetDB") {}
  std::string location;                    ///< the only one that opens
  std::vector<host::MediaRecord> records;  ///< equipment numbers count from 100
  bool open = false;
  int closes = 0;

  base::Outcome Connect(const std::string& wanted) override {
    open = false;
    return calls_.Do(
        __func__, wanted, [&] { return open = wanted == location; }, "no such database");
  }
  base::Outcome GetEquip(const std::string& kind, std::vector<std::int32_t>& numbers) override {
    numbers.clear();
    const auto look = [&] {
      if (!open || kind != "MEDIA") return false;
      numbers.resize(records.size());
      std::iota(numbers.begin(), numbers.end(), kFirstNumber);
      return true;
    };
    return calls_.Do(__func__, kind, look);
  }
  base::Outcome GetDriveInfo(std::int32_t number, host::MediaRecord& record) override {
    const auto look = [&] {
      const auto index = static_cast<std::size_t>(number - kFirstNumber);
      if (!open || index >= records.size()) return false;
      record = records[index];
      return true;
    };
    return calls_.Do(__func__, {}, look, "no such equipment");
  }
  void Close() override {
    open = false;
    ++closes;
  }

 private:
  static constexpr std::int32_t kFirstNumber = 100;
  ContractCalls calls_;
};

}  // namespace fakes
