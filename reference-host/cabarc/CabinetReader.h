// Opens a cabinet, hands out the data of its folders, and extracts its members.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "cabarc/CabFormat.h"
#include "cabarc/FileAccess.h"
#include "cabarc/Progress.h"
#include "cabarc/Status.h"
#include "unpack/FolderReader.h"

namespace cabarc {

struct ReadOptions {
  unsigned threads = 1;         ///< at least 1
  bool allowUnchecked = false;  ///< accept blocks without a checksum
};

class CabinetReader {
 public:
  /// Opens `path` and checks all records (see ReadStructure). To be called once, first.
  Status Open(const std::string& path);

  const Structure& Records() const { return structure_; }

  /// Reads all data of a guarded cabinet once, without unpacking them, and compares them with the folders' CRCs.
  /// Succeeds for other cabinets: nothing vouches for them as a whole.
  Status CheckGuards();

  /// Refuses a folder that is packed by a method that is not supported.
  Status CheckMethod(std::size_t index) const;

  /// Unpacks all data of the folder of that index into `sink`, which gets only data whose checksum was right. Succeeds
  /// where the sink ends it.
  Status ReadFolder(std::size_t index, const ReadOptions& options, const unpack::Sink& sink);

 private:
  FileSource source_;
  Structure structure_;
  std::unique_ptr<unpack::FolderReader> folders_;  // its threads serve one folder after the other
};

/// Refuses methods that are not supported.
Status CheckSupported(Method method);

/// What is wrong with a member whose name is malformed.
Status MalformedName(const Member& member);

struct ExtractOptions {
  ReadOptions read;
  bool keepPaths = false;  ///< make the folders that the names give; otherwise only the last part of a name counts
  bool overwrite = false;  ///< replace files that are there; otherwise one such file stops the extraction
  std::vector<std::string> names;  ///< what to extract, "*" and "?" allowed; all when empty
  std::string target;              ///< the folder; empty is the current one
  Progress* progress = nullptr;    ///< learns what was unpacked, where somebody wants to know
};

/// Extracts from an open cabinet. Everything that can be known is examined before the first file is written: unsafe
/// names, two that are the same, and names that match nothing are refused, methods that are not supported, whatever is
/// in the way; and of a cabinet of this archiver, all data. A file appears under its name only when it is complete.
/// `extracted` counts the files that do, also when the extraction fails later.
Status Extract(CabinetReader& reader, const ExtractOptions& options, std::size_t& extracted);

}  // namespace cabarc
