// Files, folders and drives: what the adapters take for granted, beyond what their own tests show under Wine.
#include <array>
#include <cstring>

#include "questions/Scene.h"
#include "windows/adapters/Text.h"
#include "windows/adapters/Win32FileSystem.h"

namespace questions {
namespace {

constexpr DWORD kAnyUse = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

windows::Handle Open(const fs::path& path, DWORD access, DWORD sharing, DWORD flags = 0) {
  return windows::Handle(CreateFileW(path.c_str(), access, sharing, nullptr, OPEN_EXISTING, flags, nullptr));
}

class Files : public ::testing::Test {
 protected:
  std::string At(const std::string& name) const { return windows::Utf8((scene_.Folder() / name).wstring()); }

  Scene scene_;
  windows::Win32FileSystem files_;
};

// Only a system that really leaves its cache out must refuse this; one that does not answers from memory.
TEST_F(Files, AReadPastTheCacheMustBeAligned) {
  WriteFile("a", std::string(10'000, 'a'));
  const windows::Handle file = Open("a", GENERIC_READ, kAnyUse, FILE_FLAG_NO_BUFFERING);
  ASSERT_TRUE(file);
  std::array<char, 100> bytes{};
  DWORD read = 0;
  EXPECT_FALSE(::ReadFile(file.Get(), bytes.data() + 1, 99, &read, nullptr));
  EXPECT_EQ(GetLastError(), DWORD{ERROR_INVALID_PARAMETER});
}

TEST_F(Files, WhatWasFlushedIsReadPastTheCache) {
  const std::string text = "of no even size";
  WriteFile("a", text);
  ASSERT_TRUE(files_.Flush(At("a")).IsDone());
  const auto reader = files_.OpenUncached(At("a"));
  ASSERT_TRUE(reader);
  std::array<std::byte, 64> bytes{};
  ASSERT_EQ(reader->Read(bytes.data(), bytes.size()), static_cast<std::int64_t>(text.size()));
  EXPECT_EQ(std::memcmp(bytes.data(), text.data(), text.size()), 0);
}

TEST_F(Files, AReadOnlyFileCanBeFlushed) {
  WriteFile("a", "text");
  SetFileAttributesW(L"a", FILE_ATTRIBUTE_READONLY);
  EXPECT_TRUE(files_.Flush(At("a")).IsDone());
}

// A junction in the place of the work folder must neither be taken over nor emptied.
TEST_F(Files, AJunctionIsRefusedForAWorkFolderAndDeletedWithoutItsTarget) {
  WriteFile("elsewhere/patient", "data");
  ASSERT_EQ(scene_.Run("CMD /C mklink /J link elsewhere"), 0U);
  EXPECT_FALSE(files_.MakePrivateFolder(At("link")).IsDone());
  EXPECT_TRUE(files_.RemoveFolder(At("link")).IsDone());
  EXPECT_FALSE(fs::exists("link"));
  EXPECT_EQ(ReadFile("elsewhere/patient"), "data");
  fs::create_directory("inside");
  ASSERT_EQ(scene_.Run("CMD /C mklink /J inside\\link elsewhere"), 0U);
  EXPECT_TRUE(files_.RemoveFolder(At("inside")).IsDone());
  EXPECT_EQ(ReadFile("elsewhere/patient"), "data");
}

/// Whether this Windows takes longer paths from programs that say, as ours do, that they know them.
bool HasLongPaths() {
  DWORD on = 0, size = sizeof on;
  RegGetValueW(HKEY_LOCAL_MACHINE, L"SYSTEM\\CurrentControlSet\\Control\\FileSystem", L"LongPathsEnabled",
               RRF_RT_REG_DWORD, nullptr, &on, &size);
  return on != 0;
}

TEST_F(Files, ClassicCallsTake259Characters) {
  if (HasLongPaths()) GTEST_SKIP() << "long paths are switched on";
  const std::wstring folder = scene_.Folder().wstring() + L"\\";
  for (const std::size_t length : {259U, 260U}) {
    const std::wstring path = folder + std::wstring(length - folder.size(), L'n');
    const windows::Handle file(CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, 0, nullptr));
    EXPECT_EQ(static_cast<bool>(file), length == 259) << length;
  }
}

TEST_F(Files, AFileThatItsReaderDoesNotShareCannotBeReplaced) {
  WriteFile("old", "old");
  WriteFile("new", "new");
  const windows::Handle reader = Open("old", GENERIC_READ, FILE_SHARE_READ);
  ASSERT_TRUE(reader);
  EXPECT_FALSE(files_.MoveOver(At("new"), At("old")).IsDone());
  EXPECT_FALSE(files_.CopyTo(At("new"), At("old")).IsDone());
  EXPECT_EQ(ReadFile("old"), "old");
}

/// A drive that holds less than eight megabytes.
class FullDrive : public Files {
 protected:
  void SetUp() override {
    if (drive_.empty()) GTEST_SKIP() << "QX_SMALL_DRIVE names no drive";
  }
  const std::string drive_ = DriveFor(L"QX_SMALL_DRIVE");
};

TEST_F(FullDrive, ACopyThatDoesNotFitFailsAndLeavesNothing) {
  WriteFile("large", std::string(8'000'000, 'x'));
  const std::string target = drive_ + "\\large";
  EXPECT_FALSE(files_.CopyTo(At("large"), target).IsDone());
  EXPECT_FALSE(files_.FileExists(target));
  EXPECT_EQ(scene_.Run("CMD /C xcopy large " + drive_ + "\\ /S /Y"), 4U);
  static_cast<void>(files_.RemoveFile(target));
}

TEST_F(FullDrive, ALabelIsSetAndReadAgain) {
  windows::Win32Drives drives;
  EXPECT_TRUE(drives.SetVolumeLabel(drive_, "BACKUP").IsDone());
  EXPECT_EQ(drives.VolumeLabel(drive_), "BACKUP");
  EXPECT_TRUE(drives.IsReady(drive_));
  EXPECT_GT(drives.FreeSpace(drive_), 0);
}

}  // namespace
}  // namespace questions
