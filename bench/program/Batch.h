// The external commands of one backup and one restore, run by one batch file: what the program is measured against.
#pragma once

#include <string>

#include "operator/Workstation.h"

namespace bench {

/// Where the batch file keeps what it gathers, and where both put the set. The set's folder exists.
inline const endtoend::fs::path kWork = L"C:\\Bench";
inline constexpr char kSet[] = "E:\\Set\\";

/// The commands that the program starts for the patient data, in its order.
extern const char kBackupCommands[];
extern const char kRestoreCommands[];

/// A clock in seconds.
double Seconds();

/// Writes `commands` into a batch file and runs it hidden and silent. How many seconds it took.
double TimeBatch(const std::string& commands);

}  // namespace bench
