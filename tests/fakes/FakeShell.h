// The Windows shell, whose dialogs the scripted operator answers.
#pragma once

#include "fakes/CallCounter.h"
#include "fakes/Disk.h"
#include "fakes/ScriptedOperator.h"
#include "host/Shell.h"

namespace fakes {

class FakeShell : public host::Shell {
 public:
  FakeShell(Disk& disk, CallCounter& calls, ScriptedOperator& person) : disk_(disk), calls_(calls), person_(person) {}
  std::string desktop = "C:\\Users\\Operator\\Desktop";
  std::string lastTitle;  ///< of the browser or the progress window
  std::string openedDocument;

  std::string BrowseForFolder(const std::string& title, const std::string& initialFolder) override {
    lastTitle = title;
    return Fails(__func__, initialFolder) ? "" : person_.AtBrowse();
  }
  std::string DesktopFolder() override { return Fails(__func__) ? "" : desktop; }
  std::int32_t CopyWithProgress(const std::string& source, const std::string& targetFolder,
                                const std::string& title) override {
    lastTitle = title;
    const std::string target = targetFolder + "\\" + source.substr(source.rfind('\\') + 1);
    const bool copied = !Fails(__func__, source) && disk_.IsFolder(targetFolder) && disk_.Copy(source, target);
    return copied ? 0 : kCopyRefused;
  }
  bool OpenDocument(const std::string& fileName) override {
    if (Fails(__func__, fileName)) return false;
    openedDocument = fileName;
    return true;
  }
  /// Empties the medium when the operator lets it.
  std::int32_t FormatDrive(std::uint32_t drive, std::uint32_t /*formatId*/, std::uint32_t /*options*/) override {
    const std::string name = {static_cast<char>('A' + drive), ':'};
    if (Fails(__func__, name)) return -1;
    const std::int32_t result = person_.AtFormat();
    return result >= 0 && !disk_.Format(name) ? -1 : result;
  }

 private:
  static constexpr std::int32_t kCopyRefused = 0x78;  ///< the shell's answer to a copy that did not come about
  bool Fails(const char* method, const std::string& detail = {}) { return calls_.Fails("Shell", method, detail); }

  Disk& disk_;
  CallCounter& calls_;
  ScriptedOperator& person_;
};

}  // namespace fakes
