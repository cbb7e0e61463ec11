// Calls into the host's DLLs: the names of the exports, the sizes of the buffers, and what an answer means.
#include "windows/adapters/Libraries.h"

#include <algorithm>

namespace windows {
namespace {

constexpr std::size_t kRegistryTextSize = 256;
constexpr std::size_t kHostnameSize = 16;
constexpr std::size_t kSoftwareVersionSize = 128;
constexpr std::size_t kConfigurationTextSize = 256;
constexpr std::size_t kMediaTextSize = 255;
constexpr long kEquipmentLimit = 1024;
// The library is not told how many numbers fit; a few more than agreed do no harm.
constexpr long kEquipmentSlack = 1024;

/// A text that is had without a word on success or failure.
std::string FixedText(const HostExport<long __stdcall(char*)>& function, std::size_t capacity) {
  AnsiBuffer buffer(capacity);
  long answer = 0;
  return function.Ask(answer, buffer.Data()).IsDone() ? buffer.Text() : std::string();
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

base::Outcome Qx32Library::GetString(const std::string& name, std::size_t capacity, std::string& value) {
  AnsiBuffer buffer(capacity);
  base::Outcome read = getString_.Call(FailsAt::AnyButZero, ToCodePage(name).c_str(), buffer.Data());
  if (read.IsDone()) value = buffer.Text();
  return read;
}

base::Outcome Qx32Library::RegGetKeySZ(const std::string& name, std::string& value) {
  AnsiBuffer buffer(kRegistryTextSize);
  base::Outcome read = regGetKeySZ_.Call(FailsAt::MinusOne, ToCodePage(name).c_str(), buffer.Data());
  if (read.IsDone()) value = buffer.Text();
  return read;
}

base::Outcome Qx32Library::RegGetKeyDWORD(const std::string& name, std::uint32_t& value) {
  unsigned long number = 0;
  base::Outcome read = regGetKeyDWORD_.Call(FailsAt::MinusOne, ToCodePage(name).c_str(), &number);
  if (read.IsDone()) value = number;
  return read;
}

base::Outcome Qx32Library::RegSetKeySZ(const std::string& name, const std::string& value) {
  return regSetKeySZ_.Call(FailsAt::MinusOne, ToCodePage(name).c_str(), ToCodePage(value).c_str());
}

base::Outcome Qx32Library::RegSetKeyDWORD(const std::string& name, std::uint32_t value) {
  return regSetKeyDWORD_.Call(FailsAt::MinusOne, ToCodePage(name).c_str(), value);
}

std::string Qx32Library::GetHostname() {
  return FixedText(getHostname_, kHostnameSize);
}

std::string Qx32Library::GetSoftwareVersion() {
  return FixedText(getSoftwareVersion_, kSoftwareVersionSize);
}

Qx32libLibrary::Qx32libLibrary() : library_(L"QX32lib.dll") {
  library_.Find("QXSysDBConnect", connect_);
  library_.Find("QXSysDBReadszValue", readszValue_);
  library_.Find("QXSysDBClose", close_);
}

base::Outcome Qx32libLibrary::SysDBConnect(const std::string& connection) {
  return connect_.Call(FailsAt::MinusOne, ToCodePage(connection).c_str());
}

base::Outcome Qx32libLibrary::SysDBReadszValue(const std::string& group, const std::string& name, std::string& value) {
  AnsiBuffer buffer(kConfigurationTextSize);
  base::Outcome read =
      readszValue_.Call(FailsAt::MinusOne, ToCodePage(group).c_str(), ToCodePage(name).c_str(), buffer.Data());
  if (read.IsDone()) value = buffer.Text();
  return read;
}

base::Outcome Qx32libLibrary::SysDBClose() {
  return close_.Call(FailsAt::MinusOne);
}

QxNetDBLibrary::QxNetDBLibrary() : library_(L"QXNetDB.dll") {
  library_.Find("QXNetDBConnect", connect_);
  library_.Find("QXNetDBGetEquip", getEquip_);
  library_.Find("QXNetDBGetDriveInfo", getDriveInfo_);
  library_.Find("QXNetDBClose", close_);
}

base::Outcome QxNetDBLibrary::Connect(const std::string& location) {
  return connect_.Call(FailsAt::AnyButZero, ToCodePage(location).c_str());
}

base::Outcome QxNetDBLibrary::GetEquip(const std::string& kind, std::vector<std::int32_t>& numbers) {
  numbers.clear();
  std::vector<long> found(kEquipmentLimit + kEquipmentSlack, 0);
  long answer = 0;
  base::Outcome asked = getEquip_.Ask(answer, ToCodePage(kind).c_str(), found.data());
  if (answer < 0) return Refused(getEquip_.Name(), answer);
  numbers.assign(found.begin(), found.begin() + std::min(answer, kEquipmentLimit));
  return asked;
}

base::Outcome QxNetDBLibrary::GetDriveInfo(std::int32_t number, host::MediaRecord& record) {
  long value = 0;
  AnsiBuffer attribute(kMediaTextSize), drive(kMediaTextSize), third(kMediaTextSize), type(kMediaTextSize),
      command(kMediaTextSize);
  base::Outcome read = getDriveInfo_.Call(FailsAt::MinusOne, number, &value, attribute.Data(), drive.Data(),
                                          third.Data(), type.Data(), command.Data());
  if (read.IsDone()) record = {attribute.Text(), drive.Text(), third.Text(), type.Text(), command.Text()};
  return read;
}

void QxNetDBLibrary::Close() {
  long answer = 0;
  static_cast<void>(close_.Ask(answer));
}

}  // namespace windows
