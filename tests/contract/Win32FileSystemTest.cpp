// The real file system keeps the contract, and what it does beyond it.
#include "windows/adapters/Win32FileSystem.h"

#include <aclapi.h>
#include <sddl.h>

#include <algorithm>
#include <regex>

#include "contract/FileSystemContract.h"
#include "windows/adapters/ApiPath.h"
#include "windows/adapters/Text.h"

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

/// Opens a file, lets nobody else have it, and lets it go in a moment, as a virus scanner does.
class Scanner {
 public:
  explicit Scanner(const std::string& path)
      : file_(CreateFileW(windows::ApiPath(path).c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr)),
        end_([this] {
          Sleep(400);
          file_.Close();
        }) {
    EXPECT_TRUE(file_) << path;
  }

 private:
  windows::Handle file_;
  std::jthread end_;
};

TEST_F(Win32FileSystemTest, WhatAScannerHoldsIsWaitedForAndWhatStaysInUseOnce) {
  const auto whileScanned = [&](const std::string& name, auto step) {
    const Scanner scanner(At(name));
    EXPECT_EQ(step(), Done) << name;
  };
  Put(At("a"), "new");
  Put(At("b"), "old");
  whileScanned("a", [&] { return Files().OpenBinary(At("a")).Why(); });
  whileScanned("a", [&] { return Files().CopyTo(At("a"), At("c")); });
  whileScanned("b", [&] { return Files().MoveOver(At("a"), At("b")); });
  whileScanned("b", [&] { return Files().CopyTo(At("c"), At("b")); });
  whileScanned("b", [&] { return Files().MoveTo(At("b"), At("d")); });
  whileScanned("d", [&] { return Files().RemoveFile(At("d")); });
  EXPECT_EQ(Names(At("")), Texts{"c"});

  const auto user = Files().AppendText(At("c"));
  const ULONGLONG begun = GetTickCount64();
  for (int time = 0; time < 20; ++time) EXPECT_TRUE(Fails(Files().RemoveFile(At("c")), At("c")));
  EXPECT_LT(GetTickCount64() - begun, 12000U);
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

/// A link in a folder to another one beside it, for the time of its life.
class FolderLink {
 public:
  FolderLink(const std::string& folder, const std::string& name, std::string target)
      : path_(windows::ApiPath(folder + name)), name_(name), folder_(UnixPath(windows::ApiPath(folder))) {
    constexpr DWORD kUnprivileged = 2;
    if (folder_.empty()) {
      CreateSymbolicLinkW(path_.c_str(), windows::Utf16(target).c_str(), SYMBOLIC_LINK_FLAG_DIRECTORY | kUnprivileged);
    } else {
      std::ranges::replace(target, '\\', '/');
      RunUnix("/bin/ln -s \"" + target + "\" \"" + folder_ + name_ + "\"", true);
    }
  }
  ~FolderLink() {
    if (folder_.empty()) {
      RemoveDirectoryW(path_.c_str());
    } else {
      RunUnix("/bin/rm -f \"" + folder_ + name_ + "\"", false);
    }
  }
  FolderLink(const FolderLink&) = delete;
  FolderLink& operator=(const FolderLink&) = delete;

  bool Exists() const { return GetFileAttributesW(path_.c_str()) != INVALID_FILE_ATTRIBUTES; }

 private:
  /// Wine makes no links, but shows those of the system below it. Empty on Windows.
  static std::string UnixPath(const std::wstring& folder) {
    using Translate = char*(CDECL*)(const wchar_t*);
    auto* address = reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"kernel32"), "wine_get_unix_file_name"));
    return address == nullptr ? std::string() : reinterpret_cast<Translate>(address)(folder.c_str()) + std::string("/");
  }
  /// Such a program cannot be waited for; what it does can.
  void RunUnix(const std::string& command, bool makes) const {
    const std::wstring program = LR"(\\?\unix)" + windows::Utf16(command.substr(0, command.find(' ')));
    std::wstring line = windows::Utf16(command);
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION started{};
    CreateProcessW(program.c_str(), line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup, &started);
    const windows::Handle process(started.hProcess);
    const windows::Handle thread(started.hThread);
    for (int wait = 0; wait < 500 && Exists() != makes; ++wait) Sleep(10);
  }

  std::wstring path_;
  std::string name_;
  std::string folder_;
};

TEST_F(Win32FileSystemTest, LinksAreToldAndNeverFollowedByDeleting) {
  ASSERT_EQ(Files().MakeFolder(At("elsewhere")), Done);
  ASSERT_EQ(Files().MakeFolder(At("elsewhere\\below")), Done);
  Put(At("elsewhere\\below\\patient"), "data");
  ASSERT_EQ(Files().MakeFolder(At("work")), Done);
  Put(At("work\\own"), "x");
  {
    const FolderLink inside(At("work\\"), "inside", "..\\elsewhere");
    const FolderLink itself(At(""), "itself", "elsewhere");
    ASSERT_TRUE(inside.Exists() && itself.Exists());
    EXPECT_EQ(Names(At("itself")), Texts{"below"});
    EXPECT_TRUE(EntryOf("itself").isLink);
    EXPECT_TRUE(Fails(Files().MakePrivateFolder(At("itself")), At("itself")));
    // Whether the link itself goes is the system's to say; Wine keeps it.
    static_cast<void>(Files().RemoveFolder(At("itself")));
    static_cast<void>(Files().RemoveFolder(At("work")));
    EXPECT_EQ(Contents(At("elsewhere\\below\\patient")), "data");
    EXPECT_FALSE(Files().FileExists(At("work\\own")));
  }
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
