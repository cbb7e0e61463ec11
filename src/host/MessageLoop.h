// The user interface's event queue.
#pragma once

namespace host {

class MessageLoop {
 public:
  virtual ~MessageLoop() = default;
  /// Serves every event that is waiting and returns; never waits for one.
  virtual void Yield() = 0;
};

}  // namespace host
