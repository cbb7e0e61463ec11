// The host's three closed libraries: the path table and the registry (QX32.dll), the system configuration database
// (QX32lib.dll) and the network configuration database (QXNetDB.dll).
//
// All texts are UTF-8 here; the libraries themselves speak the system's code page. A library or an export that is
// missing answers like a failed call. What a failed call leaves alone keeps the value it had.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "base/Outcome.h"

namespace host {

class QX32 {
 public:
  virtual ~QX32() = default;

  /// Sizes, in characters, of the buffers that the host reserves for a value; what does not fit is cut.
  static constexpr std::size_t kPathEntrySize = 512;
  static constexpr std::size_t kSystemEntrySize = 256;

  /// `_QXGetString@8`: reads the path-table entry `name` into a buffer of `capacity` characters. `value` is the text
  /// before the buffer's first NUL. Failed unless the library answers 0.
  virtual base::Outcome GetString(const std::string& name, std::size_t capacity, std::string& value) = 0;

  /// `_QXRegGetKeySZ@8`: reads the text value `name` below the host's registry key; a leading "\" and sub-keys
  /// separated by "\" are the library's to resolve. Failed only when the library answers -1.
  virtual base::Outcome RegGetKeySZ(const std::string& name, std::string& value) = 0;

  /// `_QXRegGetKeyDWORD@8`: likewise for a 32-bit number.
  virtual base::Outcome RegGetKeyDWORD(const std::string& name, std::uint32_t& value) = 0;

  /// `_QXRegSetKeySZ@8` and `_QXRegSetKeyDWORD@8`: write a value. Failed when the library answers -1.
  virtual base::Outcome RegSetKeySZ(const std::string& name, const std::string& value) = 0;
  virtual base::Outcome RegSetKeyDWORD(const std::string& name, std::uint32_t value) = 0;

  /// `_QXGetHostname@4` (16 characters) and `_QXGetSoftwareVersion@4` (128 characters). Neither reports a failure;
  /// the text is then empty.
  virtual std::string GetHostname() = 0;
  virtual std::string GetSoftwareVersion() = 0;
};

/// Start-up reads one value from the system configuration database. Each call has failed when the library answers -1.
class QX32lib {
 public:
  virtual ~QX32lib() = default;

  /// `QXSysDBConnect`: opens the database; `connection` is the path-table entry "SysMasterDB".
  virtual base::Outcome SysDBConnect(const std::string& connection) = 0;

  /// `QXSysDBReadszValue`: reads the text `name` of `group`, cut at its first NUL.
  virtual base::Outcome SysDBReadszValue(const std::string& group, const std::string& name, std::string& value) = 0;

  /// `QXSysDBClose`.
  virtual base::Outcome SysDBClose() = 0;
};

/// One equipment entry of kind "MEDIA". Each text comes from a buffer of 255 characters and is cut at its first NUL.
struct MediaRecord {
  std::string attribute;        ///< "WRITABLE" for a drive that backups may go to
  std::string drive;            ///< drive letter or path
  std::string reserved;         ///< not used by this program
  std::string preparationType;  ///< "APPLICATION", "STANDARD" or "NONE"
  std::string programCommand;   ///< command line of the media program
};

/// The network configuration database knows the media drives.
class QXNetDB {
 public:
  virtual ~QXNetDB() = default;

  /// `QXNetDBConnect`: opens the database at `location`, the path-table entry "NetConfigDB". Failed unless the library
  /// answers 0.
  virtual base::Outcome Connect(const std::string& location) = 0;

  /// `QXNetDBGetEquip`: the equipment numbers of `kind`, in the database's order. Failed when the library answers -1.
  virtual base::Outcome GetEquip(const std::string& kind, std::vector<std::int32_t>& numbers) = 0;

  /// `QXNetDBGetDriveInfo`: the record of one equipment number. Failed when the library answers -1.
  virtual base::Outcome GetDriveInfo(std::int32_t number, MediaRecord& record) = 0;

  /// `QXNetDBClose`: also called after a failed `Connect`.
  virtual void Close() = 0;
};

}  // namespace host
