// Late-bound calls of COM components, by name.
//
//   Dispatch component(kUserAuthenticatorProgId);
//   std::int32_t kind = 0;
//   const std::int32_t result = component.CallNumber(kFault, L"Verify", userId, Secret{password}, OutNumber{kind});
//
// The causes of failures name the component and its member, never an argument: that could be a password.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string>

#include "base/Outcome.h"
#include "windows/adapters/Com.h"
#include "windows/adapters/Results.h"

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
  /// Creates the component; where that fails the object is empty, and its calls fail for the same cause.
  explicit Dispatch(const wchar_t* progId);
  explicit Dispatch(DispatchPointer object) : object_(std::move(object)) {}

  explicit operator bool() const { return object_ != nullptr; }
  IDispatch* Object() const { return object_.get(); }

  /// Calls a method whose result, if any, is of no interest.
  template <typename... Arguments>
  base::Outcome Call(const wchar_t* method, const Arguments&... arguments) const {
    std::array<Argument, sizeof...(arguments)> list{Argument(arguments)...};
    return Invoke(method, DISPATCH_METHOD, list, nullptr);
  }

  /// The same where nobody could act on a failure.
  template <typename... Arguments>
  void Tell(const wchar_t* method, const Arguments&... arguments) const {
    static_cast<void>(Call(method, arguments...));
  }

  /// Sets a property.
  template <typename Value>
  base::Outcome Put(const wchar_t* property, const Value& value) const {
    std::array<Argument, 1> list{Argument(value)};
    return Invoke(property, DISPATCH_PROPERTYPUT, list, nullptr);
  }

  /// The same where a failure shows in the call that needs the property.
  template <typename Value>
  void Prepare(const wchar_t* property, const Value& value) const {
    static_cast<void>(Put(property, value));
  }

  /// Calls a method or reads a property, with a result.
  template <typename... Arguments>
  base::Outcome Get(const wchar_t* name, Variant& result, const Arguments&... arguments) const {
    std::array<Argument, sizeof...(arguments)> list{Argument(arguments)...};
    // Both at once is how late-bound callers say "I want a value": a component may offer either.
    return Invoke(name, DISPATCH_METHOD | DISPATCH_PROPERTYGET, list, &result);
  }

  /// Likewise for a number, which is left alone where the call fails or its result is none.
  template <typename... Arguments>
  base::Outcome GetNumber(std::int32_t& number, const wchar_t* name, const Arguments&... arguments) const {
    Variant result;
    base::Outcome called = Get(name, result, arguments...);
    if (called.IsDone() && !result.ToNumber(number)) return FailedCom(NameOf(name), DISP_E_TYPEMISMATCH);
    return called;
  }

  /// Likewise, with `fault` for every failure.
  template <typename... Arguments>
  std::int32_t CallNumber(std::int32_t fault, const wchar_t* name, const Arguments&... arguments) const {
    std::int32_t number = fault;
    return GetNumber(number, name, arguments...).IsDone() ? number : fault;
  }

  /// Calls a method whose answer is a number that tells success or failure.
  template <typename... Arguments>
  base::Outcome CallChecked(FailsAt rule, const wchar_t* method, const Arguments&... arguments) const {
    std::int32_t answer = 0;
    base::Outcome called = GetNumber(answer, method, arguments...);
    return called.IsDone() ? OutcomeOfAnswer(rule, answer, NameOf(method)) : called;
  }

  /// Calls a method with a result, whose last argument, added here, takes its status: anything but 0 is a failure. A
  /// status that the component does not set is one, too.
  template <typename... Arguments>
  base::Outcome GetWithStatus(const wchar_t* name, Variant& result, const Arguments&... arguments) const {
    std::int32_t status = kNotSet;
    base::Outcome called = Get(name, result, arguments..., OutNumber{status});
    return called.IsDone() ? OutcomeOfAnswer(FailsAt::AnyButZero, status, NameOf(name)) : called;
  }

  /// Likewise for a method without a result.
  template <typename... Arguments>
  base::Outcome CallWithStatus(const wchar_t* name, const Arguments&... arguments) const {
    std::int32_t status = kNotSet;
    base::Outcome called = Call(name, arguments..., OutNumber{status});
    return called.IsDone() ? OutcomeOfAnswer(FailsAt::AnyButZero, status, NameOf(name)) : called;
  }

  /// The member's name with the component's, such as "Tarsus.LogWriter.WriteLine".
  std::string NameOf(const wchar_t* member) const;

 private:
  /// The status before the component has set it.
  static constexpr std::int32_t kNotSet = -1;

  base::Outcome Invoke(const wchar_t* name, WORD kind, std::span<Argument> arguments, Variant* result) const;

  std::wstring progId_;
  DispatchPointer object_;
  HRESULT absence_ = E_POINTER;  ///< why there is no object
};

}  // namespace windows
