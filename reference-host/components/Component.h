// What a component of the host is: a plain class that names the routines which
// Automation may call. Object.h turns such a class into a COM object.
#pragma once

#include <oaidl.h>

#include <array>
#include <functional>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "components/Arguments.h"

namespace components {

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

  static HRESULT Return(VARIANT* result, std::int32_t number) { return ReturnNumber(result, number); }
  static HRESULT Return(VARIANT* result, const std::string& text) { return ReturnText(result, text); }

  std::vector<Routine> routines_;
};

}  // namespace components
