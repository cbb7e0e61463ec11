// The host's path table: entries by name, and "%name%" at the head of a job item.
#pragma once

#include <string>

#include "app/Log.h"
#include "host/Libraries.h"

namespace app {

/// Reads the path-table entry `name`. A failure leaves `value` alone.
base::Outcome GetPathEntry(host::QX32& library, const std::string& name, std::string& value);

class PathTable {
 public:
  PathTable(host::QX32& library, Failures& failures) : library_(library), failures_(failures) {}

  /// The same for this table's library.
  base::Outcome GetPathEntry(const std::string& name, std::string& value) const {
    return app::GetPathEntry(library_, name, value);
  }

  /// The same, with the failure shown as message 60326.
  base::Outcome GetPathEntryOrShow(const std::string& name, std::string& value) const;

  /// Replaces everything up to the last "%" of `item` by the entry named between its first and its last "%". Text
  /// before the first "%" is dropped, so a variable means something at the start only, and there is one per item.
  /// `item` is left alone when it holds no "%". `variable`, where given, takes the name, and keeps what it had when
  /// there is none. An unknown name has been shown as message 60326 when this fails.
  base::Outcome ExpandPathVariable(std::string& item, std::string* variable = nullptr) const;
  /// The same, with nothing shown.
  base::Outcome ExpandQuietly(std::string& item, std::string* variable = nullptr) const;

 private:
  host::QX32& library_;
  Failures& failures_;
};

}  // namespace app
