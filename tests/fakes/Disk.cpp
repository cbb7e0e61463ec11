#include "fakes/Disk.h"

#include <algorithm>
#include <cctype>

namespace fakes {
namespace {

// The longest name of one file or folder.
constexpr std::size_t kLongestName = 255;

bool IsLonger(const std::string& text, std::size_t limit) {
  return text.size() > limit && Fold(text).size() > limit;  // each character is one byte or more
}

char UpperLetter(char letter) {
  return static_cast<char>(std::toupper(static_cast<unsigned char>(letter)));
}

std::vector<std::string> Components(const std::string& path) {
  std::vector<std::string> parts(1);
  for (char c : path) {
    if (c == '\\')
      parts.emplace_back();
    else
      parts.back().push_back(c);
  }
  std::erase(parts, "");
  return parts;
}

std::uint64_t UsedBytes(const Entry& entry) {
  std::uint64_t sum = entry.bytes.size();
  for (const auto& [key, child] : entry.children) sum += UsedBytes(*child);
  return sum;
}

void AddTree(const Entry& folder, const std::string& prefix, std::map<std::string, std::string>& tree) {
  for (const auto& [key, child] : folder.children) {
    if (child->isFolder)
      AddTree(*child, prefix + child->name + "\\", tree);
    else
      tree[prefix + child->name] = child->bytes;
  }
}

// Whether it is so of the entry, or of one below it.
template <class Question>
bool AnyOf(const Entry& entry, Question question) {
  return question(entry) ||
         std::ranges::any_of(entry.children, [&](const auto& child) { return AnyOf(*child.second, question); });
}

bool HasUsers(const Entry& entry) {
  return entry.readers + entry.writers > 0;
}

// Deletes what is not in use.
void DeleteWithin(Entry& folder) {
  std::erase_if(folder.children, [](const auto& child) {
    const bool stays = InUse(*child.second);
    if (stays) DeleteWithin(*child.second);
    return !stays;
  });
}

}  // namespace

bool IsTooLong(const std::string& path) {
  return IsLonger(path, kLongestPath);
}

bool IsOpen(const Entry& entry) {
  return AnyOf(entry, HasUsers);
}

bool InUse(const Entry& entry) {
  return AnyOf(entry, [](const Entry& each) { return HasUsers(each) || each.held != Held::Not; });
}

bool IsReadable(const Entry& entry) {
  return !entry.isFolder && entry.writers == 0 && entry.held != Held::AgainstAll;
}

bool IsReplaceable(const Entry& entry) {
  return !entry.isFolder && (entry.attributes & (kReadOnly | kHidden | kSystem)) == 0 && !InUse(entry);
}

bool IsAtOrBelow(const std::string& path, const std::string& folder) {
  return Fold(path + "\\").starts_with(Fold(folder.ends_with('\\') ? folder : folder + "\\"));
}

Drive& Disk::AddDrive(char letter, const std::string& label, std::uint64_t capacity) {
  Drive& drive = drives_[UpperLetter(letter)];
  drive = {label, capacity};
  drive.root->isFolder = true;
  return drive;
}

Drive* Disk::FindDrive(const std::string& path) {
  if (path.size() < 2 || path[1] != ':') return nullptr;
  const auto found = drives_.find(UpperLetter(path[0]));
  return found == drives_.end() ? nullptr : &found->second;
}

std::int64_t Disk::FreeSpace(const std::string& path) {
  const Drive* drive = FindDrive(path);
  if (drive == nullptr || !drive->ready) return -1;
  if (drive->capacity == kUnlimited) return INT64_MAX;
  const std::uint64_t used = UsedBytes(*drive->root);
  return used >= drive->capacity ? 0 : static_cast<std::int64_t>(drive->capacity - used);
}

bool Disk::Format(const std::string& path) {
  Drive* drive = FindDrive(path);
  if (drive == nullptr || !drive->ready || InUse(*drive->root)) return false;
  drive->root->children.clear();
  drive->label.clear();
  Flushed(path + "\\");
  Changed();
  return true;
}

std::string Disk::Absolute(const std::string& path) const {
  if (path.empty() || path.starts_with("\\\\")) return {};
  const bool hasDrive = path.size() > 1 && path[1] == ':';
  const char drive = UpperLetter(hasDrive ? path[0] : current_[0]);
  std::string inner = path.substr(hasDrive ? 2 : 0);
  if (!inner.starts_with('\\') && drive == current_[0]) inner = current_.substr(2) + "\\" + inner;
  std::vector<std::string> parts;
  for (std::string& part : Components(inner)) {
    const bool isUp = part == "..";
    if (isUp && !parts.empty()) parts.pop_back();
    if (isUp || part == ".") continue;
    part.erase(part.find_last_not_of(". ") + 1);  // Windows drops them
    if (part.empty() || part.find_first_of("<>\"/|?*:") != std::string::npos) return {};
    if (IsLonger(part, kLongestName)) return {};
    parts.push_back(part);
  }
  std::string absolute = {drive, ':'};
  for (const std::string& part : parts) absolute += "\\" + part;
  if (parts.empty()) absolute += "\\";
  return absolute;
}

std::shared_ptr<Entry> Disk::Find(const std::string& path) {
  const std::string absolute = Absolute(path);
  const Drive* drive = FindDrive(absolute);
  if (drive == nullptr || !drive->ready) return nullptr;
  std::shared_ptr<Entry> entry = drive->root;
  for (const std::string& part : Components(absolute.substr(2))) {
    const auto child = entry->children.find(Fold(part));
    if (child == entry->children.end()) return nullptr;
    entry = child->second;
  }
  return path.ends_with('\\') && !entry->isFolder ? nullptr : entry;
}

bool Disk::IsFile(const std::string& path) {
  const auto entry = Find(path);
  return entry && !entry->isFolder;
}

bool Disk::IsFolder(const std::string& path) {
  const auto entry = Find(path);
  return entry && entry->isFolder;
}

std::vector<std::shared_ptr<Entry>> Disk::Children(const std::string& folder) {
  std::vector<std::shared_ptr<Entry>> children;
  if (const auto entry = Find(folder))
    for (const auto& [key, child] : entry->children) children.push_back(child);
  return children;
}

std::string Disk::Read(const std::string& path) {
  const auto entry = Find(path);
  return entry ? entry->bytes : std::string();
}

const std::string* Disk::Open(const std::string& path) {
  const auto entry = Find(path);
  return entry && IsReadable(*entry) ? &entry->bytes : nullptr;
}

bool Disk::Hold(const std::string& path, Held how) {
  const auto entry = Find(path);
  if (entry) entry->held = how;
  return entry != nullptr;
}

std::pair<std::shared_ptr<Entry>, std::string> Disk::Place(const std::string& path) {
  const std::string absolute = Absolute(path);
  const std::size_t name = absolute.rfind('\\') + 1;
  const auto folder = name < absolute.size() ? Find(absolute.substr(0, name)) : nullptr;
  return {folder && folder->isFolder ? folder : nullptr, absolute.substr(name)};
}

bool Disk::MakeFolder(const std::string& path) {
  const auto [parent, name] = Place(path);
  if (!parent || parent->children.contains(Fold(name))) return false;
  auto& folder = parent->children[Fold(name)] = std::make_shared<Entry>();
  folder->name = name;
  folder->isFolder = true;
  folder->modified = ++writes_;
  Changed();
  return true;
}

bool Disk::MakeFolders(const std::string& path) {
  const std::string absolute = Absolute(path);
  if (IsFolder(absolute)) return true;
  const std::string parent = absolute.substr(0, absolute.rfind('\\') + 1);
  return parent != absolute && MakeFolders(parent) && MakeFolder(absolute);
}

std::shared_ptr<Entry> Disk::Create(const std::string& path) {
  const auto [parent, name] = Place(path);
  if (!parent || path.ends_with('\\')) return nullptr;
  auto& file = parent->children[Fold(name)];
  if (file && !IsReplaceable(*file)) return nullptr;
  if (!file) file = std::make_shared<Entry>();
  if (file->name.empty()) file->name = name;
  file->bytes.clear();
  file->flushed = false;
  file->modified = ++writes_;
  Changed();
  return file;
}

bool Disk::Append(const std::string& path, Entry& file, const std::string& bytes) {
  const Drive* drive = FindDrive(Absolute(path));
  if (drive == nullptr || !drive->ready) return false;
  const auto room = static_cast<std::uint64_t>(FreeSpace(Absolute(path)));
  const auto taken = static_cast<std::size_t>(std::min<std::uint64_t>(room, bytes.size()));
  file.modified = ++writes_;
  file.flushed = false;
  file.bytes.append(bytes, 0, taken / 2);
  Changed();
  file.bytes.append(bytes, taken / 2, taken - taken / 2);
  Changed();
  return taken == bytes.size();
}

std::shared_ptr<Entry> Disk::OpenEnd(const std::string& path) {
  auto file = Find(path);
  if (!file) return Create(path);
  const bool refused = file->isFolder || (file->attributes & kReadOnly) != 0 || InUse(*file);
  return refused ? nullptr : file;
}

bool Disk::Write(const std::string& path, const std::string& bytes) {
  const std::string absolute = Absolute(path);
  if (absolute.empty()) return false;
  MakeFolders(absolute.substr(0, absolute.rfind('\\') + 1));
  const auto file = Create(absolute);
  return file && Append(absolute, *file, bytes);
}

bool Disk::Copy(const std::string& source, const std::string& target) {
  const auto from = Find(source);
  if (!from || !IsReadable(*from) || from == Find(target)) return false;
  const auto to = Create(target);
  if (!to) return false;
  const bool whole = Append(target, *to, from->bytes);
  to->attributes = from->attributes;
  to->modified = from->modified;
  return whole;
}

bool Disk::Replace(const std::string& source, const std::string& target) {
  const auto existing = Find(target);
  const std::string copy = Absolute(target + "\\..") + "\\~copy";
  if (existing && (existing->isFolder || InUse(*existing))) return false;
  if (!Copy(source, existing ? copy : target)) {
    Remove(existing ? copy : target);
    return false;
  }
  if (!existing) return true;
  const auto [folder, name] = Place(target);
  const auto made = Find(copy);
  folder->children.erase(Fold(made->name));
  made->name = existing->name;
  folder->children[Fold(name)] = made;
  Changed();
  return true;
}

bool Disk::Move(const std::string& source, const std::string& target) {
  const auto [from, oldName] = Place(source);
  const auto [to, newName] = Place(target);
  const auto entry = Find(source);
  const auto existing = Find(target);
  if (!from || !to || !entry || InUse(*entry) || (existing && existing != entry)) return false;
  from->children.erase(Fold(oldName));
  entry->name = newName;
  to->children[Fold(newName)] = entry;
  Changed();
  return true;
}

bool Disk::MoveOver(const std::string& source, const std::string& target) {
  const auto [from, oldName] = Place(source);
  const auto [to, newName] = Place(target);
  const auto file = Find(source);
  const auto old = Find(target);
  if (!from || !to || !file || file->isFolder || InUse(*file)) return false;
  if (old && old != file && (old->isFolder || InUse(*old) || (old->attributes & kReadOnly) != 0)) return false;
  from->children.erase(Fold(oldName));
  file->name = old && old != file ? old->name : newName;
  to->children[Fold(newName)] = file;
  Flushed(source);
  Flushed(target);
  Changed();
  return true;
}

bool Disk::Flush(const std::string& path) {
  const auto file = Find(path);
  if (!file || file->isFolder) return false;
  file->flushed = true;
  Flushed(path);
  Changed();
  return true;
}

MediumBytes Disk::OnMedium(const std::string& path) {
  const auto file = Find(path);
  if (!file) return {};
  MediumBytes medium{file->flushed ? file->bytes : std::string(file->bytes.size(), '\0'), file->bytes.size()};
  const auto flaw = flaws_.find(Fold(Absolute(path)));
  if (flaw == flaws_.end() || medium.bytes.empty()) return medium;
  if (flaw->second == MediumFlaw::EndsInTheMiddle) medium.readable /= 2;
  char& middle = medium.bytes[medium.bytes.size() / 2];
  if (flaw->second == MediumFlaw::OtherBytes) middle = static_cast<char>(middle ^ 1);
  return medium;
}

bool Disk::Remove(const std::string& path) {
  const auto [parent, name] = Place(path);
  const auto entry = Find(path);
  if (!parent || !entry || IsAtOrBelow(current_, Absolute(path))) return false;
  const bool whole = !InUse(*entry);
  whole ? static_cast<void>(parent->children.erase(Fold(name))) : DeleteWithin(*entry);
  Changed();
  return whole;
}

bool Disk::SetCurrentFolder(const std::string& path) {
  if (!IsFolder(path)) return false;
  current_ = Absolute(path);
  if (afterEntering) afterEntering(current_);
  return true;
}

std::map<std::string, std::string> Disk::Tree(const std::string& folder) {
  std::map<std::string, std::string> tree;
  if (const auto entry = Find(folder)) AddTree(*entry, "", tree);
  return tree;
}

}  // namespace fakes
