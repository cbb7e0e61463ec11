// What every host::FileSystem must do. The same suite runs on the file system in memory that the unit tests use and on
// the real one, so that the former cannot promise what the latter does not keep.
#pragma once

#include <gtest/gtest.h>

#include <chrono>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "fakes/Printing.h"
#include "host/FileSystem.h"

namespace contract {

using enum base::Result;

/// A file system with an empty folder for one test, removed afterwards.
struct FileSystemWorld {
  virtual ~FileSystemWorld() = default;
  virtual host::FileSystem& Files() = 0;
  virtual std::string Folder() = 0;  ///< ends in "\"
  virtual void MakeReadOnly(const std::string& path) = 0;
  /// Hides an item from a person's view, where this world knows that.
  virtual void Hide(const std::string& path) = 0;
  /// Whether the words behind the path in a failure's cause are what they must be in this world.
  virtual bool Explains(const std::string& words) = 0;
};

/// Comes from the program that the suite is linked into.
std::unique_ptr<FileSystemWorld> MakeWorld();

using Texts = std::vector<std::string>;

class FileSystemContract : public ::testing::Test {
 protected:
  host::FileSystem& Files() { return world_->Files(); }
  /// A path in the test's folder.
  std::string At(const std::string& name) { return world_->Folder() + name; }
  void MakeReadOnly(const std::string& path) { world_->MakeReadOnly(path); }
  void Hide(const std::string& path) { world_->Hide(path); }
  /// Long enough for two times of writing to differ.
  static void Pause() { std::this_thread::sleep_for(std::chrono::milliseconds(30)); }

  /// Whether a step on `path` has failed and its cause says why: the path, and the system's error behind it.
  testing::AssertionResult Fails(const base::Outcome& step, const std::string& path);

  /// Bytes in and out, past every conversion.
  void Put(const std::string& path, const std::string& bytes);
  std::string Contents(const std::string& path);
  /// All from the reader's place on, up to `atOnce` bytes by each call.
  static std::string Read(host::BinaryReader& reader, std::size_t atOnce);
  /// Names that `pattern` finds, sorted; a failure adds "!".
  Texts Names(const std::string& folder, const std::string& pattern = "*");
  /// What its folder tells of an item; an empty name when it is not listed.
  host::FolderEntry EntryOf(const std::string& name);

 private:
  std::unique_ptr<FileSystemWorld> world_ = MakeWorld();
};

}  // namespace contract
