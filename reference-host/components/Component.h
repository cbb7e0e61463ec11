// What a component of the host is: a plain class that names the routines which
// Automation may call. NewObject turns such a class into a COM object.
//
// A parameter's type says what the caller may pass: `std::int32_t` and
// `const std::string&` take anything that Automation converts to a number or a
// text; `std::int32_t&` and `std::string&` are results and take a BYREF
// argument of VT_I4 or VT_BSTR or a BYREF VARIANT, as scripts pass them.
// Anything else is DISP_E_TYPEMISMATCH. Texts are UTF-8 on this side.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "com/Automation.h"

namespace components {

/// Whether `argument` can take a result of `kind` (VT_I4 or VT_BSTR).
HRESULT CheckResult(const VARIANTARG& argument, VARTYPE kind);
/// Store a result; what a BYREF argument held before is freed.
HRESULT StoreNumber(VARIANTARG& argument, std::int32_t number);
HRESULT StoreText(VARIANTARG& argument, const std::string& text);

/// One parameter: read before the routine runs, stored after it.
template <typename Parameter>
class Argument;

template <>
class Argument<std::int32_t> {
 public:
  HRESULT Read(VARIANTARG& argument) { return reference::ReadNumber(argument, value_); }
  std::int32_t Value() const { return value_; }
  HRESULT Store(VARIANTARG&) const { return S_OK; }

 private:
  std::int32_t value_ = 0;
};

template <>
class Argument<const std::string&> {
 public:
  HRESULT Read(VARIANTARG& argument) { return reference::ReadText(argument, value_); }
  const std::string& Value() const { return value_; }
  HRESULT Store(VARIANTARG&) const { return S_OK; }

 private:
  std::string value_;
};

template <>
class Argument<std::int32_t&> {
 public:
  HRESULT Read(VARIANTARG& argument) { return CheckResult(argument, VT_I4); }
  std::int32_t& Value() { return value_; }
  HRESULT Store(VARIANTARG& argument) const { return StoreNumber(argument, value_); }

 private:
  std::int32_t value_ = 0;
};

template <>
class Argument<std::string&> {
 public:
  HRESULT Read(VARIANTARG& argument) { return CheckResult(argument, VT_BSTR); }
  std::string& Value() { return value_; }
  HRESULT Store(VARIANTARG& argument) const { return StoreText(argument, value_); }

 private:
  std::string value_;
};

/// The arguments of one call, numbered from 0 in the order in which the caller wrote them.
class CallArguments {
 public:
  explicit CallArguments(DISPPARAMS& parameters) : parameters_(parameters) {}
  std::size_t Count() const { return parameters_.cArgs; }
  VARIANTARG& operator[](std::size_t index) const { return parameters_.rgvarg[Position(index)]; }
  /// Where Automation, which stores the last argument first, has argument `index`.
  UINT Position(std::size_t index) const { return parameters_.cArgs - 1 - static_cast<UINT>(index); }

 private:
  DISPPARAMS& parameters_;
};

/// A routine as Automation sees it.
struct Routine {
  std::wstring name;  ///< found without regard to case
  WORD callKind;      ///< DISPATCH_METHOD or DISPATCH_PROPERTYPUT
  std::size_t arity;  ///< every argument is mandatory
  /// Converts, calls and stores. On a bad argument `badArgument` is its Position.
  std::function<HRESULT(const CallArguments&, VARIANT* result, UINT* badArgument)> call;
};

class Component {
 public:
  Component() = default;
  virtual ~Component() = default;
  Component(const Component&) = delete;
  Component& operator=(const Component&) = delete;

  /// A routine's DISPID is its place in here, counted from 1.
  const std::vector<Routine>& Routines() const { return routines_; }

 protected:
  /// Offers `routine` as a method. To be called from the constructor of `Self`.
  template <typename Self, typename Result, typename... Parameters>
  void AddMethod(const wchar_t* name, Result (Self::*routine)(Parameters...)) {
    Add(name, DISPATCH_METHOD, routine);
  }

  /// Offers `setter` as the writing half of a property.
  template <typename Self, typename Parameter>
  void AddProperty(const wchar_t* name, void (Self::*setter)(Parameter)) {
    Add(name, DISPATCH_PROPERTYPUT, setter);
  }

 private:
  template <typename Self, typename Result, typename... Parameters>
  void Add(const wchar_t* name, WORD callKind, Result (Self::*routine)(Parameters...)) {
    Self* self = static_cast<Self*>(this);
    auto call = [self, routine](const CallArguments& arguments, VARIANT* result, UINT* badArgument) {
      return Call(*self, routine, arguments, result, badArgument, std::index_sequence_for<Parameters...>());
    };
    routines_.push_back({name, callKind, sizeof...(Parameters), call});
  }

  template <typename Self, typename Result, typename... Parameters, std::size_t... kIndex>
  static HRESULT Call(Self& self, Result (Self::*routine)(Parameters...), const CallArguments& arguments,
                      VARIANT* result, [[maybe_unused]] UINT* badArgument, std::index_sequence<kIndex...>) {
    std::tuple<Argument<Parameters>...> values;
    HRESULT outcome = S_OK;
    [[maybe_unused]] const auto succeeds = [&](HRESULT step, std::size_t index) {
      outcome = step;
      if (FAILED(step) && badArgument) *badArgument = arguments.Position(index);
      return SUCCEEDED(step);
    };
    if (!(... && succeeds(std::get<kIndex>(values).Read(arguments[kIndex]), kIndex))) return outcome;
    if constexpr (std::is_void_v<Result>) {
      (self.*routine)(std::get<kIndex>(values).Value()...);
    } else {
      outcome = Return(result, (self.*routine)(std::get<kIndex>(values).Value()...));
      if (FAILED(outcome)) return outcome;
    }
    static_cast<void>((... && succeeds(std::get<kIndex>(values).Store(arguments[kIndex]), kIndex)));
    return outcome;
  }

  // A caller that wants no result passes none.
  static HRESULT Return(VARIANT* result, std::int32_t number) {
    if (result) reference::SetNumber(*result, number);
    return S_OK;
  }
  static HRESULT Return(VARIANT* result, const std::string& text) {
    return result ? reference::SetText(*result, text) : S_OK;
  }

  std::vector<Routine> routines_;
};

/// `component` as a COM object without a type library. Its arguments cannot be named, but for the value of a property.
/// A fault inside the component reaches the caller as DISP_E_EXCEPTION with a description.
IUnknown* NewObject(std::unique_ptr<Component> component);

}  // namespace components
