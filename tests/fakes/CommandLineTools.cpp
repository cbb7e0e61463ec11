#include "fakes/CommandLineTools.h"

#include <string_view>

#include "fakes/Text.h"

namespace fakes {
namespace {

// Beyond this length the command interpreter does nothing, and says so to nobody.
constexpr std::size_t kLongestCommand = 8191;

std::string FolderPart(const std::string& path) {
  return path.substr(0, path.rfind('\\') + 1);
}
std::string NamePart(const std::string& path) {
  return path.substr(path.rfind('\\') + 1);
}

enum class Subfolders { Told, Silent };

/// One run of xcopy with /S and /Y.
class Xcopy {
 public:
  static constexpr std::uint32_t kNothingFound = 1;
  static constexpr std::uint32_t kStopped = 4;

  Xcopy(Disk& disk, Subfolders failures) : disk_(disk), failures_(failures) {}

  std::uint32_t Run(const std::string& source, const std::string& target) {
    const bool wholeFolder = disk_.IsFolder(source);
    const std::string from = disk_.Absolute(wholeFolder ? source : FolderPart(source) + ".");
    const std::string to = disk_.Absolute(target);
    pattern_ = wholeFolder ? "*" : NamePart(source);
    // It asks whether a target that neither exists nor ends in "\" is a file or a folder; a hidden one gets no answer
    // and gives up.
    if (to.empty() || IsTooLong(from) || !disk_.IsFolder(from) || (!target.ends_with('\\') && !disk_.IsFolder(to)))
      return kStopped;
    if (IsAtOrBelow(to, from)) return kStopped;  // into itself
    if (!CopyFolder(from, to)) return kStopped;
    return found_ ? 0 : kNothingFound;
  }

 private:
  // False: it stops here.
  bool CopyFolder(const std::string& from, const std::string& to) {
    const auto entries = disk_.Children(from);
    for (const auto& entry : entries) {
      if (entry->isFolder || !FitsWildcard(entry->name, pattern_)) continue;
      const std::string file = from + "\\" + entry->name;
      if (IsTooLong(file)) return true;
      found_ = true;
      const bool passedOver = (entry->attributes & (kHidden | kSystem)) != 0;
      if (!passedOver && !CopyFile(file, to + "\\" + entry->name)) return false;
    }
    for (const auto& entry : entries) {
      if (!entry->isFolder) continue;
      const std::string below = "\\" + entry->name;
      if (IsTooLong(from + below)) return true;
      if (!CopyFolder(from + below, to + below) && failures_ == Subfolders::Told) return false;
    }
    return true;
  }

  bool CopyFile(const std::string& source, const std::string& target) {
    if (IsTooLong(target) || disk_.Open(source) == nullptr) return false;
    if (!disk_.MakeFolders(FolderPart(target)) || !disk_.Copy(source, target)) return false;
    disk_.Find(target)->attributes &= ~kReadOnly;
    return true;
  }

