// Late-bound calls: finds members by name, checks the number of arguments, reports failures.
#include "data-access/Automation.h"

#include <algorithm>
#include <new>

namespace dataaccess {

namespace {

const VARIANT* Follow(const VARIANT& argument) {
  const VARIANT* value = &argument;
  while (value->vt == (VT_BYREF | VT_VARIANT)) value = value->pvarVal;
  return value->vt == VT_ERROR && value->scode == DISP_E_PARAMNOTFOUND ? nullptr : value;
}

HRESULT Report(const Outcome& outcome, EXCEPINFO* exception) {
  if (!outcome.text) return outcome.code;
  return reference::RaiseError(exception, L"Tarsus data access", outcome.text, outcome.code);
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
  return !Has(index) || SUCCEEDED(reference::ReadText(*At(index), text));
}

bool Arguments::Number(std::size_t index, std::int32_t& number) const {
  return !Has(index) || SUCCEEDED(reference::ReadNumber(*At(index), number));
}

DISPID AutomationObject::IdOf(const wchar_t* name) const {
  const auto found =
      std::ranges::find_if(members_, [&](const Member& member) { return reference::SameName(member.name, name); });
  return found == members_.end() ? DISPID_UNKNOWN : found->id;
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
  if (const HRESULT named = reference::CheckNamedArguments(*parameters, writes); FAILED(named)) return named;
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

void SetFlag(VARIANT& result, bool flag) {
  result.vt = VT_BOOL;
  result.boolVal = flag ? VARIANT_TRUE : VARIANT_FALSE;
}

void SetObject(VARIANT& result, IDispatch* object) {
  result.vt = VT_DISPATCH;
  result.pdispVal = object;
}

}  // namespace dataaccess
