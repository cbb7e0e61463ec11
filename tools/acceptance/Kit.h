// The steps of the kit, and what they share.
#pragma once

#include <filesystem>
#include <map>
#include <string>

#include "acceptance/Report.h"
#include "acceptance/Running.h"

namespace acceptance {

struct Options {
  bool yes = false;  ///< asks nothing
  int part = 1;      ///< of each test program, one case of so many runs
};

class Kit {
 public:
  /// `folder` holds the kit: acceptance.exe with bin, contract and packages beside it. What it makes goes to its folder
  /// "work".
  Kit(std::filesystem::path folder, const Options& options);

  /// Writes how to undo all that follows, by hand, if need be. False when it cannot.
  bool WriteUndo();
  /// Virtual disks for the media E: and F:, and for V:, which may be filled. Drives that are there are taken as they
  /// are: whoever starts the kit has made them for it.
  void MakeMedia();
  /// What only Windows can answer.
  void Ask();
  /// Packs a folder of the demonstration, has Windows' own tool unpack it, and compares.
  void UnpackWithTheSystemsTool();
  /// Installs the demonstration and the program, and has the host check look.
  void Install();
  /// Ends the program in the middle of backups over an older set, and has what is left at the destination checked.
  void Kill();
  /// One test program with its own temporary folder; its path from the kit's folder.
  void RunTests(const std::string& name, const std::filesystem::path& program);
  /// Takes back whatever has been done, as the undo file does.
  void Undo();
  /// What remains for a person.
  void ListForAPerson();

  Report& TheReport() { return report_; }
  std::filesystem::path Work() const { return work_; }

 private:
  Ran RunHere(const std::wstring& command, const std::string& log, int minutes = 5) const;
  /// Passed when the command ends with `code`.
  bool Check(const std::string& what, const std::wstring& command, std::uint32_t code = 0, int minutes = 5);
  /// Every case of a test program, and whether it came to its end. `counts`: what its cases answer is right or wrong.
  void TellAll(const Ran& ran, bool counts);
  void Tell(const Case& one, bool counts);
  std::filesystem::path Package(const std::wstring& name) const;

  std::filesystem::path folder_;
  std::filesystem::path work_;
  Options options_;
  Report report_;
};

}  // namespace acceptance
