#include "fakes/FakeLibraries.h"

namespace fakes {
namespace {

constexpr std::int32_t kFirstNumber = 100;

std::string BelowHostKey(const std::string& name) {
  return name.starts_with('\\') ? name.substr(1) : name;
}

template <class Table, class Value>
std::int32_t LookUp(const Table& table, const std::string& name, Value& value) {
  const auto found = table.find(name);
  if (found == table.end()) return -1;
  value = found->second;
  return 0;
}

}  // namespace

std::int32_t FakeQX32::GetString(const std::string& name, std::size_t capacity, std::string& value) {
  std::string whole;
  if (calls_.Fails("QX32", "GetString", name) || LookUp(pathTable, name, whole) != 0) return -1;
  value = whole.substr(0, capacity);
  return found;
}

std::int32_t FakeQX32::RegGetKeySZ(const std::string& name, std::string& value) {
  return calls_.Fails("QX32", "RegGetKeySZ", name) ? -1 : LookUp(texts, BelowHostKey(name), value);
}

std::int32_t FakeQX32::RegGetKeyDWORD(const std::string& name, std::uint32_t& value) {
  return calls_.Fails("QX32", "RegGetKeyDWORD", name) ? -1 : LookUp(numbers, BelowHostKey(name), value);
}

std::int32_t FakeQX32::RegSetKeySZ(const std::string& name, const std::string& value) {
  if (calls_.Fails("QX32", "RegSetKeySZ", name)) return -1;
  texts[BelowHostKey(name)] = value;
  return 0;
}

std::int32_t FakeQX32::RegSetKeyDWORD(const std::string& name, std::uint32_t value) {
  if (calls_.Fails("QX32", "RegSetKeyDWORD", name)) return -1;
  numbers[BelowHostKey(name)] = value;
  return 0;
}

std::string FakeQX32::GetHostname() {
  return calls_.Fails("QX32", "GetHostname") ? std::string() : hostName;
}

std::string FakeQX32::GetSoftwareVersion() {
  return calls_.Fails("QX32", "GetSoftwareVersion") ? std::string() : softwareVersion;
}

std::int32_t FakeQX32lib::SysDBConnect(const std::string& wanted) {
  open = !calls_.Fails("QX32lib", "SysDBConnect", wanted) && wanted == connection;
  return open ? 0 : -1;
}

std::int32_t FakeQX32lib::SysDBReadszValue(const std::string& group, const std::string& name, std::string& value) {
  if (calls_.Fails("QX32lib", "SysDBReadszValue", name) || !open) return -1;
  return LookUp(values, group + "/" + name, value);
}

std::int32_t FakeQX32lib::SysDBClose() {
  if (calls_.Fails("QX32lib", "SysDBClose") || !open) return -1;
  open = false;
  return 0;
}

std::int32_t FakeQXNetDB::Connect(const std::string& wanted) {
  open = !calls_.Fails("QXNetDB", "Connect", wanted) && wanted == location;
  return open ? 0 : -1;
}

std::int32_t FakeQXNetDB::GetEquip(const std::string& kind, std::vector<std::int32_t>& numbers) {
  numbers.clear();
  if (calls_.Fails("QXNetDB", "GetEquip", kind) || !open || kind != "MEDIA") return -1;
  for (std::size_t i = 0; i < records.size(); ++i) numbers.push_back(kFirstNumber + static_cast<std::int32_t>(i));
  return static_cast<std::int32_t>(numbers.size());
}

std::int32_t FakeQXNetDB::GetDriveInfo(std::int32_t number, host::MediaRecord& record) {
  const auto index = static_cast<std::size_t>(number - kFirstNumber);
  if (calls_.Fails("QXNetDB", "GetDriveInfo") || !open || index >= records.size()) return -1;
  record = records[index];
  return 0;
}

void FakeQXNetDB::Close() {
  open = false;
  ++closes;
}

}  // namespace fakes
