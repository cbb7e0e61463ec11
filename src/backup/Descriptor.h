// The descriptor BackupInfo.ini that goes with every backup set.
#pragma once

#include <cstdint>
#include <string>

#include "app/Application.h"
#include "app/ResultCodes.h"

namespace backup {

inline constexpr char kDescriptorFile[] = "BackupInfo.ini";
inline constexpr char kVersionFile[] = "BackupVersion.ini";

/// What the label of every backup medium says.
inline constexpr char kVolumeLabel[] = "BACKUP";

/// Writes the descriptor into the staging folder. `diskNumber` is 0 for a set on one medium, else the
/// disk of a split set, from 1: an earlier disk's descriptor is then deleted first, and the archives
/// are those of the archive folder. kFailed when the file cannot be written, the host's version or
/// application is unknown, or a category that is present has no version in the host's version file;
/// what was written until then stays.
app::ResultCode WriteDescriptor(app::Application& application, std::int16_t diskNumber);

/// The host application's name without ".exe": the descriptor's "AppType".
std::string HostApplicationType(const app::Application& application);

}  // namespace backup
