// Whether the component server is in use, which decides whether COM may unload it.
#pragma once

namespace reference {

/// Keeps the server loaded for as long as it lives.
class ServerUse {
 public:
  ServerUse();
  ~ServerUse();
  ServerUse(const ServerUse&) = delete;
  ServerUse& operator=(const ServerUse&) = delete;

  /// The same for IClassFactory::LockServer, whose calls come in pairs.
  static void Lock(bool lock);
  static bool Any();
};

}  // namespace reference
