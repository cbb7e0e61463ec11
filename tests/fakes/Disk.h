// The disks of an imaginary Windows computer, in memory.
//
// Everybody outside the program works on them directly: tests that set up and
// look, programs that the program starts, the host's components. The program
// itself goes through FakeFileSystem, whose calls are counted and can fail.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "fakes/Text.h"

namespace fakes {

inline constexpr unsigned kReadOnly = 1;
inline constexpr unsigned kHidden = 2;
inline constexpr unsigned kSystem = 4;

/// The longest path, in characters, that the classic calls of Windows take, and with them most programs. The disks hold
/// longer ones.
inline constexpr std::size_t kLongestPath = 259;
bool IsTooLong(const std::string& path);

/// How another program holds a file. Replacing means deleting and moving, too.
enum class Held { Not, AgainstReplacing, AgainstAll };

/// A file or a folder. Names keep their case and are found in any; entries stand in name order.
struct Entry {
  std::string name;
  bool isFolder = false;
  std::string bytes;
  unsigned attributes = 0;
  std::uint64_t modified = 0;  ///< counts the disk's changes; a copy keeps it
  bool flushed = false;        ///< its bytes are on the medium, and not in the system's cache alone
  int readers = 0;             ///< open handles: an open file can be neither deleted nor replaced
  int writers = 0;
  Held held = Held::Not;
  std::map<std::u32string, std::shared_ptr<Entry>> children;
};

/// Whether the file, or one below the folder, is open.
bool IsOpen(const Entry& entry);
/// Whether it is open or held, so that it can be neither replaced nor deleted.
bool InUse(const Entry& entry);
/// Whether this is a file that can be opened and read now.
bool IsReadable(const Entry& entry);
/// Whether this is a file that a program which creates files anew can write over. A mark is reason enough to be
/// refused.
bool IsReplaceable(const Entry& entry);

/// How a medium fails that takes everything it is given: nobody notices who reads from the system's cache.
enum class MediumFlaw {
  OtherBytes,      ///< it keeps something else
  EndsInTheMiddle  ///< the second half cannot be read
};

/// What a medium yields of a file.
struct MediumBytes {
  std::string bytes;
  std::size_t readable = 0;  ///< how many, from the beginning; behind them reading fails
};

/// Capacity of a drive that never fills, and whose contents are not added up for every write.
inline constexpr std::uint64_t kUnlimited = UINT64_MAX;

struct Drive {
  std::string label;
  std::uint64_t capacity = 0;  ///< bytes
  bool ready = true;           ///< false: no medium
  std::shared_ptr<Entry> root = std::make_shared<Entry>();
};

/// Whether an absolute path is the folder's own or one of something below it.
bool IsAtOrBelow(const std::string& path, const std::string& folder);

/// Paths are Windows paths in UTF-8, absolute or relative to the current folder. Calls that
/// answer bool return false when Windows would refuse.
class Disk {
 public:
  /// Runs whenever something has changed, and in the middle of every write: the place to look at what
  /// a crash at that moment would leave.
  std::function<void()> afterChange;
  /// Runs before that when what stands at a path, or that nothing stands there, has reached the medium for good: after
  /// Flush(), for both names of MoveOver(), and for the root of a drive that was formatted. Bytes that were not flushed
  /// are still missing then.
  std::function<void(const std::string& path)> afterFlush;
  /// Runs when a folder has been made current, by the program or for one that it starts.
  std::function<void(const std::string& folder)> afterEntering;

  Drive& AddDrive(char letter, const std::string& label, std::uint64_t capacity);
  /// The drive of a path such as "D:" or "D:\x"; null when there is none.
  Drive* FindDrive(const std::string& path);
  std::int64_t FreeSpace(const std::string& path);
  /// Removes everything from the medium, its label too.
  bool Format(const std::string& path);

  /// Drive, "\" and the cleaned components, of any number; empty for what cannot be a path.
  std::string Absolute(const std::string& path) const;
  /// Null when nothing stands there.
  std::shared_ptr<Entry> Find(const std::string& path);
  bool IsFile(const std::string& path);
  bool IsFolder(const std::string& path);
  /// The entries of a folder in name order.
  std::vector<std::shared_ptr<Entry>> Children(const std::string& folder);

  /// Contents of a file; empty when there is none.
  std::string Read(const std::string& path);
  /// What a program that opens the file finds in it; null when it cannot be opened.
  const std::string* Open(const std::string& path);
  /// From now on another program holds the file. False when there is none.
  bool Hold(const std::string& path, Held how = Held::AgainstAll);
  /// Replaces or creates a file and the folders above it. False when the disk is full or refuses.
  bool Write(const std::string& path, const std::string& bytes);
  bool MakeFolders(const std::string& path);
  /// Creates one folder in an existing one.
  bool MakeFolder(const std::string& path);
  /// The file at `path`, made empty, ready to be written to; its folder must exist. Null when refused.
  std::shared_ptr<Entry> Create(const std::string& path);
  /// Adds what fits to a file on the drive of `path`; false when not all did.
  bool Append(const std::string& path, Entry& file, const std::string& bytes);
  /// The file to be added to at its end, made where it is missing. Null when refused.
  std::shared_ptr<Entry> OpenEnd(const std::string& path);
  /// Writes into the target itself: when the disk is full, what did fit stands there.
  bool Copy(const std::string& source, const std::string& target);
  /// Writes beside an existing target, read-only or not, and puts that in its place: the target becomes the whole copy,
  /// or stays as it was.
  bool Replace(const std::string& source, const std::string& target);
  bool Move(const std::string& source, const std::string& target);
  /// Moves a file over an existing target, if any, in one step that has reached the medium.
  bool MoveOver(const std::string& source, const std::string& target);
  /// Brings a file's bytes and its name to the medium.
  bool Flush(const std::string& path);
  /// From now on the medium does so to whatever is written to this path.
  void Spoil(const std::string& path, MediumFlaw flaw) { flaws_[Fold(Absolute(path))] = flaw; }
  /// What the medium has of a file: of one that was not flushed, no more than its length.
  MediumBytes OnMedium(const std::string& path);
  /// Deletes a file or a whole folder, read-only or not. What is in use stays, with the folders above it.
  bool Remove(const std::string& path);

  const std::string& CurrentFolder() const { return current_; }
  bool SetCurrentFolder(const std::string& path);

  /// Every file below a folder: path from there, with "\", and contents. For comparing whole trees.
  std::map<std::string, std::string> Tree(const std::string& folder);

 private:
  void Changed() const {
    if (afterChange) afterChange();
  }
  void Flushed(const std::string& path) const {
    if (afterFlush) afterFlush(Absolute(path));
  }
  /// The folder that holds or would hold `path`, null when there is none, and the last component.
  std::pair<std::shared_ptr<Entry>, std::string> Place(const std::string& path);

  std::map<char, Drive> drives_;
  std::map<std::u32string, MediumFlaw> flaws_;
  std::uint64_t writes_ = 0;
  std::string current_ = "C:\\";
};

}  // namespace fakes
