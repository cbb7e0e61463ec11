// What a power cut can leave of a folder while the system's cache holds back what was written and not flushed.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "fakes/Disk.h"

namespace fakes {

enum class Loss {
  None,       ///< all that was written came through
  Unflushed,  ///< nothing came through that was not flushed
  AllButOne,  ///< one change came through, and what was done before it did not
};

/// Files that are there after the cut, by their paths below the folder.
struct Remains {
  Loss loss = Loss::None;
  std::map<std::string, std::string> files;
};

/// Watches a folder with all that is below it, from now on; what stands there is on the medium. It takes the disk's
/// `afterFlush`, and must live as long as the disk is used.
class PowerCut {
 public:
  using Files = std::map<std::string, std::string>;

  PowerCut(Disk& disk, std::string folder);
  ~PowerCut() { disk_.afterFlush = nullptr; }
  PowerCut(const PowerCut&) = delete;
  PowerCut& operator=(const PowerCut&) = delete;

  /// What has come to the medium for certain.
  const Files& Flushed() const { return flushed_; }
  /// All that a cut at this moment can leave, each once. A file whose writing is lost is as it was before, or it is
  /// empty, or it has its length and nothing in it; a deletion that is lost never was.
  std::vector<Remains> Now() const;

 private:
  enum class Lost { Writing, Bytes, Contents };
  static constexpr Lost kEveryLost[] = {Lost::Writing, Lost::Bytes, Lost::Contents};

  /// Takes over what stands at the path, and below it.
  void Settle(const std::string& path);
  /// Paths whose changes may be lost.
  std::vector<std::string> Pending(const Files& now) const;
  void Lose(Files& files, const std::string& path, Lost how) const;

  Disk& disk_;
  const std::string folder_;  ///< absolute, with its "\"
  Files flushed_;
};

}  // namespace fakes
