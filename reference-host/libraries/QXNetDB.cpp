// QXNetDB.dll: reads the network configuration database, which lists the media drives.
#include <algorithm>
#include <cstdlib>

#include "libraries/Calls.h"

namespace {

using namespace reference;

constexpr std::size_t kMostEquipment = 1024;
constexpr std::size_t kTextSize = 255;

long Number(const std::optional<std::string>& cell) {
  return cell ? std::strtol(cell->c_str(), nullptr, 10) : 0;
}

}  // namespace

extern "C" {

long __stdcall QXNetDBConnect(const char* location) noexcept {
  return Connect(location);
}

long __stdcall QXNetDBGetEquip(const char* kind, long* numbers) noexcept {
  if (!Connection() || !kind || !numbers) return kFailed;
  const auto rows =
      Connection()->Run("SELECT EQUIPMENT_NO FROM T_EQUIPMENT WHERE EQUIPMENT_KIND = ? ORDER BY ORDER_NO, EQUIPMENT_NO",
                        {windows::FromCodePage(kind)});
  if (!rows) return kFailed;
  const std::size_t count = std::min(rows->cells.size(), kMostEquipment);
  for (std::size_t i = 0; i < count; ++i) numbers[i] = Number(rows->cells[i][0]);
  return static_cast<long>(count);
}

long __stdcall QXNetDBGetDriveInfo(long number, long* value, char* attribute, char* drive, char* third, char* type,
                                   char* command) noexcept {
  if (!Connection() || !value || !attribute || !drive || !third || !type || !command) return kFailed;
  const auto rows = Connection()->Run(
      "SELECT DRIVE_ATTRIBUTE, DRIVE, DRIVE_NAME, PREPARATION_TYPE, PROGRAM_COMMAND, DRIVE_VALUE FROM T_DRIVE "
      "WHERE EQUIPMENT_NO = ?",
      {std::to_string(number)});
  if (!rows || rows->cells.empty()) return kFailed;
  const auto& cells = rows->cells[0];
  char* const texts[] = {attribute, drive, third, type, command};
  for (std::size_t i = 0; i < std::size(texts); ++i) FillBuffer(texts[i], kTextSize, cells[i].value_or(std::string()));
  *value = Number(cells[5]);
  return kDone;
}

long __stdcall QXNetDBClose() noexcept {
  return Disconnect();
}

}  // extern "C"
