// Copies that are held against what they were made of.
//
// xcopy leaves things out without a word: hidden and system files, empty folders, paths that are too long for it. It
// stops at the first file in use and leaves the rest, and some versions answer 0 all the same. So both sides are walked
// after it, and what is missing is copied here.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>

#include "host/FileSystem.h"
#include "work/Programs.h"

namespace work {

/// How the files looked that were copied, so that a later change can be told.
class CopiedFiles {
 public:
  void Note(const std::string& path, const host::FolderEntry& entry);

  /// Whether `path` was copied and has not changed since. Nothing when it is not known here.
  std::optional<bool> IsUnchanged(const std::string& path, const host::FolderEntry& now) const;

 private:
  struct Look {
    std::uint64_t size = 0;
    std::uint64_t modified = 0;
  };
  std::map<std::u32string, Look> files_;
};

/// Whether two paths name one file, as far as their letters tell: in any case, and with "\" doubled or not.
bool IsSamePath(const std::string& left, const std::string& right);

struct CopyResult {
  base::Outcome command;    ///< of xcopy, as CopyFileByXcopy
  std::size_t files = 0;    ///< that are there as they should be
  std::size_t missing = 0;  ///< files and folders that are not: named in the log

  /// Whether anything came of it.
  bool Produced() const { return command.IsDone() || files > 0; }
};

/// CopyFileByXcopy for a file or a file pattern; every file that fits it must then be there in its size, its time and
/// with its read-only mark. With a pattern, as xcopy has it, also those in folders below. What is not there is copied;
/// each file that stays missing is a warning for `category`, up to a number, and then their count.
/// `noted`, where it is given, learns what was copied.
CopyResult CopyFilesChecked(const Tools& tools, const std::string& source, const std::string& destinationFolder,
                            const std::string& category, CopiedFiles* noted = nullptr);

/// CopyFolderByXcopy, held against the folder in the same way, with all below it.
CopyResult CopyFolderChecked(const Tools& tools, const std::string& sourceFolder, const std::string& destinationFolder,
                             const std::string& category, CopiedFiles* noted = nullptr);

}  // namespace work
