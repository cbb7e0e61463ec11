// Finds the files that a packing command means, and writes a cabinet of them.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "cabarc/CabFormat.h"
#include "cabarc/Platform.h"
#include "cabarc/Status.h"

namespace cabarc {

/// A file to pack.
struct SourceFile {
  std::string path;  ///< where to read it
  std::string name;  ///< what the cabinet is to call it; UTF-8, parts separated by "\"; not yet examined
  platform::FileInfo info;
};

class FileTree {
 public:
  struct Options {
    bool recurse = false;    ///< look for matches in subfolders too
    bool keepPaths = false;  ///< names keep their folders, as the argument and the subfolders give them
  };

  /// `excluded`: a file that wildcards never find, the cabinet itself. Nor do they find what a killed run left
  /// unfinished.
  FileTree(Options options, std::string_view excluded);

  /// Adds the files of one argument: a file, a folder (all in it), or wildcards in the last part of a path. Files of
  /// a folder come in the order of their names, before those of its subfolders. Wildcards may match nothing.
  Status Add(std::string_view argument);

  const std::vector<SourceFile>& Files() const { return files_; }
  /// Folders with nothing in them that were come by. A cabinet cannot hold them.
  const std::vector<std::string>& EmptyFolders() const { return emptyFolders_; }

 private:
  Status AddFolder(const std::string& folder, std::string_view pattern);
  bool IsExcluded(const std::string& path, const platform::FileInfo& info) const;
  void AddFile(const std::string& path, const platform::FileInfo& info);

  const Options options_;
  const std::string excluded_;
  const std::uint64_t excludedSize_;
  std::vector<SourceFile> files_;
  std::vector<std::string> emptyFolders_;
};

struct PackOptions {
  Method method = Method::MsZip;
  unsigned threads = 1;  ///< at least 1; has no influence on the bytes that are written
};

/// Lays out a cabinet of `files` in their order: sizes and places of the members, folders without their data. Refuses
/// what the format cannot hold, unsafe names, and two files of the same name.
Status PlanRecords(const std::vector<SourceFile>& files, Method method, Structure& structure);

/// Packs `files` into the cabinet `path`, which replaces a file of that name only when it is complete. A file that
/// changed since it was listed is an error. `size` gets the cabinet's size in bytes.
Status WriteCabinet(const std::vector<SourceFile>& files, const std::string& path, const PackOptions& options,
                    std::uint32_t& size);

}  // namespace cabarc
