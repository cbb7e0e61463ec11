// Opens a cabinet, and hands out the data of its folders.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "cabarc/BufferedInput.h"
#include "cabarc/CabFormat.h"
#include "cabarc/Status.h"

namespace cabinet {

struct ReadOptions {
  unsigned threads = 1;         ///< at least 1
  bool allowUnchecked = false;  ///< accept blocks without a checksum
};

class CabinetReader {
 public:
  /// Takes the next piece of a folder's data; a failure ends the reading.
  using Sink = std::function<Status(const std::uint8_t* data, std::size_t size)>;

  CabinetReader();
  ~CabinetReader();

  /// Opens `path` and checks all records (see ReadRecords). To be called once, first.
  Status Open(const std::string& path);

  const CabinetRecords& Records() const { return records_; }

  /// Reads all data of a guarded cabinet once, without unpacking them, and compares them with the folders' CRCs.
  /// Succeeds for other cabinets: nothing vouches for them as a whole.
  Status CheckGuards();

  /// Unpacks all data of the folder of that index into `sink`, which gets only data whose checksum was right. After
  /// a failure the reader must not be used again.
  Status ReadFolder(std::size_t index, const ReadOptions& options, const Sink& sink);

 private:
  class Unpacking;

  std::uint64_t EndOfFolder(std::size_t index) const;

  platform::File file_;
  std::optional<BufferedInput> input_;
  CabinetRecords records_;
  std::unique_ptr<Unpacking> unpacking_;  // its threads serve one folder after the other
};

}  // namespace cabinet
