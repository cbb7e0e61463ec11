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
  std::function<HRESULT(WORD kind, DISPPARAMS& parameters, VARIANT* result)> onCall;
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
  STDMETHODIMP Invoke(DISPID, REFIID, LCID, WORD kind, DISPPARAMS* parameters, VARIANT* result, EXCEPINFO*,
                      UINT*) override {
    return onCall(kind, *parameters, result);
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

TEST_F(DispatchTest, AFailedCallLeavesTheTargetsAlone) {
  callee_.onCall = [](WORD, DISPPARAMS& parameters, VARIANT*) -> HRESULT {
    EXPECT_EQ(*parameters.rgvarg[0].plVal, -1) << "what the target holds goes along";
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
    EXPECT_EQ(object_.CallNumber(-1, L"Member"), isNumber ? 3 : -1) << kind;
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
  EXPECT_EQ(object_.Put(L"Member", std::string("value")), S_OK);
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
