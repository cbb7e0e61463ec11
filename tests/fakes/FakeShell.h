// The Windows shell, whose dialogs the scripted operator answers.
#pragma once

#include "fakes/CallCounter.h"
#include "fakes/Disk.h"
#include "fakes/ScriptedOperator.h"

namespace fakes {

class FakeShell : public host::Shell {
 public:
  FakeShell(Disk& disk, CallCounter& calls, ScriptedOperator& person) : disk_(disk), calls_(calls), person_(person) {}
  std::string desktop = "C:\\Users\\Operator\\Desktop";
  std::string lastTitle;          ///< of the browser or the progress window
  std::string lastInitialFolder;  ///< of the browser
  std::string openedDocument;

  std::string BrowseForFolder(const std::string& title, const std::string& initialFolder) override;
  std::string DesktopFolder() override;
  std::int32_t CopyWithProgress(const std::string& source, const std::string& targetFolder,
                                const std::string& title) override;
  bool OpenDocument(const std::string& fileName) override;
  /// Empties the medium when the operator lets it.
  std::int32_t FormatDrive(std::uint32_t drive, std::uint32_t formatId, std::uint32_t options) override;

 private:
  Disk& disk_;
  CallCounter& calls_;
  ScriptedOperator& person_;
};

}  // namespace fakes
