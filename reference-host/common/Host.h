// What the host's libraries, components and programs share: results, registry key, path table.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace reference {

/// Results of the libraries' calls and of most of the components' routines.
inline constexpr std::int32_t kDone = 0;
inline constexpr std::int32_t kFailed = -1;

/// The host's key below HKEY_LOCAL_MACHINE.
inline constexpr wchar_t kHostKey[] = L"SOFTWARE\\Orvantis\\TARSUS";

/// A text value below the host's key. `name` may begin with "\" and may name sub-keys
/// ("BackupUtility\Font"). UTF-16 inside, UTF-8 here.
std::optional<std::string> ReadRegistryText(const std::string& name);
std::optional<unsigned long> ReadRegistryNumber(const std::string& name);
bool WriteRegistryText(const std::string& name, const std::string& value);
bool WriteRegistryNumber(const std::string& name, unsigned long value);

/// An entry of the path table, Directory.ini in the folder "System" below "PathAppl".
/// Read anew at each call, so that an administrator's change counts at once.
std::optional<std::string> ReadPathEntry(const std::string& name);

/// The folder of the running program, with a "\" at the end; empty when its path is too long.
std::wstring OwnFolder();

}  // namespace reference
