// Owners of COM's things: the apartment, a VARIANT, an object.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "windows/adapters/Win32.h"
// After Win32.h, on which they rest.
#include <oaidl.h>
#include <oleauto.h>

namespace windows {

/// COM and OLE for this thread, as the shell's dialogs and ADO want them. Outlives every object.
class ComApartment {
 public:
  ComApartment();
  ~ComApartment();
  ComApartment(const ComApartment&) = delete;
  ComApartment& operator=(const ComApartment&) = delete;

 private:
  HRESULT result_;
};

struct DispatchReleaser {
  void operator()(IDispatch* object) const { object->Release(); }
};
using DispatchPointer = std::unique_ptr<IDispatch, DispatchReleaser>;

/// A UTF-8 text as a new BSTR, without a copy left elsewhere. The caller frees it.
BSTR NewBstr(std::string_view utf8);

/// A BSTR, which may be null, as UTF-8.
std::string TextOf(BSTR text);

/// A VARIANT that is cleared at the end.
class Variant {
 public:
  Variant() { VariantInit(&value_); }
  ~Variant() { VariantClear(&value_); }
  Variant(const Variant&) = delete;
  Variant& operator=(const Variant&) = delete;

  VARIANT* Out() { return &value_; }
  bool IsNull() const { return value_.vt == VT_NULL || value_.vt == VT_EMPTY; }

  /// Changes the value to a 32-bit number, a text or an object, whatever kind of number or
  /// reference it is. Each answers false, and leaves `target` alone, where that cannot be done.
  bool ToNumber(std::int32_t& target);
  bool ToText(std::string& target);
  bool ToObject(DispatchPointer& target);

 private:
  bool ChangeTo(VARTYPE type) { return SUCCEEDED(VariantChangeType(&value_, &value_, 0, type)); }

  VARIANT value_;
};

}  // namespace windows
