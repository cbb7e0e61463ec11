// Calls into QXNetDB.dll.
#include "windows/adapters/QxNetDBLibrary.h"

#include <algorithm>

#include "app/ResultCodes.h"
#include "windows/adapters/AnsiBuffer.h"

namespace windows {
namespace {

constexpr std::size_t kTextSize = 255;
constexpr long kEquipmentLimit = 1024;
// The library is not told how many numbers fit; a few more than agreed do no harm.
constexpr long kEquipmentSlack = 1024;

}  // namespace

QxNetDBLibrary::QxNetDBLibrary() : library_(L"QXNetDB.dll") {
  library_.Find("QXNetDBConnect", connect_);
  library_.Find("QXNetDBGetEquip", getEquip_);
  library_.Find("QXNetDBGetDriveInfo", getDriveInfo_);
  library_.Find("QXNetDBClose", close_);
}

std::int32_t QxNetDBLibrary::Connect(const std::string& location) {
  return connect_ == nullptr ? app::kFailed : connect_(ToCodePage(location).c_str());
}

std::int32_t QxNetDBLibrary::GetEquip(const std::string& kind, std::vector<std::int32_t>& numbers) {
  numbers.clear();
  if (getEquip_ == nullptr) return app::kFailed;
  std::vector<long> found(kEquipmentLimit + kEquipmentSlack, 0);
  const long answer = getEquip_(ToCodePage(kind).c_str(), found.data());
  if (answer < 0) return app::kFailed;
  const long count = std::min(answer, kEquipmentLimit);
  numbers.assign(found.begin(), found.begin() + count);
  return count;
}

std::int32_t QxNetDBLibrary::GetDriveInfo(std::int32_t number, host::MediaRecord& record) {
  if (getDriveInfo_ == nullptr) return app::kFailed;
  long value = 0;
  AnsiBuffer attribute(kTextSize), drive(kTextSize), third(kTextSize), type(kTextSize), command(kTextSize);
  const long result =
      getDriveInfo_(number, &value, attribute.Data(), drive.Data(), third.Data(), type.Data(), command.Data());
  if (result == app::kFailed) return app::kFailed;
  record = {attribute.Text(), drive.Text(), third.Text(), type.Text(), command.Text()};
  return result;
}

void QxNetDBLibrary::Close() {
  if (close_ != nullptr) close_();
}

}  // namespace windows
