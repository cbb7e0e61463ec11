// Late-bound calls of COM components.
#include "windows/adapters/Dispatch.h"

#include <vector>

namespace windows {
namespace {

DispatchPointer Create(const wchar_t* progId) {
  CLSID classId;
  void* object = nullptr;
  if (FAILED(CLSIDFromProgID(progId, &classId)) ||
      FAILED(CoCreateInstance(classId, nullptr, CLSCTX_INPROC_SERVER | CLSCTX_LOCAL_SERVER, IID_IDispatch, &object))) {
    return nullptr;
  }
  return DispatchPointer(static_cast<IDispatch*>(object));
}

}  // namespace

Argument::Argument(std::int32_t number) {
  value_.vt = VT_I4;
  value_.lVal = number;
}

Argument::Argument(const std::string& text) : text_(NewBstr(text)) {
  value_.vt = VT_BSTR;
  value_.bstrVal = text_;
}

Argument::Argument(const Dispatch& object) {
  value_.vt = VT_DISPATCH;
  value_.pdispVal = object.Object();
}

Argument::Argument(Secret secret) : Argument(secret.text) {
  secret_ = true;
}

Argument::Argument(OutNumber out) : number_(out.target), numberTarget_(&out.target) {
  value_.vt = VT_BYREF | VT_I4;
  value_.plVal = &number_;
}

Argument::Argument(OutText out) : textTarget_(&out.target) {
  value_.vt = VT_BYREF | VT_BSTR;
  value_.pbstrVal = &text_;
}

Argument::~Argument() {
  if (secret_ && text_ != nullptr) SecureZeroMemory(text_, SysStringByteLen(text_));
  SysFreeString(text_);
}

void Argument::Deliver() {
  if (numberTarget_ != nullptr) *numberTarget_ = number_;
  if (textTarget_ != nullptr) *textTarget_ = TextOf(text_);
}

Dispatch::Dispatch(const wchar_t* progId) : object_(Create(progId)) {}

HRESULT Dispatch::Invoke(const wchar_t* name, WORD kind, std::span<Argument> arguments, Variant* result) const {
  if (object_ == nullptr) return E_POINTER;
  std::wstring member = name;
  LPOLESTR memberName = member.data();
  DISPID id = DISPID_UNKNOWN;
  const HRESULT known = object_->GetIDsOfNames(IID_NULL, &memberName, 1, LOCALE_USER_DEFAULT, &id);
  if (FAILED(known)) return known;

  std::vector<VARIANT> reversed;  // the last argument comes first
  for (auto argument = arguments.rbegin(); argument != arguments.rend(); ++argument) {
    reversed.push_back(argument->Value());
  }
  DISPID putId = DISPID_PROPERTYPUT;
  DISPPARAMS parameters{reversed.data(), nullptr, static_cast<UINT>(reversed.size()), 0};
  if (kind == DISPATCH_PROPERTYPUT) {
    parameters.rgdispidNamedArgs = &putId;
    parameters.cNamedArgs = 1;
  }
  const HRESULT called = object_->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, kind, &parameters,
                                         result == nullptr ? nullptr : result->Out(), nullptr, nullptr);
  if (SUCCEEDED(called)) {
    for (Argument& argument : arguments) argument.Deliver();
  }
  return called;
}

}  // namespace windows
