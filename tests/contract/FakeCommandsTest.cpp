// The commands of the imaginary workstation do what those of Windows are expected to do.
#include "contract/CommandContract.h"
#include "fakes/CommandLineTools.h"

namespace contract {
namespace {

class FakeCommands : public CommandWorld {
 public:
  FakeCommands() {
    disk_.AddDrive('C', "SYSTEM", 1'000'000);
    disk_.MakeFolders("C:\\Scene");
    disk_.SetCurrentFolder("C:\\Scene");
  }
  void Write(const std::string& path, const std::string& bytes) override { EXPECT_TRUE(disk_.Write(path, bytes)); }
  void MakeFolder(const std::string& path) override { EXPECT_TRUE(disk_.MakeFolders(path)); }
  void Mark(const std::string& path, unsigned attributes) override { disk_.Find(path)->attributes = attributes; }
  void Hold(const std::string& path) override { EXPECT_TRUE(disk_.Hold(path)); }
  std::uint32_t Run(const std::string& command) override {
    return fakes::RunCommandInterpreter(disk_, fakes::SplitCommandLine("CMD /C " + command));
  }
  std::map<std::string, std::string> Tree(const std::string& folder) override { return disk_.Tree(folder); }
  bool HasFolder(const std::string& path) override { return disk_.IsFolder(path); }
  unsigned Attributes(const std::string& path) override { return disk_.Find(path)->attributes; }
  std::uint64_t Modified(const std::string& path) override { return disk_.Find(path)->modified; }

 private:
  fakes::Disk disk_;
};

}  // namespace

std::unique_ptr<CommandWorld> MakeCommandWorld() {
  return std::make_unique<FakeCommands>();
}

}  // namespace contract
