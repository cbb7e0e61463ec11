// A component as a COM object, and the results that it stores for its callers.
#include "components/Component.h"

#include <oleauto.h>

#include <algorithm>
#include <exception>

#include "windows/adapters/Text.h"

namespace components {
namespace {

// A method answers to a property read too: with arguments the two look alike to a caller, and
// some write the one for the other.
bool Answers(const Routine& routine, WORD callKind) {
  const int kinds = routine.callKind == DISPATCH_METHOD ? DISPATCH_METHOD | DISPATCH_PROPERTYGET : DISPATCH_PROPERTYPUT;
  return (callKind & kinds) != 0;
}

class Object final : public reference::DispatchObject {
 public:
  explicit Object(std::unique_ptr<Component> component) : component_(std::move(component)) {}

  STDMETHODIMP Invoke(DISPID id, REFIID reserved, LCID, WORD callKind, DISPPARAMS* parameters, VARIANT* result,
                      EXCEPINFO* exception, UINT* badArgument) override {
    if (reserved != IID_NULL) return DISP_E_UNKNOWNINTERFACE;
    if (!parameters) return E_INVALIDARG;
    const auto& routines = component_->Routines();
    if (id < 1 || static_cast<std::size_t>(id) > routines.size()) return DISP_E_MEMBERNOTFOUND;
    const Routine& routine = routines[static_cast<std::size_t>(id - 1)];
    if (!Answers(routine, callKind)) return DISP_E_MEMBERNOTFOUND;
    const HRESULT named = reference::CheckNamedArguments(*parameters, routine.callKind == DISPATCH_PROPERTYPUT);
    if (FAILED(named)) return named;
    if (parameters->cArgs != routine.arity) return DISP_E_BADPARAMCOUNT;
    if (result) VariantInit(result);
    try {
      return routine.call(CallArguments(*parameters), result, badArgument);
    } catch (const std::exception& error) {
      return reference::RaiseError(exception, L"TarsusComponents", windows::Utf16(error.what()), E_FAIL);
    } catch (...) {
      return reference::RaiseError(exception, L"TarsusComponents", L"unknown fault", E_FAIL);
    }
  }

 private:
  ~Object() override = default;

  DISPID IdOf(const wchar_t* name) const override {
    const auto& routines = component_->Routines();
    const auto found = std::ranges::find_if(
        routines, [&](const Routine& routine) { return reference::SameName(routine.name.c_str(), name); });
    return found == routines.end() ? DISPID_UNKNOWN : static_cast<DISPID>(found - routines.begin()) + 1;
  }

  std::unique_ptr<Component> component_;
};

}  // namespace

IUnknown* NewObject(std::unique_ptr<Component> component) {
  return new Object(std::move(component));
}

HRESULT CheckResult(const VARIANTARG& argument, VARTYPE kind) {
  const bool fits = argument.vt == (VT_BYREF | kind) || argument.vt == (VT_BYREF | VT_VARIANT);
  return fits ? S_OK : DISP_E_TYPEMISMATCH;
}

HRESULT StoreNumber(VARIANTARG& argument, std::int32_t number) {
  if (argument.vt == (VT_BYREF | VT_I4)) {
    *argument.plVal = number;
  } else {
    VariantClear(argument.pvarVal);
    reference::SetNumber(*argument.pvarVal, number);
  }
  return S_OK;
}

HRESULT StoreText(VARIANTARG& argument, const std::string& text) {
  if (argument.vt != (VT_BYREF | VT_BSTR)) {
    VariantClear(argument.pvarVal);
    return reference::SetText(*argument.pvarVal, text);
  }
  const BSTR value = reference::NewText(text);
  if (!value) return E_OUTOFMEMORY;
  SysFreeString(*argument.pbstrVal);
  *argument.pbstrVal = value;
  return S_OK;
}

}  // namespace components
