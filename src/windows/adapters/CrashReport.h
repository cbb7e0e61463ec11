// What a failure leaves that nothing in the program handles: a dump, an entry in the event log, and the end that the
// failure would have had anyway.
#pragma once

#include <string>

namespace windows {

/// From here to the end of the process, an unhandled failure writes a minidump "BackupUtility.dmp", over an older one,
/// into the folder that `folder` then names (UTF-8; the object must live as long as the process), or into the temporary
/// folder where that is empty or cannot be written; and an error into Windows' event log Application, under the source
/// QXBackupUtility, which names the failure and the dump. Then the system goes on with the failure as ever.
///
/// The dump has the threads' call stacks and the modules, and of the memory no text: neither patients nor passwords.
void ReportCrashes(const std::string& folder);

}  // namespace windows
