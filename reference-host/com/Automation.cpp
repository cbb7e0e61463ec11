// Late-bound objects and their values.
#include "com/Automation.h"

#include <oleauto.h>

#include <algorithm>

#include "windows/adapters/Text.h"

namespace reference {
namespace {

// A VARIANT of our own that a conversion writes into.
class Converted {
 public:
  Converted() { VariantInit(&value_); }
  ~Converted() { VariantClear(&value_); }
  Converted(const Converted&) = delete;
  Converted& operator=(const Converted&) = delete;

  HRESULT From(const VARIANT& argument, VARTYPE kind) {
    if (argument.vt == VT_ERROR && argument.scode == DISP_E_PARAMNOTFOUND) return DISP_E_PARAMNOTOPTIONAL;
    // The call's header wants a writable argument; it writes to none but the target.
    return VariantChangeType(&value_, const_cast<VARIANT*>(&argument), 0, kind);
  }
  const VARIANT& operator*() const { return value_; }

 private:
  VARIANT value_;
};

}  // namespace

STDMETHODIMP DispatchObject::QueryInterface(REFIID interfaceId, void** object) {
  if (!object) return E_POINTER;
  const bool known = interfaceId == IID_IUnknown || interfaceId == IID_IDispatch;
  *object = known ? static_cast<IDispatch*>(this) : nullptr;
  if (!known) return E_NOINTERFACE;
  AddRef();
  return S_OK;
}

STDMETHODIMP_(ULONG) DispatchObject::AddRef() {
  return ++references_;
}

STDMETHODIMP_(ULONG) DispatchObject::Release() {
  const ULONG left = --references_;
  if (left == 0) delete this;
  return left;
}

STDMETHODIMP DispatchObject::GetTypeInfoCount(UINT* count) {
  if (!count) return E_POINTER;
  *count = 0;
  return S_OK;
}

STDMETHODIMP DispatchObject::GetTypeInfo(UINT, LCID, ITypeInfo** info) {
  if (info) *info = nullptr;
  return DISP_E_BADINDEX;
}

STDMETHODIMP DispatchObject::GetIDsOfNames(REFIID reserved, LPOLESTR* names, UINT count, LCID, DISPID* ids) {
  if (reserved != IID_NULL) return DISP_E_UNKNOWNINTERFACE;
  if (!names || !ids || count == 0) return E_INVALIDARG;
  std::fill(ids, ids + count, DISPID_UNKNOWN);
  ids[0] = IdOf(names[0]);
  return count == 1 && ids[0] != DISPID_UNKNOWN ? S_OK : DISP_E_UNKNOWNNAME;
}

bool SameName(const wchar_t* one, const wchar_t* other) {
  return CompareStringOrdinal(one, -1, other, -1, TRUE) == CSTR_EQUAL;
}

HRESULT CheckNamedArguments(const DISPPARAMS& parameters, bool writes) {
  if (parameters.cNamedArgs == 0) return S_OK;
  const bool newValue = writes && parameters.cNamedArgs == 1 && parameters.rgdispidNamedArgs[0] == DISPID_PROPERTYPUT;
  return newValue ? S_OK : DISP_E_NONAMEDARGS;
}

HRESULT RaiseError(EXCEPINFO* exception, const wchar_t* source, const std::wstring& description, HRESULT code) {
  if (exception) {
    *exception = {};
    exception->bstrSource = SysAllocString(source);
    exception->bstrDescription = SysAllocString(description.c_str());
    exception->scode = code;
  }
  return DISP_E_EXCEPTION;
}

HRESULT ReadNumber(const VARIANT& argument, std::int32_t& number) {
  Converted converted;
  const HRESULT result = converted.From(argument, VT_I4);
  if (SUCCEEDED(result)) number = (*converted).lVal;
  return result;
}

HRESULT ReadText(const VARIANT& argument, std::string& text) {
  Converted converted;
  const HRESULT result = converted.From(argument, VT_BSTR);
  if (SUCCEEDED(result)) {
    const BSTR value = (*converted).bstrVal;
    text = windows::Utf8(std::wstring_view(value ? value : L"", SysStringLen(value)));
  }
  return result;
}

void SetNumber(VARIANT& value, std::int32_t number) {
  value.vt = VT_I4;
  value.lVal = number;
}

HRESULT SetText(VARIANT& value, const std::string& text) {
  const BSTR allocated = NewText(text);
  if (!allocated) return E_OUTOFMEMORY;
  value.vt = VT_BSTR;
  value.bstrVal = allocated;
  return S_OK;
}

BSTR NewText(const std::string& text) {
  const std::wstring wide = windows::Utf16(text);
  return SysAllocStringLen(wide.data(), static_cast<UINT>(wide.size()));
}

}  // namespace reference
