// Late-bound calls: finds members by name, checks the number of arguments, reports failures.
#include "data-access/Automation.h"

#include <algorithm>
#include <new>

#include "windows/adapters/Text.h"

namespace dataaccess {

namespace {

const VARIANT* Follow(const VARIANT& argument) {
  const VARIANT* value = &argument;
  while (value->vt == (VT_BYREF | VT_VARIANT)) value = value->pvarVal;
  return value->vt == VT_ERROR && value->scode == DISP_E_PARAMNOTFOUND ? nullptr : value;
}

/// The caller's argument as another type; false when it cannot be.
bool Convert(const VARIANT* argument, VARTYPE type, VARIANT& converted) {
  VariantInit(&converted);
  // The call's header wants a writable argument; it writes to none but the target.
  return SUCCEEDED(VariantChangeType(&converted, const_cast<VARIANT*>(argument), 0, type));
}

HRESULT Report(const Outcome& outcome, EXCEPINFO* exception) {
  if (!outcome.text) return outcome.code;
  if (exception) {
    *exception = {};
    exception->scode = outcome.code;
    exception->bstrSource = SysAllocString(L"Tarsus data access");
    exception->bstrDescription = SysAllocString(outcome.text);
  }
  return DISP_E_EXCEPTION;
}

bool NamesOnlyTheNewValue(const DISPPARAMS& parameters, bool writes) {
  if (parameters.cNamedArgs == 0) return true;
  return writes && parameters.cNamedArgs == 1 && parameters.rgdispidNamedArgs[0] == DISPID_PROPERTYPUT;
}

}  // namespace

Arguments::Arguments(const DISPPARAMS& parameters) {
  // Automation passes the last argument first.
  for (UINT i = parameters.cArgs; i > 0; --i) arguments_.push_back(Follow(parameters.rgvarg[i - 1]));
}

bool Arguments::Has(std::size_t index) const {
  return At(index) != nullptr;
}

const VARIANT* Arguments::At(std::size_t index) const {
  return index < arguments_.size() ? arguments_[index] : nullptr;
}

bool Arguments::Text(std::size_t index, std::string& text) const {
  if (!Has(index)) return true;
  VARIANT converted;
  if (!Convert(At(index), VT_BSTR, converted)) return false;
  const BSTR value = converted.bstrVal;
  text = windows::Utf8(std::wstring_view(value ? value : L"", SysStringLen(value)));
  VariantClear(&converted);
  return true;
}

bool Arguments::Number(std::size_t index, long& number) const {
  if (!Has(index)) return true;
  VARIANT converted;
  if (!Convert(At(index), VT_I4, converted)) return false;
  number = converted.lVal;
  return true;
}

HRESULT AutomationObject::QueryInterface(REFIID id, void** object) {
  if (!object) return E_POINTER;
  *object = nullptr;
  if (id != IID_IUnknown && id != IID_IDispatch) return E_NOINTERFACE;
  *object = static_cast<IDispatch*>(this);
  AddRef();
  return S_OK;
}

ULONG AutomationObject::AddRef() {
  return ++references_;
}

ULONG AutomationObject::Release() {
  const ULONG left = --references_;
  if (left == 0) delete this;
  return left;
}

HRESULT AutomationObject::GetTypeInfoCount(UINT* count) {
  if (!count) return E_POINTER;
  *count = 0;
  return S_OK;
}

HRESULT AutomationObject::GetTypeInfo(UINT, LCID, ITypeInfo** info) {
  if (info) *info = nullptr;
  return DISP_E_BADINDEX;
}

HRESULT AutomationObject::GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) {
  if (!names || !ids || count == 0) return E_INVALIDARG;
  std::fill(ids, ids + count, DISPID_UNKNOWN);
  const auto found = std::ranges::find_if(members_, [&](const Member& member) {
    return CompareStringOrdinal(member.name, -1, names[0], -1, TRUE) == CSTR_EQUAL;
  });
  if (found == members_.end()) return DISP_E_UNKNOWNNAME;
  ids[0] = found->id;
  return count == 1 ? S_OK : DISP_E_UNKNOWNNAME;
}

const Member* AutomationObject::Find(DISPID id, WORD kind) const {
  const auto found = std::ranges::find_if(
      members_, [&](const Member& member) { return member.id == id && (member.kinds & kind) != 0; });
  return found == members_.end() ? nullptr : &*found;
}

HRESULT AutomationObject::Invoke(DISPID id, REFIID, LCID, WORD kind, DISPPARAMS* parameters, VARIANT* result,
                                 EXCEPINFO* exception, UINT*) {
  if (!parameters) return E_INVALIDARG;
  const Member* const member = Find(id, kind);
  if (!member) return DISP_E_MEMBERNOTFOUND;
  const bool writes = member->kinds == DISPATCH_PROPERTYPUT;
  if (!NamesOnlyTheNewValue(*parameters, writes)) return DISP_E_NONAMEDARGS;
  if (parameters->cArgs < member->fewest || parameters->cArgs > member->most) return DISP_E_BADPARAMCOUNT;
  VARIANT value;
  VariantInit(&value);
  Outcome outcome;
  try {
    outcome = Call(id, writes, Arguments(*parameters), value);
  } catch (const std::bad_alloc&) {
    outcome = {E_OUTOFMEMORY};
  }
  if (result && SUCCEEDED(outcome.code)) {
    *result = value;
  } else {
    VariantClear(&value);
  }
  return Report(outcome, exception);
}

void SetText(VARIANT& result, const std::string& utf8) {
  const std::wstring wide = windows::Utf16(utf8);
  result.vt = VT_BSTR;
  result.bstrVal = SysAllocStringLen(wide.data(), static_cast<UINT>(wide.size()));
}

void SetNumber(VARIANT& result, long number) {
  result.vt = VT_I4;
  result.lVal = number;
}

void SetFlag(VARIANT& result, bool flag) {
  result.vt = VT_BOOL;
  result.boolVal = flag ? VARIANT_TRUE : VARIANT_FALSE;
}

void SetObject(VARIANT& result, IDispatch* object) {
  result.vt = VT_DISPATCH;
  result.pdispVal = object;
}

}  // namespace dataaccess
