// The components as Automation objects: names, kinds of arguments, results by reference, life.
#include "HostFixture.h"

#include <objbase.h>

namespace {

using windows::Dispatch;
using windows::OutNumber;
using windows::OutText;

/// Whether a call has failed, and with this result of COM.
bool FailsWith(HRESULT result, const base::Outcome& called) {
  const std::string subject = called.cause.substr(0, called.cause.find(": "));
  return called == Failed && called.cause == windows::FailedCom(subject, result).cause;
}

class Automation : public HostTest {
 protected:
  static VARIANT Text(const wchar_t* text) {
    VARIANT value;
    value.vt = VT_BSTR;
    value.bstrVal = SysAllocString(text);
    return value;
  }

  static VARIANT Reference(VARTYPE kind, void* target) {
    VARIANT value;
    value.vt = static_cast<VARTYPE>(VT_BYREF | kind);
    value.byref = target;
    return value;
  }

  HRESULT InvokeRaw(std::wstring name, std::vector<VARIANT> reversed) {
    LPOLESTR names = name.data();
    DISPID id = 0;
    const HRESULT known = query_.Object()->GetIDsOfNames(IID_NULL, &names, 1, 0, &id);
    if (FAILED(known)) return known;
    DISPPARAMS parameters = {reversed.data(), nullptr, static_cast<UINT>(reversed.size()), 0};
    return query_.Object()->Invoke(id, IID_NULL, 0, DISPATCH_METHOD, &parameters, nullptr, nullptr, &badArgument_);
  }

  Dispatch query_{L"Tarsus.UserQuery"};
  UINT badArgument_ = 99;
};

TEST_F(Automation, FindsNamesWithoutRegardToCaseAndRefusesWrongCalls) {
  const Dispatch log(L"Tarsus.LogWriter");
  std::int32_t number = 0;
  std::string text;
  EXPECT_EQ(query_.CallNumber(-1, L"rOwCoUnT"), 0);
  EXPECT_TRUE(FailsWith(DISP_E_UNKNOWNNAME, query_.Call(L"Rows")));
  EXPECT_TRUE(FailsWith(DISP_E_BADPARAMCOUNT, query_.Call(L"RowCount", 1)));
  EXPECT_TRUE(FailsWith(DISP_E_BADPARAMCOUNT, query_.Call(L"Execute", std::string("SELECT 1"))));
  EXPECT_TRUE(FailsWith(DISP_E_TYPEMISMATCH, query_.Call(L"Execute", std::string("SELECT 1"), 0)));
  EXPECT_TRUE(FailsWith(DISP_E_TYPEMISMATCH, query_.Call(L"Execute", std::string("SELECT 1"), OutText{text})));
  EXPECT_TRUE(
      FailsWith(DISP_E_TYPEMISMATCH, query_.Call(L"Value", std::string("zero"), 0, OutText{text}, OutNumber{number})));
  EXPECT_TRUE(FailsWith(DISP_E_TYPEMISMATCH, query_.Call(L"Value", 0, 0, OutNumber{number}, OutNumber{number})));
  EXPECT_TRUE(FailsWith(DISP_E_MEMBERNOTFOUND, query_.Put(L"RowCount", 1)));
  EXPECT_TRUE(FailsWith(DISP_E_MEMBERNOTFOUND, log.Call(L"FilePath", std::string("C:\\x"))));
}

TEST_F(Automation, ConvertsArgumentsFillsWhatIsByReferenceAndNamesTheBadOneByItsPlace) {
  VARIANT status = Text(L"what a script's variable held before");
  ASSERT_EQ(InvokeRaw(L"Execute", {Reference(VT_VARIANT, &status), Text(L"SELECT 'Zoë', 2")}), S_OK);
  EXPECT_EQ(status.vt, VT_I4);
  EXPECT_EQ(status.lVal, 0);

  // Arguments come last to first: a row that is a number, a column that is a text.
  VARIANT value = {}, row = {};
  row.vt = VT_R8;
  row.dblVal = 0.0;
  ASSERT_EQ(InvokeRaw(L"Value", {Reference(VT_VARIANT, &status), Reference(VT_VARIANT, &value), Text(L"0"), row}),
            S_OK);
  ASSERT_EQ(value.vt, VT_BSTR);
  EXPECT_STREQ(value.bstrVal, L"Zoë");
  VariantClear(&value);

  LONG number = -1;
  BSTR text = SysAllocString(L"old");
  const VARIANT results[] = {Reference(VT_I4, &number), Reference(VT_BSTR, &text)};
  ASSERT_EQ(InvokeRaw(L"Value", {results[0], results[1], Text(L"0"), Text(L"0")}), S_OK);
  EXPECT_EQ(number, 0);
  EXPECT_STREQ(text, L"Zoë");
  EXPECT_EQ(InvokeRaw(L"Value", {results[0], results[1], Text(L"first"), Text(L"0")}), DISP_E_TYPEMISMATCH);
  EXPECT_EQ(badArgument_, 2u);  // counted from the end: the third of four
  SysFreeString(text);
}

TEST_F(Automation, CountsReferences) {
  IDispatch* const object = query_.Object();
  EXPECT_EQ(object->AddRef(), 2u);
  void* found = nullptr;
  ASSERT_EQ(object->QueryInterface(IID_IUnknown, &found), S_OK);
  EXPECT_EQ(static_cast<IUnknown*>(found)->Release(), 2u);
  EXPECT_EQ(object->Release(), 1u);
  EXPECT_EQ(object->QueryInterface(IID_IPersist, &found), E_NOINTERFACE);
  EXPECT_EQ(found, nullptr);
}

// Its registration is tested with the data access, whose server has its exports from the same code.
TEST_F(Automation, MayBeUnloadedOnlyWhenNothingIsLeft) {
  const FARPROC address = GetProcAddress(GetModuleHandleW(L"TarsusComponents.dll"), "DllCanUnloadNow");
  ASSERT_TRUE(address);
  const auto canUnload = reinterpret_cast<HRESULT(WINAPI*)()>(reinterpret_cast<void*>(address));
  {
    const Dispatch second(L"Tarsus.AuditTrail");
    query_ = Dispatch();
    EXPECT_EQ(canUnload(), S_FALSE);
  }
  EXPECT_EQ(canUnload(), S_OK);
}

}  // namespace
