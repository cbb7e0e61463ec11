// Everything the archiver asks of the operating system: files, folders, attributes, times, arguments, output.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "cabinet/Structure.h"

namespace cabarc {

using namespace cabinet;  // the archiver speaks of nothing else

}  // namespace cabarc

namespace cabarc::platform {

/// All paths are UTF-8 with this separator.
extern const char kSeparator;

enum class Kind { Missing, File, Folder, Link, Other };

struct FileInfo {
  Kind kind = Kind::Missing;
  std::uint64_t size = 0;
  std::uint64_t modified = 0;  ///< opaque; another value means that the file was written to
  DosStamp stamp;
  std::uint8_t attributes = 0;
};

struct FolderEntry {
  std::string name;
  FileInfo info;
};

/// An open file. Movable, closed on destruction. After a failure LastError() says why.
class File {
 public:
  File() = default;
  File(File&& other) noexcept : handle_(std::exchange(other.handle_, -1)) {}
  File& operator=(File&& other) noexcept {
    std::swap(handle_, other.handle_);
    return *this;
  }
  File(const File&) = delete;
  File& operator=(const File&) = delete;
  ~File() { Close(); }

  /// Opens an existing file for reading from its start to its end. Does not wait for the writer of a pipe; see Info.
  bool OpenForReading(const std::string& path);
  /// Makes a new file; fails when anything of that name exists, a link included.
  bool CreateNew(const std::string& path, std::uint8_t attributes);
  bool IsOpen() const;
  /// At most `size` bytes; fewer only at the end of the file. Nothing on failure.
  std::optional<std::size_t> Read(void* buffer, std::size_t size);
  bool Write(const void* data, std::size_t size);
  /// Sets the position, in bytes from the start.
  bool Seek(std::uint64_t position);
  std::optional<FileInfo> Info() const;
  /// Gives the file its final attributes and time of last change. A stamp that is no date is left out.
  bool SetAttributes(std::uint8_t attributes, DosStamp stamp);
  /// False when the system reports a late write error.
  bool Close();
  /// Closes a file made as `from` and gives it the name `to`, replacing one of that name, even a read-only one. After
  /// a failure it may still be called `from`.
  bool CloseAs(const std::string& from, const std::string& to);

 private:
  std::intptr_t handle_ = -1;
};

/// The arguments after the program's name, unchanged: wildcards are not expanded.
std::vector<std::string> Arguments(int count, char** values);
/// Writes text to the console, or as UTF-8 to whatever the output was redirected to. False when not all of it could be
/// written.
bool Print(std::string_view text, bool asError);
/// Whether somebody looks at what Print writes there.
bool IsTerminal(bool asError);
/// From now on a file made by File::CreateNew that is still open is removed when a signal or the console ends the
/// process. To be called once.
void RemoveUnfinishedWhenEnded();

/// `path` with "\" and "/" both turned into kSeparator.
std::string ToNative(std::string_view path);
/// `bytes` of the system's code page as UTF-8; on systems without one, of Windows code page 1252. Bytes that mean
/// nothing there become a replacement character.
std::string FromCodePage(std::string_view bytes);
/// `name` in the form under which the file system compares names (upper and lower case made equal).
std::string FoldName(std::string_view name);

/// What a path leads to, links followed.
FileInfo InfoOf(const std::string& path);
/// Whether two paths lead to one file.
bool IsSameFile(const std::string& one, const std::string& other);
/// What stands at a path itself: a link or reparse point is Kind::Link, wherever it leads.
Kind KindOf(const std::string& path);
/// The entries of a folder in no particular order, without "." and "..". A link to a file is given as that file;
/// a link to anything else as Kind::Link.
bool ListFolder(const std::string& path, std::vector<FolderEntry>& entries);
bool CreateFolder(const std::string& path);
bool Remove(const std::string& path);
/// Renames a file, replacing one of the new name, even a read-only one; but nothing that is no file.
bool Rename(const std::string& from, const std::string& to);

/// The system's text for the last failure of this thread.
std::string LastError();
/// A number that no other running process has.
unsigned ProcessNumber();

}  // namespace cabarc::platform
