// The exports of the host's COM servers, their class factory, and the count of what keeps a server loaded.
#include "com/Server.h"

#include <atomic>
#include <new>

namespace reference {
namespace {

// One number per loaded server: COM asks the DLL as a whole, not an object.
std::atomic<long> uses{0};

}  // namespace

ServerUse::ServerUse() {
  ++uses;
}
ServerUse::~ServerUse() {
  --uses;
}

void ServerUse::Lock(bool lock) {
  uses += lock ? 1 : -1;
}

bool ServerUse::Any() {
  return uses != 0;
}

namespace {

class ClassFactory final : public IClassFactory {
 public:
  explicit ClassFactory(const ServedClass& served) : served_(served) {}
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
      IUnknown* const created = served_.create();
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
  const ServedClass& served_;
};

}  // namespace
}  // namespace reference

STDAPI DllGetClassObject(REFCLSID classId, REFIID interfaceId, void** object) {
  if (!object) return E_POINTER;
  *object = nullptr;
  for (const reference::ServedClass& served : reference::ThisServer().classes) {
    if (served.classId != classId) continue;
    auto* const factory = new (std::nothrow) reference::ClassFactory(served);
    if (!factory) return E_OUTOFMEMORY;
    const HRESULT result = factory->QueryInterface(interfaceId, object);
    factory->Release();
    return result;
  }
  return CLASS_E_CLASSNOTAVAILABLE;
}

STDAPI DllCanUnloadNow() {
  return reference::ServerUse::Any() ? S_FALSE : S_OK;
}

STDAPI DllRegisterServer() {
  return reference::RegisterClasses(reference::ThisServer());
}

STDAPI DllUnregisterServer() {
  return reference::UnregisterClasses(reference::ThisServer());
}
