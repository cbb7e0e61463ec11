// The file system in memory keeps the contract.
#include "contract/FileSystemContract.h"
#include "fakes/FakeFileSystem.h"

namespace contract {
namespace {

class FakeWorld : public FileSystemWorld {
 public:
  FakeWorld() {
    disk_.AddDrive('C', "SYSTEM", 1'000'000'000);
    disk_.MakeFolders("C:\\Test");
  }
  host::FileSystem& Files() override { return files_; }
  std::string Folder() override { return "C:\\Test\\"; }
  void MakeReadOnly(const std::string& path) override { disk_.Find(path)->attributes |= fakes::kReadOnly; }
  void Hide(const std::string& /*path*/) override {}  // its disk has no such mark
  bool Explains(const std::string& words) override { return !words.empty(); }

 private:
  fakes::Disk disk_;
  fakes::CallCounter calls_;
  fakes::FakeFileSystem files_{disk_, calls_};
};

}  // namespace

std::unique_ptr<FileSystemWorld> MakeWorld() {
  return std::make_unique<FakeWorld>();
}

}  // namespace contract
