// What a cabinet says of itself, against what was put into it or came out of it.
//
// The archiver is a program of the host's, and it can say that all went well when it did not.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "work/Programs.h"

namespace backupset {

/// Sizes of files in bytes, by their paths from some folder on.
using FileSizes = std::map<std::string, std::uint64_t>;

/// The files below a folder, as an archive is to hold them or has brought them.
struct FileTree {
  FileSizes sizes;
  std::size_t emptyFolders = 0;  ///< which no archive can hold
};

/// Everything in `folder`, which ends in "\", and in all folders below it but the one directly in it that is named
/// `leftOut`. Serves the user interface after each folder. Fails when one of them cannot be listed.
base::Outcome ListTree(const work::Tools& tools, const std::string& folder, const std::string& leftOut, FileTree& tree);

/// Takes the files out of the tree whose paths are longer than a cabinet can hold, and returns them.
std::vector<std::string> TakeOutLongNames(FileTree& tree);

/// Whether a cabinet can hold these files, as far as that can be told before they are packed.
base::Outcome CheckLimits(const FileTree& tree);

/// Whether the file `archive` is a whole cabinet that holds these files, by names and sizes, with all its data as they
/// were packed. The cause of a failure says what it is instead.
base::Outcome CheckWhole(const work::Tools& tools, const std::string& archive, const FileTree& tree);

/// Reads what the cabinet `archive` holds, and walks all its data. A failure says what is damaged.
base::Outcome ReadWhole(const work::Tools& tools, const std::string& archive, FileSizes& members);

/// Whether everything that is in the cabinet `archive` has come out of it. `tree` may hold more.
base::Outcome CheckUnpacked(host::FileSystem& files, const std::string& archive, const FileTree& tree);

}  // namespace backupset
