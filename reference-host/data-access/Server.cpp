// The in-process server's exports: class objects, unloading, registration.

#include "common/ClassFactory.h"
#include "common/ServerUse.h"
#include "data-access/Classes.h"
#include "data-access/Registration.h"

STDAPI DllGetClassObject(REFCLSID classId, REFIID interfaceId, void** object) {
  if (!object) return E_POINTER;
  *object = nullptr;
  for (const dataaccess::ServedClass& served : dataaccess::ServedClasses()) {
    if (served.id == classId) return reference::MakeClassFactory(served.create, interfaceId, object);
  }
  return CLASS_E_CLASSNOTAVAILABLE;
}

STDAPI DllCanUnloadNow() {
  return reference::ServerUse::Any() ? S_FALSE : S_OK;
}

STDAPI DllRegisterServer() {
  return dataaccess::RegisterClasses();
}

STDAPI DllUnregisterServer() {
  return dataaccess::UnregisterClasses();
}
