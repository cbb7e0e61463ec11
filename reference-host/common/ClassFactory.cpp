// The class factory of the host's COM servers.
#include "common/ClassFactory.h"

#include <atomic>
#include <new>
#include <utility>

#include "common/ServerUse.h"

namespace reference {
namespace {

class ClassFactory final : public IClassFactory {
 public:
  explicit ClassFactory(std::function<IUnknown*()> create) : create_(std::move(create)) {}
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
      IUnknown* const created = create_();
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
  std::function<IUnknown*()> create_;
};

}  // namespace

HRESULT MakeClassFactory(std::function<IUnknown*()> create, REFIID interfaceId, void** factory) {
  auto* const made = new (std::nothrow) ClassFactory(std::move(create));
  if (!made) return E_OUTOFMEMORY;
  const HRESULT result = made->QueryInterface(interfaceId, factory);
  made->Release();
  return result;
}

}  // namespace reference
