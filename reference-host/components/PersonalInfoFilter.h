// Tarsus.PersonalInfoFilter: copies files without what belongs to the patients
// on the host's deletion list.
#pragma once

#include "components/Component.h"
#include "components/PatientList.h"

namespace components {

/// Results of both filters: 0 done (also when there was nothing to copy), 1 the list cannot be
/// read, 2 the source does not exist, 3 a file could not be read or written.
///
/// Everything lands in the destination's folder of the source's own name, made with the first
/// file that is copied.
class PersonalInfoFilter final : public Component {
 public:
  PersonalInfoFilter();

  /// The path of the list's database file, or an ODBC connection string.
  void SetListDatabase(const std::string& path) { listDatabase_ = path; }
  void SetSource(const std::string& path);
  void SetDestination(const std::string& folder);

  /// Copies the *.ddo files below the source folder, but those of listed patients. With a file
  /// "range.txt" in the source, which holds a number of days ("-30"), only those changed since.
  std::int32_t FilterImages();

  /// Copies the source file, or the files directly in the source folder. Text files lose the
  /// lines that name a listed patient; a file that has such a name itself stays behind.
  std::int32_t FilterFiles();

 private:
  bool CopyImages(const PatientList& patients, const std::wstring& subFolder, const FILETIME& since) const;
  bool CopyFiltered(const PatientList& patients, const std::wstring& from, const std::wstring& toFolder,
                    const std::wstring& name) const;

  std::string listDatabase_;
  std::wstring source_, destination_;  // without and with a "\" at the end
};

}  // namespace components
