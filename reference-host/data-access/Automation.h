// What the classes of this server share: members that callers find by name, their arguments, and failures.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "com/Automation.h"

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
  bool Number(std::size_t index, std::int32_t& number) const;

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

/// Base of every class.
class AutomationObject : public reference::DispatchObject {
 public:
  STDMETHODIMP Invoke(DISPID id, REFIID interfaceId, LCID locale, WORD kind, DISPPARAMS* parameters, VARIANT* result,
                      EXCEPINFO* exception, UINT* badArgument) override;

 protected:
  explicit AutomationObject(std::span<const Member> members) : members_(members) {}

  /// Carries out a call of one of the members; `writes` is true for a property's new value,
  /// which is then the last argument. `result` is empty and may stay so.
  virtual Outcome Call(DISPID id, bool writes, const Arguments& arguments, VARIANT& result) = 0;

 private:
  DISPID IdOf(const wchar_t* name) const override;
  const Member* Find(DISPID id, WORD kind) const;

  std::span<const Member> members_;
};

void SetFlag(VARIANT& result, bool flag);
/// Hands over the caller's reference.
void SetObject(VARIANT& result, IDispatch* object);

/// Error numbers of data access live in Automation's own range, as callers test them.
constexpr HRESULT ErrorNumber(unsigned number) {
  return static_cast<HRESULT>(0x800A0000U | number);
}

inline constexpr Outcome kBadArgument{ErrorNumber(3001),
                                      L"An argument is of the wrong type, out of range, or in conflict."};
inline constexpr Outcome kNoCurrentRecord{ErrorNumber(3021), L"There is no current record."};
inline constexpr Outcome kNotSupported{ErrorNumber(3251), L"The object does not support this operation."};
inline constexpr Outcome kItemNotFound{ErrorNumber(3265),
                                       L"There is no item of that name or number in the collection."};
inline constexpr Outcome kClosed{ErrorNumber(3704), L"The operation is not allowed when the object is closed."};
inline constexpr Outcome kAlreadyOpen{ErrorNumber(3705), L"The operation is not allowed when the object is open."};
inline constexpr Outcome kCannotConnect{ErrorNumber(3706), L"The database cannot be opened."};
inline constexpr Outcome kStatementFailed{E_FAIL, L"The database refused the statement."};

// The database engine's own.
inline constexpr Outcome kFileMissing{ErrorNumber(3024), L"The database file cannot be found."};
inline constexpr Outcome kFileExists{ErrorNumber(3204), L"The target database already exists."};
inline constexpr Outcome kNotADatabase{ErrorNumber(3343), L"The file is not a database, or cannot be copied."};
inline constexpr Outcome kFileInUse{ErrorNumber(3356),
                                    L"The database is open elsewhere and cannot be opened exclusively."};

}  // namespace dataaccess
