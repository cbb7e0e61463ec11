// The data access classes take their names, and give them back.
#include <gtest/gtest.h>
#include <windows.h>

#include <objbase.h>

#include <cstdlib>
#include <string>

#include "common/Text.h"

namespace {

HRESULT CallServer(const char* name) {
  const char* const path = std::getenv("DATA_ACCESS");
  const HMODULE server = LoadLibraryW(reference::Utf16(path ? path : "").c_str());
  const auto call = reinterpret_cast<HRESULT(__stdcall*)()>(reinterpret_cast<void*>(GetProcAddress(server, name)));
  const HRESULT result = call ? call() : E_POINTER;
  FreeLibrary(server);
  return result;
}

std::wstring ClassBehind(const wchar_t* name) {
  CLSID id = {};
  wchar_t text[40] = {};
  if (FAILED(CLSIDFromProgID(name, &id))) return L"(none)";
  StringFromGUID2(id, text, 40);
  return text;
}

TEST(Registration, GivesTheNamesBack) {
  const std::wstring own = ClassBehind(L"ADODB.Recordset");
  ASSERT_EQ(CallServer("DllRegisterServer"), S_OK);
  ASSERT_EQ(CallServer("DllUnregisterServer"), S_OK);
  const std::wstring wines = ClassBehind(L"ADODB.Recordset");
  EXPECT_NE(wines, own);
  EXPECT_NE(wines, L"(none)");
  EXPECT_EQ(ClassBehind(L"DAO.DBEngine.36"), L"(none)");
  ASSERT_EQ(CallServer("DllRegisterServer"), S_OK);
  EXPECT_EQ(ClassBehind(L"ADODB.Recordset"), own);
}

}  // namespace
