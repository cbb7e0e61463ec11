#include "fakes/Disk.h"

#include <algorithm>
#include <cctype>
#include <functional>

#include "fakes/Text.h"

namespace fakes {
namespace {

// The longest path that the classic calls of Windows take.
constexpr std::size_t kLongestPath = 259;

char UpperLetter(char letter) {
  return static_cast<char>(std::toupper(static_cast<unsigned char>(letter)));
}

std::vector<std::string> Components(const std::string& path) {
  std::vector<std::string> parts(1);
  for (char c : path) {
    if (c == '\\' || c == '/')
      parts.emplace_back();
    else
      parts.back().push_back(c);
  }
  std::erase(parts, "");
  return parts;
}

bool IsDots(const std::string& part) {
  return part == "." || part == "..";
}

// Windows drops blanks and dots at the end of a name.
std::string Cleaned(std::string part) {
  if (IsDots(part)) return part;
  part.erase(part.find_last_not_of(". ") + 1);
  return part;
}

std::uint64_t UsedBytes(const Entry& entry) {
  std::uint64_t sum = entry.bytes.size();
  for (const auto& [key, child] : entry.children) sum += UsedBytes(*child);
  return sum;
}

bool InUse(const Entry& entry) {
  if (entry.readers + entry.writers > 0) return true;
  return std::any_of(entry.children.begin(), entry.children.end(),
                     [](const auto& child) { return InUse(*child.second); });
}

bool IsAtOrBelow(const std::string& path, const std::string& folder) {
  const std::u32string inner = Fold(path + "\\");
  const std::u32string outer = Fold(folder.ends_with('\\') ? folder : folder + "\\");
  return inner.starts_with(outer);
}

void AddTree(const Entry& folder, const std::string& prefix, std::map<std::string, std::string>& tree) {
  for (const auto& [key, child] : folder.children) {
    if (child->isFolder)
      AddTree(*child, prefix + child->name + "\\", tree);
    else
      tree[prefix + child->name] = child->bytes;
  }
}

}  // namespace

Drive& Disk::AddDrive(char letter, const std::string& label, std::uint64_t capacity) {
  Drive& drive = drives_[UpperLetter(letter)];
  drive.label = label;
  drive.capacity = capacity;
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
  if (drive == nullptr || !drive->ready || !drive->writable || InUse(*drive->root)) return false;
  drive->root->children.clear();
  drive->label.clear();
  Changed();
  return true;
}

std::string Disk::Absolute(const std::string& path) const {
  std::string whole = path;
  const bool hasDrive = path.size() > 1 && path[1] == ':';
  if (path.empty() || path.starts_with("\\\\")) return {};
  if (!hasDrive && (path[0] == '\\' || path[0] == '/')) whole = current_.substr(0, 2) + path;
  if (!hasDrive && whole == path) whole = current_ + "\\" + path;
  const bool driveRelative = hasDrive && (path.size() == 2 || (path[2] != '\\' && path[2] != '/'));
  if (driveRelative && UpperLetter(path[0]) == current_[0]) whole = current_ + "\\" + path.substr(2);
  if (std::isalpha(static_cast<unsigned char>(whole[0])) == 0) return {};
  std::vector<std::string> parts;
  for (const std::string& raw : Components(whole.substr(2))) {
    const std::string part = Cleaned(raw);
    if (part.empty() || part.find_first_of("<>\"|?*:") != std::string::npos) return {};
    if (!IsDots(part)) parts.push_back(part);
    if (part == ".." && !parts.empty()) parts.pop_back();
  }
  std::string absolute = {UpperLetter(whole[0]), ':'};
  for (const std::string& part : parts) absolute += "\\" + part;
  if (parts.empty()) absolute += "\\";
  return absolute.size() > kLongestPath ? std::string() : absolute;
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
  const bool namesFolder = path.ends_with('\\') || path.ends_with('/');
  return namesFolder && !entry->isFolder ? nullptr : entry;
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

std::shared_ptr<Entry> Disk::Parent(const std::string& path, std::string& name) {
  const std::string absolute = Absolute(path);
  const std::size_t cut = absolute.rfind('\\');
  if (cut == std::string::npos || cut + 1 == absolute.size()) return nullptr;
  name = absolute.substr(cut + 1);
  const Drive* drive = FindDrive(absolute);
  auto parent = Find(absolute.substr(0, cut + 1));
  return parent && parent->isFolder && drive != nullptr && drive->writable ? parent : nullptr;
}

bool Disk::MakeFolder(const std::string& path) {
  std::string name;
  const auto parent = Parent(path, name);
  if (!parent || parent->children.contains(Fold(name))) return false;
  auto folder = std::make_shared<Entry>();
  folder->name = name;
  folder->isFolder = true;
  parent->children[Fold(name)] = folder;
  Changed();
  return true;
}

bool Disk::MakeFolders(const std::string& path) {
  const std::string absolute = Absolute(path);
  if (absolute.empty()) return false;
  for (std::size_t cut = absolute.find('\\', 3); cut != std::string::npos; cut = absolute.find('\\', cut + 1))
    MakeFolder(absolute.substr(0, cut));
  return IsFolder(absolute) || MakeFolder(absolute);
}

std::shared_ptr<Entry> Disk::Create(const std::string& path) {
  std::string name;
  const auto parent = Parent(path, name);
  if (!parent || path.ends_with('\\')) return nullptr;
  auto& file = parent->children[Fold(name)];
  if (file && (file->isFolder || (file->attributes & kReadOnly) != 0 || InUse(*file))) return nullptr;
  if (!file) file = std::make_shared<Entry>();
  if (file->name.empty()) file->name = name;
  file->bytes.clear();
  file->attributes |= kArchive;
  Changed();
  return file;
}

bool Disk::Append(const std::string& path, Entry& file, const std::string& bytes) {
  const Drive* drive = FindDrive(Absolute(path));
  if (drive == nullptr || !drive->ready || !drive->writable) return false;
  const auto room = static_cast<std::uint64_t>(FreeSpace(Absolute(path)));
  const auto taken = static_cast<std::size_t>(std::min<std::uint64_t>(room, bytes.size()));
  file.bytes.append(bytes, 0, taken / 2);
  Changed();
  file.bytes.append(bytes, taken / 2, taken - taken / 2);
  Changed();
  return taken == bytes.size();
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
  if (!from || from->isFolder || from->writers > 0 || from == Find(target)) return false;
  const auto to = Create(target);
  if (!to) return false;
  to->attributes = from->attributes | kArchive;
  return Append(target, *to, from->bytes);
}

bool Disk::Move(const std::string& source, const std::string& target) {
  std::string oldName;
  std::string newName;
  const auto from = Parent(source, oldName);
  const auto to = Parent(target, newName);
  const auto entry = Find(source);
  const auto existing = Find(target);
  if (!from || !to || !entry || InUse(*entry) || (existing && existing != entry)) return false;
  const bool otherDrive = Absolute(source)[0] != Absolute(target)[0];
  if (otherDrive && FreeSpace(target) < static_cast<std::int64_t>(entry->bytes.size())) return false;
  from->children.erase(Fold(oldName));
  entry->name = newName;
  to->children[Fold(newName)] = entry;
  Changed();
  return true;
}

bool Disk::Remove(const std::string& path) {
  std::string name;
  const auto parent = Parent(path, name);
  const auto entry = Find(path);
  if (!parent || !entry || InUse(*entry) || IsAtOrBelow(current_, Absolute(path))) return false;
  parent->children.erase(Fold(name));
  Changed();
  return true;
}

bool Disk::SetCurrentFolder(const std::string& path) {
  if (!IsFolder(path)) return false;
  current_ = Absolute(path);
  return true;
}

std::map<std::string, std::string> Disk::Tree(const std::string& folder) {
  std::map<std::string, std::string> tree;
  if (const auto entry = Find(folder)) AddTree(*entry, "", tree);
  return tree;
}

}  // namespace fakes
