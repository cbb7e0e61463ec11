// What the questions share: a folder of their own, and programs started as the program starts them.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>

#include "windows/adapters/Win32Processes.h"

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
  /// Runs a command hidden and without input, to its end; nothing when it does not start.
  std::optional<std::uint32_t> Run(const std::string& command);

 private:
  fs::path before_ = fs::current_path();
  fs::path folder_;
  windows::Win32MessageLoop loop_;
  windows::Win32Processes processes_{loop_};
};

void WriteFile(const fs::path& path, const std::string& bytes);
std::string ReadFile(const fs::path& path);

/// A drive that whoever asks has made for this, as "V:", from the environment; empty where there is none.
std::string DriveFor(const wchar_t* variable);

}  // namespace questions
