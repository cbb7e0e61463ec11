#include "components/Registration.h"

#include <objbase.h>
#include <olectl.h>

#include <string>

#include "components/ComponentTable.h"

// The linker's name for the start of this module, which is also its handle.
extern "C" IMAGE_DOS_HEADER __ImageBase;

namespace components {
namespace {

constexpr wchar_t kClasses[] = L"Software\\Classes\\";

std::wstring OwnPath() {
  wchar_t path[MAX_PATH] = {};
  const DWORD length = GetModuleFileNameW(reinterpret_cast<HMODULE>(&__ImageBase), path, MAX_PATH);
  return length < MAX_PATH ? std::wstring(path, length) : std::wstring();
}

std::wstring Text(const CLSID& classId) {
  wchar_t text[40] = {};
  StringFromGUID2(classId, text, 40);
  return text;
}

bool Write(const std::wstring& key, const wchar_t* name, const std::wstring& value) {
  const DWORD bytes = static_cast<DWORD>((value.size() + 1) * sizeof(wchar_t));
  return RegSetKeyValueW(HKEY_LOCAL_MACHINE, (kClasses + key).c_str(), name, REG_SZ, value.c_str(), bytes) ==
         ERROR_SUCCESS;
}

bool Remove(const std::wstring& key) {
  const LSTATUS status = RegDeleteTreeW(HKEY_LOCAL_MACHINE, (kClasses + key).c_str());
  return status == ERROR_SUCCESS || status == ERROR_FILE_NOT_FOUND;
}

bool Register(const ComponentEntry& entry, const std::wstring& server) {
  const std::wstring program = entry.programId, id = Text(entry.classId), key = L"CLSID\\" + id;
  return Write(key, nullptr, program) && Write(key + L"\\InprocServer32", nullptr, server) &&
         Write(key + L"\\InprocServer32", L"ThreadingModel", L"Apartment") &&
         Write(key + L"\\ProgID", nullptr, program) && Write(program, nullptr, program) &&
         Write(program + L"\\CLSID", nullptr, id);
}

}  // namespace

HRESULT RegisterAll() {
  const std::wstring server = OwnPath();
  if (server.empty()) return SELFREG_E_CLASS;
  for (const ComponentEntry& entry : ComponentTable()) {
    if (!Register(entry, server)) return SELFREG_E_CLASS;
  }
  return S_OK;
}

HRESULT UnregisterAll() {
  bool removed = true;
  for (const ComponentEntry& entry : ComponentTable()) {
    removed = Remove(L"CLSID\\" + Text(entry.classId)) && removed;
    removed = Remove(entry.programId) && removed;
  }
  return removed ? S_OK : SELFREG_E_CLASS;
}

}  // namespace components
