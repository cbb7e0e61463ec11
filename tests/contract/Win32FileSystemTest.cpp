// The real file system keeps the contract.
#include "windows/adapters/Win32FileSystem.h"

#include <aclapi.h>

#include "contract/FileSystemContract.h"
#include "windows/adapters/ApiPath.h"
#include "windows/adapters/Win32.h"

namespace contract {
namespace {

class Win32World : public FileSystemWorld {
 public:
  Win32World() { files_.MakeFolder(folder_); }
  ~Win32World() override { files_.RemoveFolder(folder_); }
  host::FileSystem& Files() override { return files_; }
  std::string Folder() override { return folder_; }
  void MakeReadOnly(const std::string& path) override {
    SetFileAttributesW(windows::ApiPath(path).c_str(), FILE_ATTRIBUTE_READONLY);
  }

 private:
  windows::Win32FileSystem files_;
  std::string folder_ = files_.TemporaryFolder() + "contract-" + std::to_string(GetCurrentProcessId()) + "\\";
};

std::unique_ptr<FileSystemWorld> MakeWorld() {
  return std::make_unique<Win32World>();
}

INSTANTIATE_TEST_SUITE_P(Win32, FileSystemContract, ::testing::Values(&MakeWorld));

/// What the real file system does beyond the contract.
class Win32FileSystemTest : public FileSystemContract {};

INSTANTIATE_TEST_SUITE_P(Win32, Win32FileSystemTest, ::testing::Values(&MakeWorld));

TEST_P(Win32FileSystemTest, LongPathsWork) {
  std::string folder = At("");
  for (int depth = 0; depth < 8; ++depth) {
    folder += std::string(40, static_cast<char>('a' + depth));
    ASSERT_EQ(Files().MakeFolder(folder), 0) << folder;
    folder += '\\';
  }
  Put(folder + "deep.txt", "deep");
  EXPECT_EQ(Names(folder), std::vector<std::string>{"deep.txt"});
  EXPECT_EQ(Files().MoveTo(folder + "deep.txt", folder + "\\moved.txt"), 0);
  EXPECT_EQ(Files().CopyTo(folder + "moved.txt", At("up.txt")), 0);
  EXPECT_EQ(Contents(At("up.txt")), "deep");
  EXPECT_EQ(Files().RemoveFolder(At(std::string(40, 'a'))), 0);
  EXPECT_EQ(Names(At("")), std::vector<std::string>{"up.txt"});
}

/// Whether the access list of `path` names everybody, as that of an ordinary folder does here.
bool IsOpenToEverybody(const std::string& path) {
  ACL* list = nullptr;
  void* descriptor = nullptr;
  const std::wstring name = windows::ApiPath(path);
  EXPECT_EQ(GetNamedSecurityInfoW(name.c_str(), SE_FILE_OBJECT, DACL_SECURITY_INFORMATION, nullptr, nullptr, &list,
                                  nullptr, &descriptor),
            ERROR_SUCCESS);
  std::byte everybody[SECURITY_MAX_SID_SIZE];
  DWORD size = sizeof everybody;
  EXPECT_TRUE(CreateWellKnownSid(WinWorldSid, nullptr, everybody, &size));
  bool open = false;
  for (DWORD i = 0; list != nullptr && i < list->AceCount; ++i) {
    void* entry = nullptr;
    GetAce(list, i, &entry);
    open = open || EqualSid(&static_cast<ACCESS_ALLOWED_ACE*>(entry)->SidStart, everybody);
  }
  LocalFree(descriptor);
  return open;
}

TEST_P(Win32FileSystemTest, PrivateFoldersAreClosedToOthers) {
  ASSERT_EQ(Files().MakeFolder(At("ordinary")), 0);
  ASSERT_EQ(Files().MakePrivateFolder(At("private")), 0);
  EXPECT_EQ(Files().MakePrivateFolder(At("private")), -1);
  Put(At("private\\x.txt"), "mine");
  EXPECT_EQ(Contents(At("private\\x.txt")), "mine");
  EXPECT_TRUE(IsOpenToEverybody(At("ordinary")));
  EXPECT_FALSE(IsOpenToEverybody(At("private")));
}

}  // namespace
}  // namespace contract
