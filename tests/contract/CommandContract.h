// What the system's own commands do with files: those that the program has copy and join for it. The same scenes are
// played on the imaginary disks, whose commands the unit tests trust, and on a real Windows.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "fakes/Disk.h"

namespace contract {

/// A computer with a folder for one scene. Paths are relative to that folder, which is the current one of every
/// command.
struct CommandWorld {
  virtual ~CommandWorld() = default;
  /// Writes a file, and makes the folders above it.
  virtual void Write(const std::string& path, const std::string& bytes) = 0;
  virtual void MakeFolder(const std::string& path) = 0;
  /// `attributes`: of fakes::kReadOnly, kHidden and kSystem.
  virtual void Mark(const std::string& path, unsigned attributes) = 0;
  /// From now on another program holds the file, so that nobody can open it.
  virtual void Hold(const std::string& path) = 0;
  /// Runs "CMD /C" with this behind it, hidden and without input, and returns its exit code.
  virtual std::uint32_t Run(const std::string& command) = 0;
  /// Every file below a folder: its path from there, and its bytes.
  virtual std::map<std::string, std::string> Tree(const std::string& folder) = 0;
  virtual bool HasFolder(const std::string& path) = 0;
  virtual unsigned Attributes(const std::string& path) = 0;
  /// When the file was last written to, in a unit of this world.
  virtual std::uint64_t Modified(const std::string& path) = 0;
};

/// Comes from the program that the suite is linked into.
std::unique_ptr<CommandWorld> MakeCommandWorld();

/// One thing that is arranged before the command runs.
struct Deed {
  enum Kind { Write, Folder, Mark, Hold } kind;
  std::string path;
  unsigned attributes = 0;
};

struct CommandScene {
  const char* name;
  std::vector<Deed> before;
  std::string command;
  std::uint32_t code;
  std::vector<std::string> files;  ///< that are then below "To"
};

class CommandContract : public ::testing::TestWithParam<CommandScene> {};

}  // namespace contract