  Disk& disk_;
  const Subfolders failures_;
  std::string pattern_;
  bool found_ = false;
};

std::uint32_t CopyBinary(Disk& disk, const Words& words) {
  std::string bytes;
  for (std::size_t i = 4; i + 1 < words.size(); ++i) {
    if (words[i] == "+") continue;
    const std::string* const piece = IsTooLong(disk.Absolute(words[i])) ? nullptr : disk.Open(words[i]);
    if (piece == nullptr) return 1;
    bytes += *piece;
  }
  return !IsTooLong(disk.Absolute(words.back())) && disk.Write(words.back(), bytes) ? 0 : 1;
}

// Adds a file under its path, which is the one from the current folder. False when it cannot be taken.
bool AddMember(Disk& disk, const std::string& path, CabinetMembers& members) {
  const auto file = disk.Find(path);
  if (!file || !IsReadable(*file) || path.size() > kLongestMemberPath) return false;
  members.push_back({path, file->bytes, file->attributes, file->modified});
  return members.size() <= kMostMembers;
}

// Adds what fits, from the folder and all below it. `prefix` is the folder, with its "\".
bool AddMembers(Disk& disk, const std::string& prefix, const std::string& pattern, CabinetMembers& members) {
  for (const auto& entry : disk.Children(prefix)) {
    const std::string path = prefix + entry->name;
    const bool taken = entry->isFolder ? AddMembers(disk, path + "\\", pattern, members)
                                       : !FitsWildcard(entry->name, pattern) || AddMember(disk, path, members);
    if (!taken) return false;
  }
  return true;
}

std::uint32_t Pack(Disk& disk, const Words& words) {
  CabinetMembers members;
  for (std::size_t i = 5; i < words.size(); ++i) {
    if (words[i].starts_with('@') || words[i].starts_with('-')) return 1;  // no file of that name
    const std::string item = words[i].starts_with(".\\") ? words[i].substr(2) : words[i];
    const bool hasPattern = item.find('*') != std::string::npos;
    if (!(hasPattern ? AddMembers(disk, FolderPart(item), NamePart(item), members) : AddMember(disk, item, members)))
      return 1;
  }
  if (members.empty()) return 1;
  if (disk.Write(words[4], MakeCabinetOf(members))) return 0;
  disk.Remove(words[4]);
  return 1;
}

// Files have their marks when all is written: a later member of one path is written over an earlier one.
std::uint32_t Unpack(Disk& disk, const Words& words) {
  const std::string* const cabinet = disk.Open(words[4]);
  const auto members = cabinet == nullptr ? std::nullopt : ReadCabinetMembers(*cabinet);
  if (!members) return 1;
  const std::string folder = words.size() > 5 ? words[5] + "\\" : "";
  for (const CabinetMember& member : *members)
    if (!disk.Write(folder + member.path, member.bytes)) return 1;
  for (const CabinetMember& member : *members) {
    const auto file = disk.Find(folder + member.path);
    file->attributes = member.attributes;
    file->modified = member.modified;
  }
  return 0;
}

// Puts the value of a variable of the environment in the place of its name, between quotes, too.
std::string Expanded(std::string word) {
  constexpr std::string_view kName = "%TEMP%";
  constexpr std::string_view kValue = "C:\\Users\\Operator\\Temp";
  for (std::size_t at = 0; (at = word.find('%', at)) != std::string::npos; ++at)
    if (SameFold(word.substr(at, kName.size()), std::string(kName))) word.replace(at, kName.size(), kValue);
  return word;
}

std::uint32_t Interpret(Disk& disk, Words words, Subfolders failures) {
  for (std::string& word : words) word = Expanded(word);
  std::size_t length = 0;
  for (const std::string& word : words) length += word.size() + 1;
  if (length > kLongestCommand) return 0;
  if (words.size() < 4 || !SameFold(words[1], "/C")) return 1;
  if (SameFold(words[2], "xcopy")) {
    const bool hasSwitches = words.size() == 7 && SameFold(words[5] + words[6], "/S/Y");
    return hasSwitches ? Xcopy(disk, failures).Run(words[3], words[4]) : Xcopy::kStopped;
  }
  return SameFold(words[2], "copy") && SameFold(words[3], "/B") ? CopyBinary(disk, words) : 1;
}

}  // namespace

std::uint32_t RunCommandInterpreter(Disk& disk, const Words& words) {
  return Interpret(disk, words, Subfolders::Told);
}

std::uint32_t RunSilentCommandInterpreter(Disk& disk, const Words& words) {
  return Interpret(disk, words, Subfolders::Silent);
}

std::uint32_t RunCabarc(Disk& disk, const Words& words) {
  if (words.size() < 5 || words[1] != "-r" || words[2] != "-p") return 1;
  if (words[3] == "n") return Pack(disk, words);
  return words[3] == "X" ? Unpack(disk, words) : 1;
}

std::uint32_t RunReg(Disk& disk, const Words& words) {
  if (words.size() != 4 || words[1] != "save") return 1;
  return !IsTooLong(disk.Absolute(words[3])) && disk.Write(words[3], "registry of " + words[2]) ? 0 : 1;
}

}  // namespace fakes
