// Puts a server's classes into the registry, below HKEY_LOCAL_MACHINE\Software\Classes, and takes them out again.
#include <objbase.h>
#include <olectl.h>

#include <string>

#include "com/Server.h"

// The linker's name for the start of this module, which is also its handle.
extern "C" IMAGE_DOS_HEADER __ImageBase;

namespace reference {
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
  return kClasses + (L"CLSID\\" + Text(served.classId));
}

std::wstring NameKey(const ServedClass& served) {
  return kClasses + std::wstring(served.programId);
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

/// Makes the name lead to our class. One that led nowhere gets a key of its own, one that led elsewhere is remembered.
bool TakeName(const ServedClass& served, const std::wstring& before) {
  const bool isNew = before.empty(), isOther = !isNew && before != Text(served.classId);
  if (isOther && !Write(ClassKey(served) + kReplaced, nullptr, before)) return false;
  if (isNew && !Write(NameKey(served), nullptr, served.programId)) return false;
  return Write(NameKey(served) + L"\\CLSID", nullptr, Text(served.classId));
}

bool Register(const ServedClass& served, const std::wstring& path) {
  const std::wstring key = ClassKey(served);
  return Write(key, nullptr, served.programId) && Write(key + L"\\InprocServer32", nullptr, path) &&
         Write(key + L"\\InprocServer32", L"ThreadingModel", L"Apartment") &&
         Write(key + L"\\ProgID", nullptr, served.programId) && TakeName(served, Read(NameKey(served) + L"\\CLSID"));
}

bool Unregister(const ServedClass& served) {
  const std::wstring replaced = Read(ClassKey(served) + kReplaced);
  bool done = true;
  if (Read(NameKey(served) + L"\\CLSID") == Text(served.classId)) {
    done = replaced.empty() ? Remove(NameKey(served)) : Write(NameKey(served) + L"\\CLSID", nullptr, replaced);
  }
  return Remove(ClassKey(served)) && done;
}

}  // namespace

HRESULT RegisterClasses(const Server& server) {
  if (server.demonstrationMachinesOnly && !IsDemonstrationMachine()) return HRESULT_FROM_WIN32(ERROR_NOT_SUPPORTED);
  const std::wstring path = OwnPath();
  if (path.empty()) return SELFREG_E_CLASS;
  for (const ServedClass& served : server.classes) {
    if (!Register(served, path)) return SELFREG_E_CLASS;
  }
  return S_OK;
}

HRESULT UnregisterClasses(const Server& server) {
  bool done = true;
  for (const ServedClass& served : server.classes) done = Unregister(served) && done;
  return done ? S_OK : SELFREG_E_CLASS;
}

}  // namespace reference
