#include "questions/Scene.h"

#include <chrono>
#include <fstream>
#include <iterator>

#include "acceptance/Running.h"
#include "windows/adapters/Text.h"

namespace questions {

Scene::Scene() {
  static int scenes = 0;  // what holds one open must not spoil the next
  const std::string name = std::to_string(GetCurrentProcessId()) + " " + std::to_string(++scenes);
  folder_ = fs::temp_directory_path() / ("question " + name);
  fs::create_directories(folder_);
  fs::current_path(folder_);
}

Scene::~Scene() {
  fs::current_path(before_);
  std::error_code error;
  for (const auto& entry : fs::recursive_directory_iterator(folder_, error))
    SetFileAttributesW(entry.path().c_str(), FILE_ATTRIBUTE_NORMAL);
  fs::remove_all(folder_, error);
  fs::remove(fs::path(folder_).concat(".log"), error);
}

std::optional<std::uint32_t> Scene::Run(const std::string& command) {
  constexpr std::chrono::seconds kPatience{10};
  return acceptance::Run(windows::Utf16(command), folder_, fs::path(folder_).concat(".log"), kPatience).code;
}

void WriteFile(const fs::path& path, const std::string& bytes) {
  if (path.has_parent_path()) fs::create_directories(path.parent_path());
  std::ofstream(path, std::ios::binary) << bytes;
}

std::string ReadFile(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

std::string DriveFor(const wchar_t* variable) {
  const wchar_t* const drive = _wgetenv(variable);
  return drive == nullptr ? std::string() : windows::Utf8(drive);
}

}  // namespace questions
