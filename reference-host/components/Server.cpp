// The in-process server's exports: class objects, unloading, registration.

#include "common/ClassFactory.h"
#include "common/ServerUse.h"
#include "components/ComponentTable.h"
#include "components/Object.h"
#include "components/Registration.h"

STDAPI DllGetClassObject(REFCLSID classId, REFIID interfaceId, void** object) {
  if (!object) return E_POINTER;
  *object = nullptr;
  for (const components::ComponentEntry& entry : components::ComponentTable()) {
    if (entry.classId != classId) continue;
    return reference::MakeClassFactory([&entry] { return new components::Object(entry.create()); }, interfaceId,
                                       object);
  }
  return CLASS_E_CLASSNOTAVAILABLE;
}

STDAPI DllCanUnloadNow() {
  return reference::ServerUse::Any() ? S_FALSE : S_OK;
}

STDAPI DllRegisterServer() {
  return components::RegisterAll();
}

STDAPI DllUnregisterServer() {
  return components::UnregisterAll();
}
