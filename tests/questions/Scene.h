// What the questions share: a folder of their own, and programs that are hidden and read nothing, like those that the
// program starts.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>

#include "windows/adapters/Win32.h"

namespace questions {

namespace fs = std::filesystem;

/// An empty folder below the temporary one, which is current as long as this lives, and goes with it.
class Scene {
 public:
  Scene();
  ~Scene();
  Scene(const Scene&) = delete;
  Scene& operator=(const Scene&) = delete;

  const fs::path& Folder() const { return folder_; }
  /// The exit code of a command; nothing when it does not start, or is ended because it takes longer than ten seconds.
  std::optional<std::uint32_t> Run(const std::string& command);

 private:
  fs::path before_ = fs::current_path();
  fs::path folder_;
};

void WriteFile(const fs::path& path, const std::string& bytes);
std::string ReadFile(const fs::path& path);

/// A drive that whoever asks has made for this, as "V:", from the environment; empty where there is none.
std::string DriveFor(const wchar_t* variable);

}  // namespace questions
