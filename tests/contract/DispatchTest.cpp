// Late-bound calls, against an object that notes how it was called.
#include "windows/adapters/Dispatch.h"

#include <gtest/gtest.h>

#include <functional>

#include "windows/adapters/AdoCatalogueTable.h"
#include "windows/adapters/Components.h"
#include "windows/adapters/DaoDatabaseCompactor.h"

namespace {

/// Knows one member, "Member", and hands each call to `onCall`.
class Callee final : public IDispatch {
 public:
  explicit Callee(bool& alive) : alive_(alive) { alive_ = true; }

  std::function<HRESULT(WORD kind, DISPPARAMS& parameters, VARIANT* result)> onCall;

  STDMETHODIMP QueryInterface(REFIID, void**) override { return E_NOINTERFACE; }
  STDMETHODIMP_(ULONG) AddRef() override { return ++references_; }
  STDMETHODIMP_(ULONG) Release() override {
    const ULONG left = --references_;
    if (left == 0) delete this;
    return left;
  }
  STDMETHODIMP GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
  STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR* names, UINT, LCID, DISPID* ids) override {
    *ids = 1;
    return std::wstring(*names) == L"Member" ? S_OK : DISP_E_UNKNOWNNAME;
  }
  STDMETHODIMP Invoke(DISPID, REFIID, LCID, WORD kind, DISPPARAMS* parameters, VARIANT* result, EXCEPINFO*,
                      UINT*) override {
    return onCall(kind, *parameters, result);
  }

 private:
  ~Callee() { alive_ = false; }

  bool& alive_;
  ULONG references_ = 1;
};

class DispatchTest : public ::testing::Test {
 protected:
  windows::ComApartment apartment_;
  bool alive_ = false;
  Callee* callee_ = new Callee(alive_);
  windows::Dispatch object_{windows::DispatchPointer(callee_)};
};

TEST_F(DispatchTest, ArgumentsArriveAndComeBack) {
  callee_->onCall = [](WORD kind, DISPPARAMS& parameters, VARIANT* result) -> HRESULT {
    EXPECT_EQ(kind, DISPATCH_METHOD | DISPATCH_PROPERTYGET);
    EXPECT_EQ(parameters.cNamedArgs, 0U);
    if (parameters.cArgs != 4) return DISP_E_BADPARAMCOUNT;
    EXPECT_EQ(parameters.rgvarg[3].lVal, 42);  // the last argument comes first
    EXPECT_EQ(windows::TextOf(parameters.rgvarg[2].bstrVal), "Grüße");
    EXPECT_EQ(parameters.rgvarg[1].vt, VT_BYREF | VT_I4);
    EXPECT_EQ(*parameters.rgvarg[1].plVal, 5);
    *parameters.rgvarg[1].plVal = 6;
    EXPECT_EQ(parameters.rgvarg[0].vt, VT_BYREF | VT_BSTR);
    *parameters.rgvarg[0].pbstrVal = windows::NewBstr("zurück");
    result->vt = VT_I4;
    result->lVal = 7;
    return S_OK;
  };
  std::int32_t number = 5;
  std::string text;
  const std::string secret = "Grüße";
  EXPECT_EQ(object_.CallNumber(-1, L"Member", 42, windows::Secret{secret}, windows::OutNumber{number},
                               windows::OutText{text}),
            7);
  EXPECT_EQ(number, 6);
  EXPECT_EQ(text, "zurück");
}

TEST_F(DispatchTest, AFailedCallLeavesTheTargetsAlone) {
  callee_->onCall = [](WORD, DISPPARAMS& parameters, VARIANT*) -> HRESULT {
    *parameters.rgvarg[0].plVal = 0;
    return E_FAIL;
  };
  std::int32_t granted = -1;
  EXPECT_EQ(object_.CallNumber(-1, L"Member", windows::OutNumber{granted}), -1);
  EXPECT_EQ(object_.CallNumber(-2, L"Stranger", windows::OutNumber{granted}), -2);
  EXPECT_EQ(windows::Dispatch().CallNumber(-3, L"Member", windows::OutNumber{granted}), -3);
  EXPECT_EQ(granted, -1);
}

TEST_F(DispatchTest, AnyKindOfNumberIsAResult) {
  VARIANT inner{};
  inner.vt = VT_I2;
  inner.iVal = 3;
  VARIANT results[6]{};
  results[0].vt = VT_I2;
  results[0].iVal = 3;
  results[1].vt = VT_UI4;
  results[1].ulVal = 3;
  results[2].vt = VT_BYREF | VT_VARIANT;
  results[2].pvarVal = &inner;
  results[3].vt = VT_R8;
  results[3].dblVal = 3.0;
  results[4].vt = VT_NULL;
  results[5].vt = VT_DISPATCH;
  for (const VARIANT& value : results) {
    callee_->onCall = [&](WORD, DISPPARAMS&, VARIANT* result) {
      *result = value;
      return S_OK;
    };
    const bool isNumber = value.vt != VT_NULL && value.vt != VT_DISPATCH;
    EXPECT_EQ(object_.CallNumber(-1, L"Member"), isNumber ? 3 : -1) << value.vt;
  }
}

TEST_F(DispatchTest, PropertiesAreSetByTheirReservedName) {
  callee_->onCall = [](WORD kind, DISPPARAMS& parameters, VARIANT*) {
    EXPECT_EQ(kind, DISPATCH_PROPERTYPUT);
    EXPECT_EQ(parameters.cNamedArgs, 1U);
    EXPECT_EQ(parameters.rgdispidNamedArgs[0], DISPID_PROPERTYPUT);
    EXPECT_EQ(windows::TextOf(parameters.rgvarg[0].bstrVal), "value");
    return S_OK;
  };
  EXPECT_EQ(object_.Put(L"Member", std::string("value")), S_OK);
}

TEST_F(DispatchTest, TheObjectIsReleasedOnce) {
  EXPECT_TRUE(alive_);
  object_ = windows::Dispatch();
  EXPECT_FALSE(alive_);
}

TEST(Components, AbsentOnesAreNullOrFail) {
  const windows::ComApartment apartment;
  windows::Dispatch stranger(L"Tarsus.NoSuchComponent");
  EXPECT_FALSE(stranger);
  windows::AdoCatalogueTable catalogue;
  EXPECT_EQ(catalogue.Open("no such provider", "TMESSAGE"), -1);
  EXPECT_EQ(catalogue.SetFilter("ID = 1"), -1);
  EXPECT_TRUE(catalogue.AtEnd());
  EXPECT_EQ(catalogue.StringField(), std::nullopt);
  catalogue.Close();
  EXPECT_EQ(windows::DaoDatabaseCompactor().Compact("C:\\none.mdb", "C:\\other.mdb", ""), -1);
}

}  // namespace
