#include "components/Object.h"

#include <oleauto.h>

#include <algorithm>
#include <exception>

#include "windows/adapters/Text.h"

namespace components {
namespace {

bool SameName(const std::wstring& name, LPCOLESTR wanted) {
  return CompareStringOrdinal(name.c_str(), -1, wanted, -1, TRUE) == CSTR_EQUAL;
}

// A method answers to a property read too: with arguments the two look alike to a caller, and
// some write the one for the other.
bool Answers(const Routine& routine, WORD callKind) {
  const int kinds = routine.callKind == DISPATCH_METHOD ? DISPATCH_METHOD | DISPATCH_PROPERTYGET : DISPATCH_PROPERTYPUT;
  return (callKind & kinds) != 0;
}

HRESULT CheckNamedArguments(const Routine& routine, const DISPPARAMS& parameters) {
  if (parameters.cNamedArgs == 0) return S_OK;
  const bool propertyValue = routine.callKind == DISPATCH_PROPERTYPUT && parameters.cNamedArgs == 1 &&
                             parameters.rgdispidNamedArgs[0] == DISPID_PROPERTYPUT;
  return propertyValue ? S_OK : DISP_E_NONAMEDARGS;
}

HRESULT Describe(EXCEPINFO* exception, const char* what) {
  if (exception) {
    *exception = {};
    exception->bstrSource = SysAllocString(L"TarsusComponents");
    exception->bstrDescription = SysAllocString(windows::Utf16(what).c_str());
    exception->scode = E_FAIL;
  }
  return DISP_E_EXCEPTION;
}

}  // namespace

STDMETHODIMP Object::QueryInterface(REFIID interfaceId, void** object) {
  if (!object) return E_POINTER;
  const bool known = interfaceId == IID_IUnknown || interfaceId == IID_IDispatch;
  *object = known ? this : nullptr;
  if (!known) return E_NOINTERFACE;
  AddRef();
  return S_OK;
}

STDMETHODIMP_(ULONG) Object::AddRef() {
  return ++references_;
}

STDMETHODIMP_(ULONG) Object::Release() {
  const ULONG left = --references_;
  if (left == 0) delete this;
  return left;
}

STDMETHODIMP Object::GetTypeInfoCount(UINT* count) {
  if (!count) return E_POINTER;
  *count = 0;
  return S_OK;
}

STDMETHODIMP Object::GetTypeInfo(UINT, LCID, ITypeInfo** info) {
  if (info) *info = nullptr;
  return DISP_E_BADINDEX;
}

STDMETHODIMP Object::GetIDsOfNames(REFIID reserved, LPOLESTR* names, UINT count, LCID, DISPID* ids) {
  if (reserved != IID_NULL) return DISP_E_UNKNOWNINTERFACE;
  if (!names || !ids || count == 0) return E_INVALIDARG;
  std::fill(ids, ids + count, DISPID_UNKNOWN);
  const auto& routines = component_->Routines();
  const auto found = std::find_if(routines.begin(), routines.end(),
                                  [&](const Routine& routine) { return SameName(routine.name, names[0]); });
  if (found == routines.end()) return DISP_E_UNKNOWNNAME;
  ids[0] = static_cast<DISPID>(found - routines.begin()) + 1;
  return count == 1 ? S_OK : DISP_E_UNKNOWNNAME;
}

STDMETHODIMP Object::Invoke(DISPID id, REFIID reserved, LCID, WORD callKind, DISPPARAMS* parameters, VARIANT* result,
                            EXCEPINFO* exception, UINT* badArgument) {
  if (reserved != IID_NULL) return DISP_E_UNKNOWNINTERFACE;
  if (!parameters) return E_INVALIDARG;
  const auto& routines = component_->Routines();
  if (id < 1 || static_cast<std::size_t>(id) > routines.size()) return DISP_E_MEMBERNOTFOUND;
  const Routine& routine = routines[static_cast<std::size_t>(id - 1)];
  if (!Answers(routine, callKind)) return DISP_E_MEMBERNOTFOUND;
  if (const HRESULT named = CheckNamedArguments(routine, *parameters); FAILED(named)) return named;
  if (parameters->cArgs != routine.arity) return DISP_E_BADPARAMCOUNT;
  if (result) VariantInit(result);
  try {
    return routine.call(CallArguments(*parameters), result, badArgument);
  } catch (const std::exception& error) {
    return Describe(exception, error.what());
  } catch (...) {
    return Describe(exception, "unknown fault");
  }
}

}  // namespace components
