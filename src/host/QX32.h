// QX32.dll: the host's path table and its part of the registry.
//
// All texts are UTF-8 here; the library itself speaks the system's code page.
// A library or an export that is missing answers like a failed call: -1 for
// the calls that report, an empty text for the two that do not.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace host {

class QX32 {
 public:
  virtual ~QX32() = default;

  /// Sizes, in characters, of the buffers that the host reserves for a value;
  /// what does not fit is cut.
  static constexpr std::size_t kPathEntrySize = 512;
  static constexpr std::size_t kSystemEntrySize = 256;

  /// `_QXGetString@8`: reads the path-table entry `name` into a buffer of
  /// `capacity` characters. `value` is the text before the buffer's first NUL
  /// and is left alone unless the result is 0.
  /// Returns 0 when found, -1 on failure; callers take any other answer as a failure too.
  virtual std::int32_t GetString(const std::string& name, std::size_t capacity, std::string& value) = 0;

  /// `_QXRegGetKeySZ@8`: reads the text value `name` below the host's registry
  /// key; a leading "\" and sub-keys separated by "\" are the library's to resolve.
  /// Returns -1 on failure, and then leaves `value` alone.
  virtual std::int32_t RegGetKeySZ(const std::string& name, std::string& value) = 0;

  /// `_QXRegGetKeyDWORD@8`: likewise for a 32-bit number.
  virtual std::int32_t RegGetKeyDWORD(const std::string& name, std::uint32_t& value) = 0;

  /// `_QXRegSetKeySZ@8` and `_QXRegSetKeyDWORD@8`: write a value. Return -1 on failure.
  virtual std::int32_t RegSetKeySZ(const std::string& name, const std::string& value) = 0;
  virtual std::int32_t RegSetKeyDWORD(const std::string& name, std::uint32_t value) = 0;

  /// `_QXGetHostname@4` (16 characters) and `_QXGetSoftwareVersion@4` (128
  /// characters). Neither reports a failure; the text is then empty.
  virtual std::string GetHostname() = 0;
  virtual std::string GetSoftwareVersion() = 0;
};

}  // namespace host
