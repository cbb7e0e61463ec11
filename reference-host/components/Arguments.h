// How the arguments of an Automation call become C++ parameters, and back.
//
// A parameter's type says what the caller may pass: `std::int32_t` and
// `const std::string&` take anything that Automation converts to a number or a
// text; `std::int32_t&` and `std::string&` are results and take a BYREF
// argument of VT_I4 or VT_BSTR or a BYREF VARIANT, as scripts pass them.
// Anything else is DISP_E_TYPEMISMATCH. Texts are UTF-8 on this side.
#pragma once

#include <oaidl.h>

#include <cstdint>
#include <string>

namespace components {

HRESULT ReadNumber(VARIANTARG& argument, std::int32_t& number);
HRESULT ReadText(VARIANTARG& argument, std::string& text);
/// Whether `argument` can take a result of `kind` (VT_I4 or VT_BSTR).
HRESULT CheckResult(const VARIANTARG& argument, VARTYPE kind);
/// Stores a result; what a BYREF argument held before is freed.
HRESULT StoreNumber(VARIANTARG& argument, std::int32_t number);
HRESULT StoreText(VARIANTARG& argument, const std::string& text);
/// Turns a routine's result into the call's result; `result` may be null, for a caller that wants none.
HRESULT ReturnNumber(VARIANT* result, std::int32_t number);
HRESULT ReturnText(VARIANT* result, const std::string& text);

/// One parameter: read before the routine runs, stored after it.
template <typename Parameter>
class Argument;

template <>
class Argument<std::int32_t> {
 public:
  HRESULT Read(VARIANTARG& argument) { return ReadNumber(argument, value_); }
  std::int32_t Value() const { return value_; }
  HRESULT Store(VARIANTARG&) const { return S_OK; }

 private:
  std::int32_t value_ = 0;
};

template <>
class Argument<const std::string&> {
 public:
  HRESULT Read(VARIANTARG& argument) { return ReadText(argument, value_); }
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

}  // namespace components
