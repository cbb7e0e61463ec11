// Files and folders, and the drives that hold them.
//
// Paths are Windows paths in UTF-8; relative ones are taken from the current folder. Doubled separators are accepted.
// Names match without regard to case. The cause of a failure names the path and the system's error.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "base/Outcome.h"

namespace host {

/// One entry of a folder; "." and ".." never appear.
struct FolderEntry {
  std::string name;
  bool isFolder = false;
  std::uint64_t size = 0;      ///< bytes; 0 for a folder
  std::uint64_t modified = 0;  ///< when it was last written to, in 100 ns; grows with time, and a copy keeps it
  bool isLink = false;         ///< a link to another place: what stands behind it is not this folder's
  bool isReadOnly = false;
};

/// Reads a text file in the system's code page, line by line.
class TextReader {
 public:
  virtual ~TextReader() = default;
  /// Reads the next line without its end (CR LF or LF; the last line needs none).
  /// Returns false at the end of the file, and when it cannot be read on: Failed() then tells which.
  virtual bool ReadLine(std::string& line) = 0;
  /// Whether reading ended on an error, so that lines may be missing.
  virtual bool Failed() const = 0;
};

/// Writes a text file in the system's code page. The file is closed with the object.
class TextWriter {
 public:
  virtual ~TextWriter() = default;
  /// Writes `text` as it stands, without a line end. Fails when not all of it reached the file.
  virtual base::Outcome Write(const std::string& text) = 0;
  /// Flushes and closes; later calls do nothing.
  virtual base::Outcome Close() = 0;
};

class BinaryReader {
 public:
  virtual ~BinaryReader() = default;
  /// Reads up to `count` bytes; returns how many, 0 at the end, -1 on an error.
  virtual std::int64_t Read(std::byte* data, std::size_t count) = 0;
  /// Goes to the byte `offset`, counted from the beginning of the file; behind its end Read() returns 0. False when
  /// that is not possible, as with a reader that only goes on; the place is then as before.
  virtual bool Seek(std::uint64_t /*offset*/) { return false; }
};

class BinaryWriter {
 public:
  virtual ~BinaryWriter() = default;
  /// Fails when not every byte was written.
  virtual base::Outcome Write(const std::byte* data, std::size_t count) = 0;
  virtual base::Outcome Close() = 0;
};

class FileSystem {
 public:
  virtual ~FileSystem() = default;

  virtual bool FileExists(const std::string& path) = 0;
  virtual bool FolderExists(const std::string& path) = 0;
  /// Length in bytes, -1 when the file cannot be examined.
  virtual std::int64_t FileSize(const std::string& path) = 0;

  /// The entries whose names match `pattern` ("*" and "?"), in the order in which the
  /// file system gives them, hidden ones included. An unreadable folder yields no entries.
  virtual base::Outcome List(const std::string& folder, const std::string& pattern,
                             std::vector<FolderEntry>& entries) = 0;

  /// Others may go on writing to a file that is open for reading, rename it and delete it.
  virtual base::Obtained<TextReader> OpenText(const std::string& path) = 0;
  /// Opens at the end and creates a missing file.
  virtual base::Obtained<TextWriter> AppendText(const std::string& path) = 0;
  /// Creates the file anew.
  virtual base::Obtained<TextWriter> CreateText(const std::string& path) = 0;
  virtual base::Obtained<BinaryReader> OpenBinary(const std::string& path) = 0;
  /// The same, past the system's cache: what is read comes from the medium, for whoever must know what stands there.
  /// Fails where the system refuses that; a file system that knows no such reading, as that of another computer may
  /// be, reads as ever. Opening drops nothing that waits to be written: call Flush() before.
  virtual base::Obtained<BinaryReader> OpenUncached(const std::string& path) = 0;
  virtual base::Obtained<BinaryWriter> CreateBinary(const std::string& path) = 0;
  /// Opens at the end and creates a missing file.
  virtual base::Obtained<BinaryWriter> AppendBinary(const std::string& path) = 0;
  /// Returns when all that was written to a file, which must exist, has reached its medium. The file may be read-only.
  virtual base::Outcome Flush(const std::string& path) = 0;

  /// Deletes one file, read-only or not.
  virtual base::Outcome RemoveFile(const std::string& path) = 0;
  /// Deletes a folder with all that is in it, read-only or not. Of a link, the folder itself or one in it, nothing but
  /// the link goes; what stands behind it stays.
  virtual base::Outcome RemoveFolder(const std::string& path) = 0;
  /// Moves or renames a file; an existing target is an error.
  virtual base::Outcome MoveTo(const std::string& source, const std::string& target) = 0;
  /// Moves or renames a file within its volume, over an existing target, if any, in one step that has reached the
  /// medium when the call returns: at no time is there no target. When it fails, both stay; a target that is read-only
  /// or in use, and a folder, are refused.
  virtual base::Outcome MoveOver(const std::string& source, const std::string& target) = 0;
  /// Copies one file, its attributes and its time over an existing target, if any, read-only or not; a target that
  /// cannot be replaced stays as it was. Copied onto itself it stays as it is.
  virtual base::Outcome CopyTo(const std::string& source, const std::string& target) = 0;
  /// Makes a file read-only.
  virtual base::Outcome SetReadOnly(const std::string& path) = 0;
  /// Creates one folder; its parent must exist and it must not.
  virtual base::Outcome MakeFolder(const std::string& path) = 0;
  /// The same, for data that others must not read: with what comes into it later, the folder is open to the
  /// signed-in Windows user, the administrators and the system alone, where the file system knows rights. A folder, a
  /// file or a link that has the name already may be somebody else's: that is a failure.
  virtual base::Outcome MakePrivateFolder(const std::string& path) = 0;

  /// The process's current folder, without a trailing "\" unless it is a root.
  virtual std::string CurrentFolder() = 0;
  /// Makes a folder, with its drive, current.
  virtual base::Outcome SetCurrentFolder(const std::string& path) = 0;

  /// The system's folder for temporary files; empty when it cannot be had.
  virtual std::string TemporaryFolder() = 0;
};

/// A drive is named by its letter and ":", such as "A:".
class Drives {
 public:
  virtual ~Drives() = default;

  /// Whether the drive exists and holds a volume that can be read.
  virtual bool IsReady(const std::string& drive) = 0;
  /// Bytes that this user may still write; -1 when the drive is not ready.
  virtual std::int64_t FreeSpace(const std::string& drive) = 0;
  /// The volume's label; nothing when it cannot be read.
  virtual std::optional<std::string> VolumeLabel(const std::string& drive) = 0;
  virtual base::Outcome SetVolumeLabel(const std::string& drive, const std::string& label) = 0;
};

}  // namespace host
