// The commands of a real Windows, in the scenes of the contract.
#include "contract/CommandContract.h"
#include "questions/Scene.h"
#include "windows/adapters/ApiPath.h"
#include "windows/adapters/Text.h"

namespace contract {
namespace {

constexpr std::pair<unsigned, DWORD> kMarks[] = {{fakes::kReadOnly, FILE_ATTRIBUTE_READONLY},
                                                 {fakes::kHidden, FILE_ATTRIBUTE_HIDDEN},
                                                 {fakes::kSystem, FILE_ATTRIBUTE_SYSTEM}};

class RealCommands : public CommandWorld {
 public:
  void Write(const std::string& path, const std::string& bytes) override { questions::WriteFile(Path(path), bytes); }
  void MakeFolder(const std::string& path) override { questions::fs::create_directories(Path(path)); }
  void Mark(const std::string& path, unsigned attributes) override {
    DWORD marks = 0;
    for (const auto& [ours, theirs] : kMarks) marks |= (attributes & ours) != 0 ? theirs : 0;
    EXPECT_TRUE(SetFileAttributesW(Path(path).c_str(), marks));
  }
  void Hold(const std::string& path) override {
    held_ = windows::Handle(CreateFileW(Path(path).c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr));
    EXPECT_TRUE(held_);
  }
  std::uint32_t Run(const std::string& command) override {
    return scene_.Run("CMD /C " + command).value_or(0xFFFFFFFF);
  }
  std::map<std::string, std::string> Tree(const std::string& folder) override {
    std::map<std::string, std::string> files;
    const std::size_t root = Path(folder).wstring().size() + 1;
    for (const auto& entry : questions::fs::recursive_directory_iterator(Path(folder))) {
      if (!entry.is_regular_file()) continue;
      files[windows::Utf8(entry.path().wstring().substr(root))] = questions::ReadFile(entry.path());
    }
    return files;
  }
  bool HasFolder(const std::string& path) override { return questions::fs::is_directory(Path(path)); }
  unsigned Attributes(const std::string& path) override {
    const DWORD found = GetFileAttributesW(Path(path).c_str());
    unsigned attributes = 0;
    for (const auto& [ours, theirs] : kMarks) attributes |= (found & theirs) != 0 ? ours : 0;
    return attributes;
  }
  std::uint64_t Modified(const std::string& path) override {
    WIN32_FILE_ATTRIBUTE_DATA data{};
    EXPECT_TRUE(GetFileAttributesExW(Path(path).c_str(), GetFileExInfoStandard, &data));
    return std::uint64_t{data.ftLastWriteTime.dwHighDateTime} << 32 | data.ftLastWriteTime.dwLowDateTime;
  }

 private:
  /// Of any length.
  questions::fs::path Path(const std::string& path) const {
    return windows::UnlimitedPath(windows::Utf8(scene_.Folder().wstring()) + "\\" + path);
  }

  questions::Scene scene_;
  windows::Handle held_;
};

}  // namespace

std::unique_ptr<CommandWorld> MakeCommandWorld() {
  return std::make_unique<RealCommands>();
}

}  // namespace contract
