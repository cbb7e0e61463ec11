// The host's removable media drives: which one backups go to, and how its media are prepared.
#pragma once

#include <string>

#include "app/Application.h"

namespace media {

/// The drive of the first writable media entry of the network configuration database, whose
/// preparation type and program command go into `MediaAppType` and `MediaAppCommand`. Empty when
/// there is none or the database cannot be read; an unknown path-table entry shows message 60326, a
/// database that cannot be opened 60323.
std::string GetDefaultMediaDrive(app::Application& application);

/// Prepares (formats) the medium in `drive` the way `MediaAppType` says, and waits for it. A failure
/// of the "STANDARD" way shows message 60382, "NONE" shows 63380; both are false. A type that is none
/// of the three passes without anything being done. False also when the media program cannot be started.
bool PrepareMedia(app::Application& application, const std::string& drive);

}  // namespace media
