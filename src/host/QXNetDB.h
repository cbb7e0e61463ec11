// QXNetDB.dll: the network configuration database, which knows the media drives.
//
// Texts are UTF-8. A missing library or export answers -1.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace host {

/// One equipment entry of kind "MEDIA". Each text comes from a buffer of 255
/// characters and is cut at its first NUL.
struct MediaRecord {
  std::string attribute;        ///< "WRITABLE" for a drive that backups may go to
  std::string drive;            ///< drive letter or path
  std::string reserved;         ///< not used by this program
  std::string preparationType;  ///< "APPLICATION", "STANDARD" or "NONE"
  std::string programCommand;   ///< command line of the media program
};

class QXNetDB {
 public:
  virtual ~QXNetDB() = default;

  /// `QXNetDBConnect`: opens the database at `location`, the path-table entry
  /// "NetConfigDB". Returns 0 on success.
  virtual std::int32_t Connect(const std::string& location) = 0;

  /// `QXNetDBGetEquip`: the equipment numbers of `kind`, in the database's order.
  /// Returns their count, -1 on failure.
  virtual std::int32_t GetEquip(const std::string& kind, std::vector<std::int32_t>& numbers) = 0;

  /// `QXNetDBGetDriveInfo`: the record of one equipment number. Returns -1 on failure.
  virtual std::int32_t GetDriveInfo(std::int32_t number, MediaRecord& record) = 0;

  /// `QXNetDBClose`: also called after a failed `Connect`.
  virtual void Close() = 0;
};

}  // namespace host
