#include "components/Arguments.h"

#include <oleauto.h>

#include "windows/adapters/Text.h"

namespace components {
namespace {

// A VARIANT of our own that a conversion writes into.
class Converted {
 public:
  Converted() { VariantInit(&value_); }
  ~Converted() { VariantClear(&value_); }
  Converted(const Converted&) = delete;
  Converted& operator=(const Converted&) = delete;

  HRESULT From(VARIANTARG& argument, VARTYPE kind) {
    if (argument.vt == VT_ERROR && argument.scode == DISP_E_PARAMNOTFOUND) return DISP_E_PARAMNOTOPTIONAL;
    return VariantChangeType(&value_, &argument, 0, kind);
  }
  const VARIANT& operator*() const { return value_; }

 private:
  VARIANT value_;
};

BSTR NewText(const std::string& text) {
  const std::wstring wide = windows::Utf16(text);
  return SysAllocStringLen(wide.data(), static_cast<UINT>(wide.size()));
}

}  // namespace

HRESULT ReadNumber(VARIANTARG& argument, std::int32_t& number) {
  Converted converted;
  const HRESULT result = converted.From(argument, VT_I4);
  if (SUCCEEDED(result)) number = (*converted).lVal;
  return result;
}

HRESULT ReadText(VARIANTARG& argument, std::string& text) {
  Converted converted;
  const HRESULT result = converted.From(argument, VT_BSTR);
  if (SUCCEEDED(result)) {
    const BSTR value = (*converted).bstrVal;
    text = windows::Utf8(std::wstring_view(value ? value : L"", SysStringLen(value)));
  }
  return result;
}

HRESULT CheckResult(const VARIANTARG& argument, VARTYPE kind) {
  const bool fits = argument.vt == (VT_BYREF | kind) || argument.vt == (VT_BYREF | VT_VARIANT);
  return fits ? S_OK : DISP_E_TYPEMISMATCH;
}

HRESULT StoreNumber(VARIANTARG& argument, std::int32_t number) {
  if (argument.vt == (VT_BYREF | VT_I4)) {
    *argument.plVal = number;
    return S_OK;
  }
  VariantClear(argument.pvarVal);
  return ReturnNumber(argument.pvarVal, number);
}

HRESULT StoreText(VARIANTARG& argument, const std::string& text) {
  if (argument.vt != (VT_BYREF | VT_BSTR)) {
    VariantClear(argument.pvarVal);
    return ReturnText(argument.pvarVal, text);
  }
  const BSTR value = NewText(text);
  if (!value) return E_OUTOFMEMORY;
  SysFreeString(*argument.pbstrVal);
  *argument.pbstrVal = value;
  return S_OK;
}

HRESULT ReturnNumber(VARIANT* result, std::int32_t number) {
  if (!result) return S_OK;
  result->vt = VT_I4;
  result->lVal = number;
  return S_OK;
}

HRESULT ReturnText(VARIANT* result, const std::string& text) {
  if (!result) return S_OK;
  const BSTR value = NewText(text);
  if (!value) return E_OUTOFMEMORY;
  result->vt = VT_BSTR;
  result->bstrVal = value;
  return S_OK;
}

}  // namespace components
