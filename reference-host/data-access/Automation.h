// What the classes of this server share: reference counting and late-bound calls without a type library.
#pragma once

#include <oaidl.h>

#include <atomic>
#include <span>
#include <string>
#include <vector>

#include "common/ServerUse.h"

namespace dataaccess {

/// How a call ended. A failure with a text reaches the caller as an exception with description.
struct Outcome {
  HRESULT code = S_OK;
  const wchar_t* text = nullptr;
};

/// A call's arguments in the order in which they are written, references followed. An argument
/// that was left out is not there, wherever it stands.
class Arguments {
 public:
  explicit Arguments(const DISPPARAMS& parameters);

  std::size_t Count() const { return arguments_.size(); }
  bool Has(std::size_t index) const;
  /// Null when the argument is not there.
  const VARIANT* At(std::size_t index) const;
  /// These leave the value alone when the argument is not there, and answer false when it is of another type.
  bool Text(std::size_t index, std::string& text) const;
  bool Number(std::size_t index, long& number) const;

 private:
  std::vector<const VARIANT*> arguments_;
};

/// A member that callers find by its name. A property that can be read and written stands in two
/// rows with the same ID.
struct Member {
  const wchar_t* name;
  DISPID id;
  WORD kinds;  ///< DISPATCH_METHOD, DISPATCH_PROPERTYGET, DISPATCH_PROPERTYPUT
  UINT fewest;
  UINT most;  ///< arguments, a property's new value included
};

/// Both ways in which callers read a property: scripts often ask for a method or a property at once.
inline constexpr WORD kRead = DISPATCH_PROPERTYGET | DISPATCH_METHOD;

/// Base of every class: begins with one reference.
class AutomationObject : public IDispatch {
 public:
  AutomationObject(const AutomationObject&) = delete;
  AutomationObject& operator=(const AutomationObject&) = delete;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override;
  ULONG STDMETHODCALLTYPE AddRef() override;
  ULONG STDMETHODCALLTYPE Release() override;
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override;
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID locale, ITypeInfo** info) override;
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID id, LPOLESTR* names, UINT count, LCID locale, DISPID* ids) override;
  HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID interfaceId, LCID locale, WORD kind, DISPPARAMS* parameters,
                                   VARIANT* result, EXCEPINFO* exception, UINT* badArgument) override;

 protected:
  explicit AutomationObject(std::span<const Member> members) : members_(members) {}
  virtual ~AutomationObject() = default;

  /// Carries out a call of one of the members; `writes` is true for a property's new value,
  /// which is then the last argument. `result` is empty and may stay so.
  virtual Outcome Call(DISPID id, bool writes, const Arguments& arguments, VARIANT& result) = 0;

 private:
  const Member* Find(DISPID id, WORD kind) const;

  std::span<const Member> members_;
  std::atomic<ULONG> references_{1};
  reference::ServerUse use_;
};

void SetText(VARIANT& result, const std::string& utf8);
void SetNumber(VARIANT& result, long number);
void SetFlag(VARIANT& result, bool flag);
/// Hands over the caller's reference.
void SetObject(VARIANT& result, IDispatch* object);

}  // namespace dataaccess
