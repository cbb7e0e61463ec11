// Late-bound calls of COM components.
#include "windows/adapters/Dispatch.h"

#include <vector>

#include "windows/adapters/Text.h"

namespace windows {
namespace {

HRESULT Create(const wchar_t* progId, DispatchPointer& object) {
  CLSID classId;
  const HRESULT known = CLSIDFromProgID(progId, &classId);
  if (FAILED(known)) return known;
  void* created = nullptr;
  const HRESULT result =
      CoCreateInstance(classId, nullptr, CLSCTX_INPROC_SERVER | CLSCTX_LOCAL_SERVER, IID_IDispatch, &created);
  if (SUCCEEDED(result)) object.reset(static_cast<IDispatch*>(created));
  return result;
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

Dispatch::Dispatch(const wchar_t* progId) : progId_(progId), absence_(Create(progId, object_)) {}

std::string Dispatch::NameOf(const wchar_t* member) const {
  return (progId_.empty() ? std::string() : Utf8(progId_) + ".") + Utf8(member);
}

base::Outcome Dispatch::Invoke(const wchar_t* name, WORD kind, std::span<Argument> arguments, Variant* result) const {
  if (object_ == nullptr) return FailedCom(NameOf(name), absence_);
  std::wstring member = name;
  LPOLESTR memberName = member.data();
  DISPID id = DISPID_UNKNOWN;
  const HRESULT known = object_->GetIDsOfNames(IID_NULL, &memberName, 1, LOCALE_USER_DEFAULT, &id);
  if (FAILED(known)) return FailedCom(NameOf(name), known);

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
  EXCEPINFO exception{};
  const HRESULT called = object_->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, kind, &parameters,
                                         result == nullptr ? nullptr : result->Out(), &exception, nullptr);
  if (FAILED(called)) return FailedCom(NameOf(name), called, &exception);
  for (Argument& argument : arguments) argument.Deliver();
  return {};
}

}  // namespace windows
