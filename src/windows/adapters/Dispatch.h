// Late-bound calls of COM components, by name.
//
//   Dispatch component(kUserAuthenticatorProgId);
//   std::int32_t kind = 0;
//   const std::int32_t result = component.CallNumber(-1, L"Verify", userId, Secret{password}, OutNumber{kind});
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string>

#include "windows/adapters/Com.h"

namespace windows {

class Dispatch;

/// A text whose copies are wiped from memory after the call.
struct Secret {
  const std::string& text;
};
/// What the component writes back. The target is left alone where the call fails.
struct OutNumber {
  std::int32_t& target;
};
struct OutText {
  std::string& target;
};

/// One argument for the time of one call.
class Argument {
 public:
  Argument(std::int32_t number);
  Argument(const std::string& text);
  Argument(const Dispatch& object);
  Argument(Secret secret);
  Argument(OutNumber out);
  Argument(OutText out);
  ~Argument();
  Argument(const Argument&) = delete;
  Argument& operator=(const Argument&) = delete;

  /// The argument as the call passes it; this object keeps owning it.
  const VARIANT& Value() const { return value_; }
  /// Hands what came back to the target.
  void Deliver();

 private:
  VARIANT value_{};
  LONG number_ = 0;
  BSTR text_ = nullptr;
  bool secret_ = false;
  std::int32_t* numberTarget_ = nullptr;
  std::string* textTarget_ = nullptr;
};

class Dispatch {
 public:
  Dispatch() = default;
  /// Creates the component; where that fails the object is empty.
  explicit Dispatch(const wchar_t* progId);
  explicit Dispatch(DispatchPointer object) : object_(std::move(object)) {}

  explicit operator bool() const { return object_ != nullptr; }
  IDispatch* Object() const { return object_.get(); }

  /// Calls a method whose result, if any, is of no interest.
  template <typename... Arguments>
  HRESULT Call(const wchar_t* method, const Arguments&... arguments) const {
    std::array<Argument, sizeof...(arguments)> list{Argument(arguments)...};
    return Invoke(method, DISPATCH_METHOD, list, nullptr);
  }

  /// Calls a method or reads a property, with a result.
  template <typename... Arguments>
  HRESULT Get(const wchar_t* name, Variant& result, const Arguments&... arguments) const {
    std::array<Argument, sizeof...(arguments)> list{Argument(arguments)...};
    // Both at once is how late-bound callers say "I want a value": a component may offer either.
    return Invoke(name, DISPATCH_METHOD | DISPATCH_PROPERTYGET, list, &result);
  }

  /// Likewise for a number; `fault` where the call fails or its result is none.
  template <typename... Arguments>
  std::int32_t CallNumber(std::int32_t fault, const wchar_t* name, const Arguments&... arguments) const {
    Variant result;
    std::int32_t number = 0;
    return SUCCEEDED(Get(name, result, arguments...)) && result.ToNumber(number) ? number : fault;
  }

  /// Sets a property.
  template <typename Value>
  HRESULT Put(const wchar_t* property, const Value& value) const {
    std::array<Argument, 1> list{Argument(value)};
    return Invoke(property, DISPATCH_PROPERTYPUT, list, nullptr);
  }

 private:
  HRESULT Invoke(const wchar_t* name, WORD kind, std::span<Argument> arguments, Variant* result) const;

  DispatchPointer object_;
};

}  // namespace windows
