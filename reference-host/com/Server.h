// An in-process COM server of the host: its classes, and what keeps it loaded. The exports that COM and regsvr32 call
// stand in Server.cpp, once for all servers.
#pragma once

#include <objbase.h>

#include <span>

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

/// A class that programs ask for by its name.
struct ServedClass {
  const wchar_t* programId;
  CLSID classId;
  /// Makes an object with one reference, which is the caller's; throws std::bad_alloc.
  IUnknown* (*create)();
};

struct Server {
  std::span<const ServedClass> classes;
  /// Registers under Wine alone: a real machine has real classes of these names, which other programs use and a
  /// stand-in must never displace.
  bool demonstrationMachinesOnly = false;
};

/// What this server offers. Each server defines it once, beside its list of classes.
const Server& ThisServer();

/// Registers every class below HKEY_LOCAL_MACHINE\Software\Classes with this DLL's own path, and remembers which class
/// had its name before. SELFREG_E_CLASS when the registry refuses, which without administrator's rights it does.
HRESULT RegisterClasses(const Server& server);

/// Removes what RegisterClasses wrote, and gives the names back to the classes that had them. Entries that are not
/// there count as removed.
HRESULT UnregisterClasses(const Server& server);

}  // namespace reference
