// What every job works with: the disk, other programs, the log, and the screen that must stay alive meanwhile.
#pragma once

#include "app/Application.h"

namespace work {

/// References only: whoever hands them out keeps the objects alive.
struct Tools {
  host::FileSystem& files;
  host::Processes& processes;
  host::MessageLoop& messageLoop;
  app::OperationLog& log;
};

inline Tools ToolsOf(app::Application& application) {
  const host::Host& host = application.host;
  return {host.files, host.processes, host.messageLoop, application.log};
}

}  // namespace work
