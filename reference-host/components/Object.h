// A component as a COM object: reference counting and IDispatch without a type library.
#pragma once

#include <oaidl.h>

#include <atomic>
#include <memory>

#include "common/ServerUse.h"
#include "components/Component.h"

namespace components {

class Object final : public IDispatch {
 public:
  /// The new object has one reference, which belongs to the caller.
  explicit Object(std::unique_ptr<Component> component) : component_(std::move(component)) {}
  Object(const Object&) = delete;
  Object& operator=(const Object&) = delete;

  STDMETHODIMP QueryInterface(REFIID interfaceId, void** object) override;
  STDMETHODIMP_(ULONG) AddRef() override;
  STDMETHODIMP_(ULONG) Release() override;

  STDMETHODIMP GetTypeInfoCount(UINT* count) override;
  STDMETHODIMP GetTypeInfo(UINT index, LCID locale, ITypeInfo** info) override;
  STDMETHODIMP GetIDsOfNames(REFIID reserved, LPOLESTR* names, UINT count, LCID locale, DISPID* ids) override;
  /// Arguments cannot be named, but for the value of a property. A fault inside a component
  /// reaches the caller as DISP_E_EXCEPTION with a description.
  STDMETHODIMP Invoke(DISPID id, REFIID reserved, LCID locale, WORD callKind, DISPPARAMS* parameters, VARIANT* result,
                      EXCEPINFO* exception, UINT* badArgument) override;

 private:
  ~Object() = default;

  reference::ServerUse use_;
  std::atomic<ULONG> references_{1};
  std::unique_ptr<Component> component_;
};

}  // namespace components
