#include "fakes/CommandLineTools.h"

#include <algorithm>
#include <charconv>
#include <string_view>

#include "fakes/Text.h"

namespace fakes {
namespace {

constexpr std::size_t kHeaderSize = 36;

// A number of `width` bytes, the lowest first.
std::string Number(std::size_t number, std::size_t width) {
  std::string bytes;
  for (; width > 0; --width, number >>= 8) bytes += static_cast<char>(number & 0xFF);
  return bytes;
}

// A length in decimal, a line feed, then that many bytes.
std::string Text(const std::string& text) {
  return std::to_string(text.size()) + "\n" + text;
}

// Takes a text off the head; whatever there is when it is none.
std::string TakeText(std::string_view& rest) {
  std::size_t size = 0;
  std::from_chars(rest.data(), rest.data() + rest.size(), size);
  rest.remove_prefix(std::min(rest.find('\n'), rest.size() - 1) + 1);
  const std::string text(rest.substr(0, size));
  rest.remove_prefix(text.size());
  return text;
}

// Beyond this length the command interpreter does nothing, and says so to nobody.
constexpr std::size_t kLongestCommand = 8191;

std::string FolderPart(const std::string& path) {
  return path.substr(0, path.rfind('\\') + 1);
}
std::string NamePart(const std::string& path) {
  return path.substr(path.rfind('\\') + 1);
}

// With /S and /Y. A target that neither exists nor ends in "\" makes xcopy ask whether it is a file or a
// folder; a hidden one gets no answer and gives up.
std::uint32_t Xcopy(Disk& disk, const Words& words) {
  if (words.size() != 7 || !SameFold(words[5] + words[6], "/S/Y")) return 4;
  const bool wholeFolder = disk.IsFolder(words[3]);
  const std::string from = disk.Absolute(wholeFolder ? words[3] : FolderPart(words[3]) + ".");
  const std::string to = disk.Absolute(words[4]);
  const std::string pattern = wholeFolder ? "*" : NamePart(words[3]);
  if (to.empty() || !disk.IsFolder(from) || (!words[4].ends_with('\\') && !disk.IsFolder(to))) return 4;
  if (IsAtOrBelow(to, from)) return 4;
  std::uint32_t copied = 0;
  for (const auto& [name, bytes] : disk.Tree(from)) {
    if (!FitsWildcard(NamePart(name), pattern)) continue;
    const std::string target = to + "\\" + name;
    if (!disk.MakeFolders(FolderPart(target)) || !disk.Copy(from + "\\" + name, target)) {
      disk.Remove(target);
      return 4;
    }
    disk.Find(target)->attributes &= ~kReadOnly;
    ++copied;
  }
  return copied > 0 ? 0 : 1;
}

std::uint32_t CopyBinary(Disk& disk, const Words& words) {
  std::string bytes;
  for (std::size_t i = 4; i + 1 < words.size(); ++i) {
    if (words[i] == "+") continue;
    if (!disk.IsFile(words[i])) return 1;
    bytes += disk.Read(words[i]);
  }
  return disk.Write(words.back(), bytes) ? 0 : 1;
}

std::uint32_t MakeCabinetFile(Disk& disk, const Words& words) {
  CabinetContents contents;
  for (std::size_t i = 5; i < words.size(); ++i) {
    if (words[i].starts_with('@') || words[i].starts_with('-')) return 1;  // no file of that name
    const std::string item = words[i].starts_with(".\\") ? words[i].substr(2) : words[i];
    if (item.find('*') != std::string::npos) {
      for (const auto& [name, bytes] : disk.Tree(FolderPart(item)))
        if (FitsWildcard(NamePart(name), NamePart(item))) contents[FolderPart(item) + name] = bytes;
    } else {
      if (!disk.IsFile(item)) return 1;
      contents[item] = disk.Read(item);
    }
  }
  if (contents.empty()) return 1;
  if (disk.Write(words[4], MakeCabinet(contents))) return 0;
  disk.Remove(words[4]);
  return 1;
}

std::uint32_t Unpack(Disk& disk, const Words& words) {
  const auto contents = ReadCabinet(disk.Read(words[4]));
  if (!contents) return 1;
  const std::string folder = words.size() > 5 ? words[5] + "\\" : "";
  for (const auto& [name, bytes] : *contents)
    if (!disk.Write(folder + name, bytes)) return 1;
  return 0;
}

}  // namespace

std::string MakeCabinet(const CabinetContents& contents) {
  std::string body;
  for (const auto& [path, bytes] : contents) body += Text(path) + Text(bytes);
  // The fields of a real header that somebody may look at: signature, size, number of files.
  return "MSCF" + Number(0, 4) + Number(kHeaderSize + body.size(), 4) + Number(0, 16) + Number(contents.size(), 2) +
         Number(0, 6) + body;
}

std::optional<CabinetContents> ReadCabinet(const std::string& bytes) {
  CabinetContents contents;
  std::string_view rest = bytes;
  rest.remove_prefix(std::min(kHeaderSize, bytes.size()));
  while (!rest.empty()) {
    const std::string path = TakeText(rest);
    contents[path] = rest.empty() ? "" : TakeText(rest);
  }
  return bytes == MakeCabinet(contents) ? std::optional(contents) : std::nullopt;
}

std::uint32_t RunCommandInterpreter(Disk& disk, const Words& words) {
  std::size_t length = 0;
  for (const std::string& word : words) length += word.size() + 1;
  if (length > kLongestCommand) return 0;
  if (words.size() < 4 || !SameFold(words[1], "/C")) return 1;
  if (SameFold(words[2], "xcopy")) return Xcopy(disk, words);
  return SameFold(words[2], "copy") && SameFold(words[3], "/B") ? CopyBinary(disk, words) : 1;
}

std::uint32_t RunCabarc(Disk& disk, const Words& words) {
  if (words.size() < 5 || words[1] != "-r" || words[2] != "-p") return 1;
  if (words[3] == "n") return MakeCabinetFile(disk, words);
  return words[3] == "X" ? Unpack(disk, words) : 1;
}

std::uint32_t RunReg(Disk& disk, const Words& words) {
  if (words.size() != 4 || words[1] != "save") return 1;
  return disk.Write(words[3], "registry of " + words[2]) ? 0 : 1;
}

}  // namespace fakes
