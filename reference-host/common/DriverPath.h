// File names as the ODBC driver wants them.
#pragma once

#include <string>

namespace reference {

/// The name by which the database driver opens the Windows path `path`. On the demonstration machine
/// the driver is a library of the system below Wine and knows no drive letters; where Wine is absent,
/// and for a path in a folder that does not exist, the path itself.
std::string DriverPath(const std::string& path);

}  // namespace reference
