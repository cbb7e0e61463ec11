// Folders of a disk.
#include "set-check/Folder.h"

#include <algorithm>

#include "base/Path.h"
#include "cabarc/FileAccess.h"

namespace setcheck {
namespace {

namespace platform = cabarc::platform;

class DiskFolder : public Folder {
 public:
  base::Obtained<cabinet::Source> Open(const Entry& file) override { return OpenFile(Below(path, file.name)); }
};

bool IsOfUse(const platform::FolderEntry& entry) {
  return entry.info.kind == platform::Kind::File || entry.info.kind == platform::Kind::Folder;
}

}  // namespace

const Entry* Folder::Find(const std::string& name) const {
  const Entry* found = nullptr;
  for (const Entry& entry : entries) {
    if (entry.isFolder || !base::SameName(entry.name, name)) continue;
    if (!found || entry.name == name) found = &entry;
  }
  return found;
}

base::Obtained<Folder> OpenFolder(const std::string& path) {
  std::vector<platform::FolderEntry> listed;
  if (!platform::ListFolder(path, listed)) return base::Failure("it cannot be listed: " + platform::LastError());
  auto folder = std::make_unique<DiskFolder>();
  folder->path = path;
  for (platform::FolderEntry& entry : listed) {
    if (!IsOfUse(entry)) continue;
    folder->entries.push_back({std::move(entry.name), entry.info.kind == platform::Kind::Folder, entry.info.size});
  }
  std::ranges::sort(folder->entries, {}, &Entry::name);
  return folder;
}

base::Obtained<cabinet::Source> OpenFile(const std::string& path) {
  auto source = std::make_unique<cabarc::FileSource>();
  if (const cabarc::Status opened = source->Open(path); opened.Failed()) return base::Failure(opened.text);
  return source;
}

std::string Below(const std::string& folder, const std::string& name) {
  const bool ends = folder.ends_with('/') || folder.ends_with(platform::kSeparator);
  return folder + (ends ? "" : std::string(1, platform::kSeparator)) + name;
}

}  // namespace setcheck
