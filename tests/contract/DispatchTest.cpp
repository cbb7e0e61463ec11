// Late-bound calls, against an object that notes how it was called.
#include "windows/adapters/Dispatch.h"

#include <gtest/gtest.h>

#include <functional>

#include "fakes/Printing.h"
#include "windows/adapters/Databases.h"

namespace {

using enum base::Result;

/// Stands for the answer of a call that was not carried out.
constexpr std::int32_t kFault = -1;

/// Knows one member, "Member", and hands each call to `onCall`.
class Callee final : public IDispatch {
 public:
  std::function<HRESULT(WORD kind, DISPPARAMS& parameters, VARIANT* result)> onCall;
  std::wstring words;  ///< of the exception that a failing call raises
  ULONG references = 1;

  STDMETHODIMP QueryInterface(REFIID, void**) override { return E_NOINTERFACE; }
  STDMETHODIMP_(ULONG) AddRef() override { return ++references; }
  STDMETHODIMP_(ULONG) Release() override { return --references; }
  STDMETHODIMP GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
  STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR* names, UINT, LCID, DISPID* ids) override {
    *ids = 1;
    return std::wstring(*names) == L"Member" ? S_OK : DISP_E_UNKNOWNNAME;
  }
  STDMETHODIMP Invoke(DISPID, REFIID, LCID, WORD kind, DISPPARAMS* parameters, VARIANT* result, EXCEPINFO* exception,
                      UINT*) override {
    const HRESULT answer = onCall(kind, *parameters, result);
    if (answer != DISP_E_EXCEPTION) return answer;
    exception->bstrDescription = SysAllocString(words.c_str());
    exception->scode = E_ACCESSDENIED;
    return answer;
  }
};

class DispatchTest : public ::testing::Test {
 protected:
  ~DispatchTest() override {
    object_ = windows::Dispatch();
    EXPECT_EQ(callee_.references, 0U) << "released once";
  }

  windows::ComApartment apartment_;
  Callee callee_;
  windows::Dispatch object_{windows::DispatchPointer(&callee_)};
};

TEST_F(DispatchTest, AFailedCallLeavesTheTargetsAloneAndSaysWhy) {
  HRESULT answer = E_FAIL;
  callee_.onCall = [&](WORD, DISPPARAMS& parameters, VARIANT*) {
    EXPECT_EQ(*parameters.rgvarg[0].plVal, kFault) << "what the target holds goes along";
    *parameters.rgvarg[0].plVal = 0;
    return answer;
  };
  std::int32_t granted = kFault;
  const auto causeOf = [&](const windows::Dispatch& object, const wchar_t* member) {
    EXPECT_EQ(object.CallNumber(7, member, windows::OutNumber{granted}), 7);
    return object.Call(member, windows::OutNumber{granted}).cause;
  };
  EXPECT_TRUE(causeOf(object_, L"Member").ends_with("(0x80004005)"));
  EXPECT_TRUE(causeOf(object_, L"Stranger").ends_with("(0x80020006)"));
  EXPECT_TRUE(causeOf(windows::Dispatch(), L"Member").ends_with("(0x80004003)"));
  answer = DISP_E_EXCEPTION;
  callee_.words = L" Grüße\r\nvon dort \n";
  EXPECT_EQ(causeOf(object_, L"Member"), "Member: Grüße  von dort (0x80070005)");
  EXPECT_EQ(granted, kFault);
}

TEST_F(DispatchTest, AnswersAndStatusesTellFailures) {
  using windows::FailsAt;
  windows::Variant result;
  for (const std::int32_t answer : {0, 5, kFault}) {
    SCOPED_TRACE(answer);
    callee_.onCall = [&](WORD, DISPPARAMS& parameters, VARIANT* answered) {
      if (parameters.cArgs > 0) *parameters.rgvarg[0].plVal = answer;
      if (answered != nullptr) answered->vt = VT_I4, answered->lVal = answer;
      return S_OK;
    };
    const base::Result strict = answer == 0 ? Done : Failed;
    EXPECT_EQ(object_.CallWithStatus(L"Member"), strict);
    EXPECT_EQ(object_.GetWithStatus(L"Member", result), strict);
    EXPECT_EQ(object_.CallChecked(FailsAt::AnyButZero, L"Member"), strict);
    EXPECT_EQ(object_.CallChecked(FailsAt::MinusOne, L"Member"), answer == kFault ? Failed : Done);
  }
  callee_.onCall = [](WORD, DISPPARAMS&, VARIANT*) { return S_OK; };
  EXPECT_EQ(object_.CallWithStatus(L"Member").cause, "Member: answered -1") << "a status that nobody sets";
}

TEST_F(DispatchTest, AnyKindOfNumberIsAResult) {
  VARIANT three{};
  three.vt = VT_I2;
  three.iVal = 3;
  for (const int kind : {+VT_I2, +VT_UI4, +VT_R8, VT_BYREF | VT_VARIANT, +VT_NULL, +VT_DISPATCH}) {
    callee_.onCall = [&](WORD flags, DISPPARAMS& parameters, VARIANT* result) {
      EXPECT_EQ(flags, DISPATCH_METHOD | DISPATCH_PROPERTYGET);
      EXPECT_EQ(parameters.cNamedArgs, 0U);
      *result = {};
      VariantChangeType(result, &three, 0, static_cast<VARTYPE>(kind));  // does nothing where the kind is no number
      result->vt = static_cast<VARTYPE>(kind);
      if (kind == (VT_BYREF | VT_VARIANT)) result->pvarVal = &three;
      return S_OK;
    };
    const bool isNumber = kind != VT_NULL && kind != VT_DISPATCH;
    EXPECT_EQ(object_.CallNumber(kFault, L"Member"), isNumber ? 3 : kFault) << kind;
  }
}

TEST_F(DispatchTest, PropertiesAreSetByTheirReservedName) {
  callee_.onCall = [](WORD kind, DISPPARAMS& parameters, VARIANT*) {
    EXPECT_EQ(kind, DISPATCH_PROPERTYPUT);
    EXPECT_EQ(parameters.cNamedArgs, 1U);
    EXPECT_EQ(parameters.rgdispidNamedArgs[0], DISPID_PROPERTYPUT);
    EXPECT_EQ(windows::TextOf(parameters.rgvarg[0].bstrVal), "value");
    return S_OK;
  };
  EXPECT_EQ(object_.Put(L"Member", std::string("value")), Done);
}

TEST(Components, AbsentOnesFailByName) {
  constexpr char kNotRegistered[] = "(0x800401F3)";
  const windows::ComApartment apartment;
  windows::Dispatch stranger(L"Tarsus.NoSuchComponent");
  EXPECT_FALSE(stranger);
  const std::string cause = stranger.Call(L"Member").cause;
  EXPECT_TRUE(cause.starts_with("Tarsus.NoSuchComponent.Member: ") && cause.ends_with(kNotRegistered)) << cause;
  windows::AdoCatalogueTable catalogue;
  EXPECT_TRUE(catalogue.Open("no such provider", "TMESSAGE").cause.starts_with("ADODB.Connection.Open: "));
  EXPECT_EQ(catalogue.SetFilter("ID = 1"), Failed);
  EXPECT_TRUE(catalogue.AtEnd());
  EXPECT_EQ(catalogue.StringField(), std::nullopt);
  catalogue.Close();
  const base::Outcome compacted = windows::DaoDatabaseCompactor().Compact("C:\\none.mdb", "C:\\other.mdb", "");
  EXPECT_TRUE(compacted.cause.starts_with("C:\\none.mdb: DAO.DBEngine.")) << compacted.cause;
}

}  // namespace
