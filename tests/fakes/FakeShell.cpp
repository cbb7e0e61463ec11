#include "fakes/FakeShell.h"

namespace fakes {
namespace {

// The shell's answer to a copy that did not come about.
constexpr std::int32_t kCopyRefused = 0x78;

}  // namespace

std::string FakeShell::BrowseForFolder(const std::string& title, const std::string& initialFolder) {
  lastTitle = title;
  lastInitialFolder = initialFolder;
  return calls_.Fails("Shell", "BrowseForFolder", initialFolder) ? std::string() : person_.AtBrowse();
}

std::string FakeShell::DesktopFolder() {
  return calls_.Fails("Shell", "DesktopFolder") ? std::string() : desktop;
}

std::int32_t FakeShell::CopyWithProgress(const std::string& source, const std::string& targetFolder,
                                         const std::string& title) {
  lastTitle = title;
  const std::string target = targetFolder + "\\" + source.substr(source.rfind('\\') + 1);
  if (calls_.Fails("Shell", "CopyWithProgress", source) || !disk_.IsFolder(targetFolder)) return kCopyRefused;
  return disk_.Copy(source, target) ? 0 : kCopyRefused;
}

bool FakeShell::OpenDocument(const std::string& fileName) {
  if (calls_.Fails("Shell", "OpenDocument", fileName)) return false;
  openedDocument = fileName;
  return true;
}

std::int32_t FakeShell::FormatDrive(std::uint32_t drive, std::uint32_t, std::uint32_t) {
  const std::string name = {static_cast<char>('A' + drive), ':'};
  if (calls_.Fails("Shell", "FormatDrive", name)) return -1;
  const std::int32_t result = person_.AtFormat();
  return result >= 0 && !disk_.Format(name) ? -1 : result;
}

}  // namespace fakes
