// The in-process server's exports: class objects, unloading, registration.

#include <objbase.h>

#include <new>

#include "components/ComponentTable.h"
#include "components/Object.h"
#include "components/Registration.h"
#include "components/ServerUse.h"

namespace components {
namespace {

class ClassFactory final : public IClassFactory {
 public:
  explicit ClassFactory(const ComponentEntry& entry) : entry_(entry) {}
  ClassFactory(const ClassFactory&) = delete;
  ClassFactory& operator=(const ClassFactory&) = delete;

  STDMETHODIMP QueryInterface(REFIID interfaceId, void** object) override {
    if (!object) return E_POINTER;
    const bool known = interfaceId == IID_IUnknown || interfaceId == IID_IClassFactory;
    *object = known ? this : nullptr;
    if (!known) return E_NOINTERFACE;
    AddRef();
    return S_OK;
  }

  STDMETHODIMP_(ULONG) AddRef() override { return ++references_; }

  STDMETHODIMP_(ULONG) Release() override {
    const ULONG left = --references_;
    if (left == 0) delete this;
    return left;
  }

  STDMETHODIMP CreateInstance(IUnknown* outer, REFIID interfaceId, void** object) override {
    if (!object) return E_POINTER;
    *object = nullptr;
    if (outer) return CLASS_E_NOAGGREGATION;
    try {
      Object* created = new Object(entry_.create());
      const HRESULT result = created->QueryInterface(interfaceId, object);
      created->Release();
      return result;
    } catch (const std::bad_alloc&) {
      return E_OUTOFMEMORY;
    }
  }

  STDMETHODIMP LockServer(BOOL lock) override {
    ServerUse::Lock(lock != FALSE);
    return S_OK;
  }

 private:
  ~ClassFactory() = default;

  ServerUse use_;
  std::atomic<ULONG> references_{1};
  const ComponentEntry& entry_;
};

}  // namespace
}  // namespace components

STDAPI DllGetClassObject(REFCLSID classId, REFIID interfaceId, void** object) {
  if (!object) return E_POINTER;
  *object = nullptr;
  for (const components::ComponentEntry& entry : components::ComponentTable()) {
    if (entry.classId != classId) continue;
    auto* factory = new (std::nothrow) components::ClassFactory(entry);
    if (!factory) return E_OUTOFMEMORY;
    const HRESULT result = factory->QueryInterface(interfaceId, object);
    factory->Release();
    return result;
  }
  return CLASS_E_CLASSNOTAVAILABLE;
}

STDAPI DllCanUnloadNow() {
  return components::ServerUse::Any() ? S_FALSE : S_OK;
}

STDAPI DllRegisterServer() {
  return components::RegisterAll();
}

STDAPI DllUnregisterServer() {
  return components::UnregisterAll();
}
