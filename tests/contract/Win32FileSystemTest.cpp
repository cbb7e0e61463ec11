// The real file system keeps the contract, and what it does beyond it.
#include "windows/adapters/Win32FileSystem.h"

#include <aclapi.h>
#include <sddl.h>

#include <regex>

#include "contract/FileSystemContract.h"
#include "windows/adapters/ApiPath.h"

namespace contract {
namespace {

class Win32World : public FileSystemWorld {
 public:
  Win32World() { EXPECT_EQ(files_.MakeFolder(folder_), Done); }
  ~Win32World() override { EXPECT_EQ(files_.RemoveFolder(folder_), Done); }
  host::FileSystem& Files() override { return files_; }
  std::string Folder() override { return folder_; }
  void MakeReadOnly(const std::string& path) override {
    SetFileAttributesW(windows::ApiPath(path).c_str(), FILE_ATTRIBUTE_READONLY);
  }
  void Hide(const std::string& path) override {
    SetFileAttributesW(windows::ApiPath(path).c_str(), FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM);
  }
  /// By words and a number of the system's, on one line.
  bool Explains(const std::string& words) override {
    return std::regex_match(words, std::regex(R"([^\r\n]+ \([1-9][0-9]*\))"));
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
    ASSERT_EQ(Files().MakeFolder(folder), Done) << folder;
    folder += '\\';
  }
  Put(folder + "deep.txt", "deep");
  EXPECT_EQ(Names(folder), Texts{"deep.txt"});
  EXPECT_EQ(Files().MoveTo(folder + "deep.txt", folder + "\\moved.txt"), Done);
  EXPECT_EQ(Files().CopyTo(folder + "moved.txt", At("up.txt")), Done);
  EXPECT_EQ(Contents(At("up.txt")), "deep");
  EXPECT_EQ(Files().RemoveFolder(At(std::string(40, 'a'))), Done);
  EXPECT_EQ(Names(At("")), Texts{"up.txt"});
}

TEST_F(Win32FileSystemTest, AFileInUseAloneStaysOfAFolderAndIsNamed) {
  ASSERT_EQ(Files().MakeFolder(At("many")), Done);
  for (int i = 0; i < 200; ++i) Put(At("many\\" + std::to_string(i)), "x");
  {
    const windows::Handle open(CreateFileW(windows::ApiPath(At("many\\77")).c_str(), GENERIC_READ, FILE_SHARE_READ,
                                           nullptr, OPEN_EXISTING, 0, nullptr));
    ASSERT_TRUE(open);
    EXPECT_TRUE(Fails(Files().RemoveFolder(At("many")), At("many\\77")));
    EXPECT_EQ(Names(At("many\\")), Texts{"77"});
  }
  EXPECT_EQ(Files().RemoveFolder(At("many")), Done);
}

// Another program starts a new log while the old one is read.
TEST_F(Win32FileSystemTest, AFileThatIsReadMayBeRenamedMeanwhile) {
  Put(At("log"), "one\r\ntwo\r\n");
  const auto reader = Files().OpenText(At("log"));
  EXPECT_EQ(Files().MoveTo(At("log"), At("log.1")), Done);
  Put(At("log"), "three");
  std::string line;
  EXPECT_TRUE(reader->ReadLine(line));
  EXPECT_EQ(line, "one");
}

TEST_F(Win32FileSystemTest, CausesCarryTheNumberOfTheCallThatFailed) {
  Put(At("busy"), "x");
  const auto user = Files().AppendText(At("busy"));
  const std::pair<base::Outcome, DWORD> cases[] = {
      {Files().RemoveFile(At("none")), ERROR_FILE_NOT_FOUND},
      {Files().RemoveFile(At("busy")), ERROR_SHARING_VIOLATION},
      {Files().MakeFolder(At("busy")), ERROR_ALREADY_EXISTS},
      {Files().MakePrivateFolder(At("busy")), ERROR_ALREADY_EXISTS},
      {Files().MoveTo(At("busy"), At("moved")), ERROR_SHARING_VIOLATION},
      {Files().RemoveFolder("Q:\\"), ERROR_CURRENT_DIRECTORY},
  };
  for (const auto& [step, number] : cases)
    EXPECT_TRUE(step.cause.ends_with(" (" + std::to_string(number) + ")")) << step.cause << ", not " << number;
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
  ASSERT_EQ(Files().MakeFolder(At("ordinary")), Done);
  ASSERT_EQ(Files().MakePrivateFolder(At("private")), Done);
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
