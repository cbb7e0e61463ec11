// The in-process server's exports: class objects, unloading, registration.
#include <objbase.h>

#include <new>

#include "components/ServerUse.h"
#include "data-access/Classes.h"
#include "data-access/Registration.h"

namespace dataaccess {

namespace {

class ClassFactory final : public IClassFactory {
 public:
  explicit ClassFactory(const ServedClass& served) : served_(served) {}
  ClassFactory(const ClassFactory&) = delete;
  ClassFactory& operator=(const ClassFactory&) = delete;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
    if (!object) return E_POINTER;
    *object = nullptr;
    if (id != IID_IUnknown && id != IID_IClassFactory) return E_NOINTERFACE;
    *object = this;
    AddRef();
    return S_OK;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
  ULONG STDMETHODCALLTYPE Release() override {
    const ULONG left = --references_;
    if (left == 0) delete this;
    return left;
  }

  HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID id, void** object) override {
    if (!object) return E_POINTER;
    *object = nullptr;
    if (outer) return CLASS_E_NOAGGREGATION;
    try {
      AutomationObject* const created = served_.create();
      const HRESULT result = created->QueryInterface(id, object);
      created->Release();
      return result;
    } catch (const std::bad_alloc&) {
      return E_OUTOFMEMORY;
    }
  }
  HRESULT STDMETHODCALLTYPE LockServer(BOOL lock) override {
    components::ServerUse::Lock(lock != FALSE);
    return S_OK;
  }

 private:
  ~ClassFactory() = default;

  const ServedClass& served_;
  std::atomic<ULONG> references_{1};
  components::ServerUse use_;
};

}  // namespace

}  // namespace dataaccess

STDAPI DllGetClassObject(REFCLSID classId, REFIID interfaceId, void** object) {
  if (!object) return E_POINTER;
  *object = nullptr;
  for (const dataaccess::ServedClass& served : dataaccess::ServedClasses()) {
    if (served.id != classId) continue;
    auto* const factory = new (std::nothrow) dataaccess::ClassFactory(served);
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
  return dataaccess::RegisterClasses();
}
STDAPI DllUnregisterServer() {
  return dataaccess::UnregisterClasses();
}
