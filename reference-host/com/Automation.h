// What the host's COM objects share: reference counting, late-bound names without a type library, and values.
#pragma once

#include <oaidl.h>

#include <atomic>
#include <cstdint>
#include <string>

#include "com/Server.h"

namespace reference {

/// Base of every object. A new one has one reference, which is its maker's.
class DispatchObject : public IDispatch {
 public:
  DispatchObject() = default;
  DispatchObject(const DispatchObject&) = delete;
  DispatchObject& operator=(const DispatchObject&) = delete;

  STDMETHODIMP QueryInterface(REFIID interfaceId, void** object) override;
  STDMETHODIMP_(ULONG) AddRef() override;
  STDMETHODIMP_(ULONG) Release() override;
  STDMETHODIMP GetTypeInfoCount(UINT* count) override;
  STDMETHODIMP GetTypeInfo(UINT index, LCID locale, ITypeInfo** info) override;
  STDMETHODIMP GetIDsOfNames(REFIID reserved, LPOLESTR* names, UINT count, LCID locale, DISPID* ids) override;

 protected:
  virtual ~DispatchObject() = default;

  /// The ID of the member of that name, upper and lower case alike; DISPID_UNKNOWN when there is none.
  virtual DISPID IdOf(const wchar_t* name) const = 0;

 private:
  ServerUse use_;
  std::atomic<ULONG> references_{1};
};

/// Whether two names are the same but for upper and lower case.
bool SameName(const wchar_t* one, const wchar_t* other);

/// S_OK unless an argument is passed by its name: only a property's new value may be, where `writes` one.
HRESULT CheckNamedArguments(const DISPPARAMS& parameters, bool writes);

/// Lets the caller's script see a failure as an error with a description. `exception` may be null.
HRESULT RaiseError(EXCEPINFO* exception, const wchar_t* source, const std::wstring& description, HRESULT code);

/// Convert whatever Automation can; DISP_E_PARAMNOTOPTIONAL for an argument that was left out. Texts are UTF-8.
HRESULT ReadNumber(const VARIANT& argument, std::int32_t& number);
HRESULT ReadText(const VARIANT& argument, std::string& text);

/// Fill an empty value. A text fails with E_OUTOFMEMORY.
void SetNumber(VARIANT& value, std::int32_t number);
HRESULT SetText(VARIANT& value, const std::string& text);
/// A text of Automation's own, to be freed by its owner; null when memory is short.
BSTR NewText(const std::string& text);

}  // namespace reference
