// Owners of COM's things.
#include "windows/adapters/Com.h"

#include <ole2.h>

#include "windows/adapters/Text.h"

namespace windows {

ComApartment::ComApartment() : result_(OleInitialize(nullptr)) {}

ComApartment::~ComApartment() {
  if (SUCCEEDED(result_)) OleUninitialize();
}

BSTR NewBstr(std::string_view utf8) {
  const int size = static_cast<int>(utf8.size());
  const int needed = MultiByteToWideChar(CP_UTF8, 0, utf8.data(), size, nullptr, 0);
  BSTR text = SysAllocStringLen(nullptr, static_cast<UINT>(needed));
  if (text != nullptr) MultiByteToWideChar(CP_UTF8, 0, utf8.data(), size, text, needed);
  return text;
}

std::string TextOf(BSTR text) {
  return text == nullptr ? std::string() : Utf8({text, SysStringLen(text)});
}

bool Variant::ToNumber(std::int32_t& target) {
  if (!ChangeTo(VT_I4)) return false;
  target = value_.lVal;
  return true;
}

bool Variant::ToText(std::string& target) {
  if (!ChangeTo(VT_BSTR)) return false;
  target = TextOf(value_.bstrVal);
  return true;
}

bool Variant::ToObject(DispatchPointer& target) {
  if (!ChangeTo(VT_DISPATCH) || value_.pdispVal == nullptr) return false;
  target.reset(value_.pdispVal);
  value_.vt = VT_EMPTY;  // the reference is the pointer's now
  return true;
}

}  // namespace windows
