// Files and folders.
//
// Paths are Windows paths in UTF-8; relative ones are taken from the current
// folder. Doubled separators are accepted. Names match without regard to case.
// Calls that report return 0, or -1 when the system raised an error.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace host {

/// One entry of a folder; "." and ".." never appear.
struct FolderEntry {
  std::string name;
  bool isFolder = false;
  std::uint64_t size = 0;  ///< bytes; 0 for a folder
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
  /// Writes `text` as it stands, without a line end. Returns -1 when not all of it reached the file.
  virtual std::int32_t Write(const std::string& text) = 0;
  /// Flushes and closes. Returns -1 when that fails; later calls do nothing.
  virtual std::int32_t Close() = 0;
};

class BinaryReader {
 public:
  virtual ~BinaryReader() = default;
  /// Reads up to `count` bytes; returns how many, 0 at the end, -1 on an error.
  virtual std::int64_t Read(std::byte* data, std::size_t count) = 0;
};

class BinaryWriter {
 public:
  virtual ~BinaryWriter() = default;
  /// Returns -1 when not every byte was written.
  virtual std::int32_t Write(const std::byte* data, std::size_t count) = 0;
  virtual std::int32_t Close() = 0;
};

class FileSystem {
 public:
  virtual ~FileSystem() = default;

  virtual bool FileExists(const std::string& path) = 0;
  virtual bool FolderExists(const std::string& path) = 0;
  /// Length in bytes, -1 when the file cannot be examined.
  virtual std::int64_t FileSize(const std::string& path) = 0;

  /// The entries whose names match `pattern` ("*" and "?"), in the order in which the
  /// file system gives them, hidden ones included. An unreadable folder yields -1 and no entries.
  virtual std::int32_t List(const std::string& folder, const std::string& pattern,
                            std::vector<FolderEntry>& entries) = 0;

  /// Null when the file cannot be opened.
  virtual std::unique_ptr<TextReader> OpenText(const std::string& path) = 0;
  /// Opens at the end and creates a missing file; null on failure.
  virtual std::unique_ptr<TextWriter> AppendText(const std::string& path) = 0;
  /// Creates the file anew; null on failure.
  virtual std::unique_ptr<TextWriter> CreateText(const std::string& path) = 0;
  virtual std::unique_ptr<BinaryReader> OpenBinary(const std::string& path) = 0;
  virtual std::unique_ptr<BinaryWriter> CreateBinary(const std::string& path) = 0;

  /// Deletes one file, read-only or not.
  virtual std::int32_t RemoveFile(const std::string& path) = 0;
  /// Deletes a folder with all that is in it, read-only or not.
  virtual std::int32_t RemoveFolder(const std::string& path) = 0;
  /// Moves or renames a file; an existing target is an error.
  virtual std::int32_t MoveTo(const std::string& source, const std::string& target) = 0;
  /// Copies one file over an existing target, if any. Copied onto itself it stays as it is.
  virtual std::int32_t CopyTo(const std::string& source, const std::string& target) = 0;
  /// Clears all attributes (read-only, hidden, system, archive).
  virtual std::int32_t ClearAttributes(const std::string& path) = 0;
  /// Creates one folder; its parent must exist and it must not.
  virtual std::int32_t MakeFolder(const std::string& path) = 0;
  /// The same, for data that others must not read: with what comes into it later, the folder is open to the
  /// signed-in Windows user, the administrators and the system alone, where the file system knows rights.
  virtual std::int32_t MakePrivateFolder(const std::string& path) = 0;

  /// The process's current folder, without a trailing "\" unless it is a root.
  virtual std::string CurrentFolder() = 0;
  /// Makes a folder, with its drive, current.
  virtual std::int32_t SetCurrentFolder(const std::string& path) = 0;

  /// The system's folder for temporary files; empty when it cannot be had.
  virtual std::string TemporaryFolder() = 0;
};

}  // namespace host
