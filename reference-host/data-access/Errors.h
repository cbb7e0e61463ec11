// The failures that callers of these classes know, with the numbers that they know them by.
#pragma once

#include "data-access/Automation.h"

namespace dataaccess {

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
