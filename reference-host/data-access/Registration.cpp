// Registers the classes below HKEY_LOCAL_MACHINE\Software\Classes.
#include "data-access/Registration.h"

#include <objbase.h>
#include <olectl.h>

#include <string>

#include "data-access/Classes.h"

// The linker's name for the start of this module, which is also its handle.
extern "C" IMAGE_DOS_HEADER __ImageBase;

namespace dataaccess {

namespace {

constexpr wchar_t kClasses[] = L"Software\\Classes\\";
/// Below our class's key: the class that had the name before.
constexpr wchar_t kReplaced[] = L"\\ReplacedClass";

bool IsDemonstrationMachine() {
  return GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "wine_get_version") != nullptr;
}

std::wstring OwnPath() {
  wchar_t path[MAX_PATH] = {};
  const DWORD length = GetModuleFileNameW(reinterpret_cast<HMODULE>(&__ImageBase), path, MAX_PATH);
  return length < MAX_PATH ? std::wstring(path, length) : std::wstring();
}

std::wstring Text(const CLSID& id) {
  wchar_t text[40] = {};
  StringFromGUID2(id, text, 40);
  return text;
}

std::wstring ClassKey(const ServedClass& served) {
  return kClasses + (L"CLSID\\" + Text(served.id));
}

std::wstring NameKey(const ServedClass& served) {
  return kClasses + std::wstring(served.progId);
}

/// A key's default value; empty when there is none.
std::wstring Read(const std::wstring& key) {
  wchar_t value[64] = {};
  DWORD size = sizeof(value);
  const LSTATUS status = RegGetValueW(HKEY_LOCAL_MACHINE, key.c_str(), nullptr, RRF_RT_REG_SZ, nullptr, value, &size);
  return status == ERROR_SUCCESS ? value : std::wstring();
}

bool Write(const std::wstring& key, const wchar_t* name, const std::wstring& value) {
  const auto size = static_cast<DWORD>((value.size() + 1) * sizeof(wchar_t));
  return RegSetKeyValueW(HKEY_LOCAL_MACHINE, key.c_str(), name, REG_SZ, value.c_str(), size) == ERROR_SUCCESS;
}

bool Remove(const std::wstring& key) {
  const LSTATUS status = RegDeleteTreeW(HKEY_LOCAL_MACHINE, key.c_str());
  return status == ERROR_SUCCESS || status == ERROR_FILE_NOT_FOUND;
}

bool Register(const ServedClass& served, const std::wstring& server) {
  const std::wstring key = ClassKey(served), before = Read(NameKey(served) + L"\\CLSID");
  if (!before.empty() && before != Text(served.id) && !Write(key + kReplaced, nullptr, before)) return false;
  return Write(key, nullptr, served.progId) && Write(key + L"\\InprocServer32", nullptr, server) &&
         Write(key + L"\\InprocServer32", L"ThreadingModel", L"Apartment") &&
         Write(key + L"\\ProgID", nullptr, served.progId) &&
         Write(NameKey(served) + L"\\CLSID", nullptr, Text(served.id));
}

bool Unregister(const ServedClass& served) {
  const std::wstring replaced = Read(ClassKey(served) + kReplaced);
  bool done = true;
  if (Read(NameKey(served) + L"\\CLSID") == Text(served.id)) {
    done = replaced.empty() ? Remove(NameKey(served)) : Write(NameKey(served) + L"\\CLSID", nullptr, replaced);
  }
  return Remove(ClassKey(served)) && done;
}

}  // namespace

HRESULT RegisterClasses() {
  if (!IsDemonstrationMachine()) return HRESULT_FROM_WIN32(ERROR_NOT_SUPPORTED);
  const std::wstring server = OwnPath();
  if (server.empty()) return SELFREG_E_CLASS;
  for (const ServedClass& served : ServedClasses()) {
    if (!Register(served, server)) return SELFREG_E_CLASS;
  }
  return S_OK;
}

HRESULT UnregisterClasses() {
  bool done = true;
  for (const ServedClass& served : ServedClasses()) done = Unregister(served) && done;
  return done ? S_OK : SELFREG_E_CLASS;
}

}  // namespace dataaccess
