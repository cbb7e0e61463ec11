#include "questions/Scene.h"

#include <fstream>
#include <iterator>

#include "windows/adapters/Text.h"

namespace questions {

Scene::Scene() : folder_(fs::temp_directory_path() / ("question " + std::to_string(GetCurrentProcessId()))) {
  fs::remove_all(folder_);
  fs::create_directories(folder_);
  fs::current_path(folder_);
}

Scene::~Scene() {
  fs::current_path(before_);
  std::error_code error;
  for (const auto& entry : fs::recursive_directory_iterator(folder_, error))
    SetFileAttributesW(entry.path().c_str(), FILE_ATTRIBUTE_NORMAL);
  fs::remove_all(folder_, error);
}

std::optional<std::uint32_t> Scene::Run(const std::string& command) {
  const auto program = processes_.Start(command, host::WindowStyle::Hidden);
  return program ? program->Wait() : std::nullopt;
}

void WriteFile(const fs::path& path, const std::string& bytes) {
  fs::create_directories(path.parent_path());
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
