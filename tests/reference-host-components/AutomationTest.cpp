// The components as Automation objects: names, kinds of arguments, results by reference, life.

#include "HostFixture.h"

#include <windows.h>

#include <objbase.h>

namespace components_test {
namespace {

using windows::Dispatch;
using windows::OutNumber;
using windows::OutText;

class Automation : public HostTest {};

VARIANT Text(const wchar_t* text) {
  VARIANT value;
  value.vt = VT_BSTR;
  value.bstrVal = SysAllocString(text);
  return value;
}

VARIANT Reference(VARTYPE kind, void* target) {
  VARIANT value;
  value.vt = static_cast<VARTYPE>(VT_BYREF | kind);
  value.byref = target;
  return value;
}

HRESULT InvokeRaw(const Dispatch& component, std::wstring name, std::vector<VARIANT> reversed, VARIANT* result,
                  UINT* badArgument = nullptr, WORD kind = DISPATCH_METHOD) {
  LPOLESTR names = name.data();
  DISPID id = 0;
  const HRESULT known = component.Object()->GetIDsOfNames(IID_NULL, &names, 1, 0, &id);
  if (FAILED(known)) return known;
  DISPPARAMS parameters = {reversed.data(), nullptr, static_cast<UINT>(reversed.size()), 0};
  return component.Object()->Invoke(id, IID_NULL, 0, kind, &parameters, result, nullptr, badArgument);
}

TEST_F(Automation, FindsNamesWithoutRegardToCase) {
  const Dispatch query(L"Tarsus.UserQuery");
  ASSERT_TRUE(query);
  windows::Variant rows;
  EXPECT_EQ(query.Get(L"rOwCoUnT", rows), S_OK);
  EXPECT_EQ(query.Call(L"Rows"), DISP_E_UNKNOWNNAME);
}

TEST_F(Automation, RefusesWrongCalls) {
  const Dispatch query(L"Tarsus.UserQuery"), log(L"Tarsus.LogWriter");
  std::int32_t number = 0;
  std::string text;
  EXPECT_EQ(query.Call(L"RowCount", 1), DISP_E_BADPARAMCOUNT);
  EXPECT_EQ(query.Call(L"Execute", std::string("SELECT 1")), DISP_E_BADPARAMCOUNT);
  EXPECT_EQ(query.Call(L"Execute", std::string("SELECT 1"), 0), DISP_E_TYPEMISMATCH);
  EXPECT_EQ(query.Call(L"Execute", std::string("SELECT 1"), OutText{text}), DISP_E_TYPEMISMATCH);
  EXPECT_EQ(query.Call(L"Value", std::string("zero"), 0, OutText{text}, OutNumber{number}), DISP_E_TYPEMISMATCH);
  EXPECT_EQ(query.Call(L"Value", 0, 0, OutNumber{number}, OutNumber{number}), DISP_E_TYPEMISMATCH);
  EXPECT_EQ(query.Put(L"RowCount", 1), DISP_E_MEMBERNOTFOUND);
  EXPECT_EQ(log.Call(L"FilePath", std::string("C:\\x")), DISP_E_MEMBERNOTFOUND);
}

TEST_F(Automation, NamesTheBadArgumentByItsPlaceInTheCall) {
  const Dispatch query(L"Tarsus.UserQuery");
  BSTR text = nullptr;
  LONG status = 0;
  UINT bad = 99;
  const HRESULT result =
      InvokeRaw(query, L"Value", {Reference(VT_I4, &status), Reference(VT_BSTR, &text), Text(L"first"), Text(L"0")},
                nullptr, &bad);
  EXPECT_EQ(result, DISP_E_TYPEMISMATCH);
  EXPECT_EQ(bad, 2u);  // counted from the end: the third of four
}

TEST_F(Automation, ConvertsArgumentsAndFillsVariantsByReference) {
  const Dispatch query(L"Tarsus.UserQuery");
  VARIANT status = Text(L"what a script's variable held before");
  ASSERT_EQ(InvokeRaw(query, L"Execute", {Reference(VT_VARIANT, &status), Text(L"SELECT 'Zoë', 2")}, nullptr), S_OK);
  EXPECT_EQ(status.vt, VT_I4);
  EXPECT_EQ(status.lVal, 0);

  VARIANT value = {}, row = {};
  row.vt = VT_R8;
  row.dblVal = 0.0;
  ASSERT_EQ(InvokeRaw(query, L"Value", {Reference(VT_VARIANT, &status), Reference(VT_VARIANT, &value), Text(L"0"), row},
                      nullptr),
            S_OK);
  ASSERT_EQ(value.vt, VT_BSTR);
  EXPECT_STREQ(value.bstrVal, L"Zoë");
  VariantClear(&value);
}

TEST_F(Automation, ReplacesATextByReference) {
  const Dispatch query(L"Tarsus.UserQuery");
  std::int32_t status = -1;
  ASSERT_EQ(query.Call(L"Execute", std::string("SELECT 'x'"), OutNumber{status}), S_OK);
  BSTR value = SysAllocString(L"old");
  LONG rowStatus = -1;
  ASSERT_EQ(InvokeRaw(query, L"Value",
                      {Reference(VT_I4, &rowStatus), Reference(VT_BSTR, &value), Text(L"0"), Text(L"0")}, nullptr),
            S_OK);
  EXPECT_STREQ(value, L"x");
  SysFreeString(value);
}

TEST_F(Automation, CountsReferences) {
  const Dispatch query(L"Tarsus.UserQuery");
  IDispatch* object = query.Object();
  EXPECT_EQ(object->AddRef(), 2u);
  IUnknown* unknown = nullptr;
  ASSERT_EQ(object->QueryInterface(IID_IUnknown, reinterpret_cast<void**>(&unknown)), S_OK);
  EXPECT_EQ(unknown->Release(), 2u);
  EXPECT_EQ(object->Release(), 1u);
  void* none = object;
  EXPECT_EQ(object->QueryInterface(IID_IPersist, &none), E_NOINTERFACE);
  EXPECT_EQ(none, nullptr);
}

// The server's own exports, called as regsvr32 and COM call them.
class Server : public HostTest {
 protected:
  using Export = HRESULT(WINAPI*)();
  Export Find(const char* name) const {
    return reinterpret_cast<Export>(reinterpret_cast<void*>(GetProcAddress(module_, name)));
  }
  static bool IsRegistered(const wchar_t* progId) {
    CLSID classId;
    return SUCCEEDED(CLSIDFromProgID(progId, &classId));
  }

  // Loaded by creating a component, as a caller would.
  Dispatch first_{L"Tarsus.LogWriter"};
  const HMODULE module_ = GetModuleHandleW(L"TarsusComponents.dll");
};

TEST_F(Server, UnregistersAndRegistersAgain) {
  ASSERT_NE(module_, nullptr);
  EXPECT_EQ(Find("DllUnregisterServer")(), S_OK);
  EXPECT_FALSE(IsRegistered(L"Tarsus.MessageDialog"));
  EXPECT_EQ(Find("DllUnregisterServer")(), S_OK) << "nothing to remove is no failure";
  EXPECT_EQ(Find("DllRegisterServer")(), S_OK);
  EXPECT_TRUE(IsRegistered(L"Tarsus.MessageDialog"));
}

TEST_F(Server, MayBeUnloadedOnlyWhenNothingIsLeft) {
  ASSERT_NE(module_, nullptr);
  const Export canUnload = Find("DllCanUnloadNow");
  {
    const Dispatch second(L"Tarsus.AuditTrail");
    first_ = Dispatch();
    EXPECT_EQ(canUnload(), S_FALSE);
  }
  EXPECT_EQ(canUnload(), S_OK);
}

}  // namespace
}  // namespace components_test
