// The host's list of patients whose data must not leave the workstation, and texts without them.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace components {

class PatientList {
 public:
  /// Reads T_DELETE_PATIENT (PATIENT_ID, PATIENT_NAME). `database` is the path of its file or
  /// an ODBC connection string. Nothing when it cannot be read.
  static std::optional<PatientList> Read(const std::string& database);

  /// Whether `text` holds a listed ID or name as whole words, without regard to case.
  bool IsNamedIn(std::wstring_view text) const;
  /// Whether `fileName` begins with a listed ID, as image files do ("P000017_00034.ddo").
  bool OwnsImage(std::wstring_view fileName) const;

 private:
  void AddTo(std::vector<std::wstring>& list, const std::optional<std::string>& entry) const;

  std::vector<std::wstring> ids_, names_;  // in lower case, none empty
};

/// `bytes` without the lines that `isUnwanted` picks; the lines that stay keep their bytes and
/// line ends. Knows UTF-16 with a byte order mark, UTF-8, and the system's code page. Nothing
/// when `bytes` is no text (it holds NUL bytes).
std::optional<std::string> WithoutLines(std::string_view bytes,
                                        const std::function<bool(std::wstring_view line)>& isUnwanted);

}  // namespace components
