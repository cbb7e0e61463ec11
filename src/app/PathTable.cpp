// The host's path table.
#include "app/PathTable.h"

#include "base/Text.h"

namespace app {

base::Outcome GetPathEntry(host::QX32& library, const std::string& name, std::string& value) {
  std::string entry;
  const base::Outcome read = library.GetString(name, host::QX32::kPathEntrySize, entry);
  if (!read.IsDone()) return base::Failure("path-table entry \"" + name + "\": " + read.cause);
  value = base::CutAtNul(entry);
  return base::Result::Done;
}

base::Outcome PathTable::GetPathEntryOrShow(const std::string& name, std::string& value) const {
  const base::Outcome read = GetPathEntry(name, value);
  if (!read.IsDone()) failures_.Show(read, MessageId::PathEntryUnreadable);
  return read;
}

base::Outcome PathTable::ExpandQuietly(std::string& item, std::string* variable) const {
  const std::size_t first = item.find('%');
  if (first == std::string::npos) return base::Result::Done;
  const std::size_t last = item.rfind('%');
  // A single "%" names nothing, and the path table knows no such name.
  const std::string name = last > first ? item.substr(first + 1, last - first - 1) : std::string();
  if (variable != nullptr) *variable = name;
  std::string value;
  if (base::Outcome read = GetPathEntry(name, value); !read.IsDone()) return read;
  item = value + item.substr(last + 1);
  return base::Result::Done;
}

base::Outcome PathTable::ExpandPathVariable(std::string& item, std::string* variable) const {
  base::Outcome expanded = ExpandQuietly(item, variable);
  if (!expanded.IsDone()) failures_.Show(expanded, MessageId::PathEntryUnreadable);
  return expanded;
}

}  // namespace app
