// The real file system keeps the contract, and what it does beyond it.
#include "windows/adapters/Win32FileSystem.h"

#include <aclapi.h>
#include <sddl.h>

#include "contract/FileSystemContract.h"
#include "windows/adapters/ApiPath.h"
#include "windows/adapters/Handles.h"

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

using Win32FileSystemTest = FileSystemContract;

TEST_F(Win32FileSystemTest, LongPathsWork) {
  std::string folder = At("");
  for (int depth = 0; depth < 8; ++depth) {
    folder += std::string(40, static_cast<char>('a' + depth));
    ASSERT_EQ(Files().MakeFolder(folder), 0) << folder;
    folder += '\\';
  }
  Put(folder + "deep.txt", "deep");
  EXPECT_EQ(Names(folder), Texts{"deep.txt"});
  EXPECT_EQ(Files().MoveTo(folder + "deep.txt", folder + "\\moved.txt"), 0);
  EXPECT_EQ(Files().CopyTo(folder + "moved.txt", At("up.txt")), 0);
  EXPECT_EQ(Contents(At("up.txt")), "deep");
  EXPECT_EQ(Files().RemoveFolder(At(std::string(40, 'a'))), 0);
  EXPECT_EQ(Names(At("")), Texts{"up.txt"});
}

TEST_F(Win32FileSystemTest, AFileInUseAloneStaysOfAFolder) {
  ASSERT_EQ(Files().MakeFolder(At("many")), 0);
  for (int i = 0; i < 200; ++i) Put(At("many\\" + std::to_string(i)), "x");
  {
    const windows::Handle open(CreateFileW(windows::ApiPath(At("many\\77")).c_str(), GENERIC_READ, FILE_SHARE_READ,
                                           nullptr, OPEN_EXISTING, 0, nullptr));
    ASSERT_TRUE(open);
    EXPECT_EQ(Files().RemoveFolder(At("many")), -1);
    EXPECT_EQ(Names(At("many\\")), Texts{"77"});
  }
  EXPECT_EQ(Files().RemoveFolder(At("many")), 0);
}

/// Whether the access list of `path` names everybody, as that of an ordinary folder does here.
bool IsOpenToEverybody(const std::string& path) {
  void* descriptor = nullptr;
  wchar_t* text = nullptr;
  GetNamedSecurityInfoW(windows::ApiPath(path).c_str(), SE_FILE_OBJECT, DACL_SECURITY_INFORMATION, nullptr, nullptr,
                        nullptr, nullptr, &descriptor);
  EXPECT_TRUE(ConvertSecurityDescriptorToStringSecurityDescriptorW(descriptor, SDDL_REVISION_1,
                                                                   DACL_SECURITY_INFORMATION, &text, nullptr));
  const bool open = std::wstring(text).find(L";WD)") != std::wstring::npos;
  LocalFree(text);
  LocalFree(descriptor);
  return open;
}

TEST_F(Win32FileSystemTest, PrivateFoldersAreClosedToOthers) {
  ASSERT_EQ(Files().MakeFolder(At("ordinary")), 0);
  ASSERT_EQ(Files().MakePrivateFolder(At("private")), 0);
  EXPECT_EQ(Files().MakePrivateFolder(At("private")), -1);
  Put(At("private\\x.txt"), "mine");
  EXPECT_EQ(Contents(At("private\\x.txt")), "mine");
  EXPECT_TRUE(IsOpenToEverybody(At("ordinary")));
  EXPECT_FALSE(IsOpenToEverybody(At("private")));
}

}  // namespace

std::unique_ptr<FileSystemWorld> MakeWorld() {
  return std::make_unique<Win32World>();
}

}  // namespace contract
