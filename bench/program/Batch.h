// The external commands of one backup and one restore, run by one batch file: what the program is measured against.
#pragma once

#include <string>

#include "operator/Workstation.h"

namespace bench {

/// Where the program and the batch file put their sets. The batch file's folder exists.
inline constexpr char kSet[] = "E:\\Set\\";
inline constexpr char kBatchSet[] = "E:\\Batch\\";

/// The commands that the program starts for the patient data, in its order, and a comparison of the set with what was
/// gathered, which the program makes itself. %STAGING% is the staging folder, %COMPARE% the program that compares.
extern const char kBackupCommands[];
extern const char kRestoreCommands[];

/// A clock in seconds.
double Seconds();

/// Comes before anything is timed: memory and processors that were at work a moment ago are quicker.
void Rest();

/// Writes `commands` into a batch file and runs it hidden and silent. How many seconds it took. Throws when it ends
/// with another exit code than 0.
double TimeBatch(const std::string& commands);

}  // namespace bench
