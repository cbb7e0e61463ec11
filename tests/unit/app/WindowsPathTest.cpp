// Path and name rules.
#include "app/WindowsPath.h"

#include <gtest/gtest.h>

namespace {

TEST(WindowsPath, TrailingBackslash) {
  const struct {
    const char* given;
    const char* with;
    const char* without;
  } rows[] = {
      {"C:\\a", "C:\\a\\", "C:\\a"},
      {"C:\\a\\", "C:\\a\\", "C:\\a"},
      {"C:\\a\\\\", "C:\\a\\\\", "C:\\a"},
      {"C:\\", "C:\\", "C:"},
      {"", "\\", ""},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(app::WithTrailingBackslash(row.given), row.with) << row.given;
    EXPECT_EQ(app::WithoutTrailingBackslash(row.given), row.without) << row.given;
  }
}

TEST(WindowsPath, Parts) {
  const struct {
    const char* path;
    const char* folder;
    const char* file;
    const char* drive;
  } rows[] = {
      {"C:\\a\\b.txt", "C:\\a\\", "b.txt", "C"}, {"C:\\a\\", "C:\\a\\", "", "C"}, {"b.txt", "", "b.txt", ""},
      {"C:b.txt", "", "C:b.txt", "C"},           {"a\\\\b", "a\\\\", "b", ""},    {"", "", "", ""},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(app::FolderOf(row.path), row.folder) << row.path;
    EXPECT_EQ(app::FileNameOf(row.path), row.file) << row.path;
    EXPECT_EQ(app::DriveLetterOf(row.path), row.drive) << row.path;
  }
}

TEST(WindowsPath, SameNameFoldsThePairsThatWindowsFolds) {
  const struct {
    const char* left;
    const char* right;
    bool same;
  } rows[] = {
      {"BackupInfo.ini", "BACKUPINFO.INI", true},
      {"[x]", "{X}", false},  // neighbours of the letters
      {"ÀÞ", "àþ", true},
      {"×", "÷", false},  // 32 apart among letters, but no letters
      {"ŸŽ", "ÿž", true},
      {"Łódź", "łÓDŹ", true},
      {"ı", "I", false},
      {"ſ", "s", false},
      {"ΆΏΣ", "άώσ", true},
      {"ς", "Σ", true},
      {"ЁЯҊӀ", "ёяҋӏ", true},
      {"Ｑ", "ｑ", true},
      {"a", "ab", false},
      {"a\xFF", "a\xFF", true},
      {"a\xFF", "aÿ", false},  // a byte that is no UTF-8 equals no character
      {"\xC3", "\xC3\xA9", false},
      {"\xC1\x81", "A", false},  // overlong forms
      {"\xE0\x81\x81", "A", false},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(app::SameName(row.left, row.right), row.same) << row.left << " / " << row.right;
    EXPECT_EQ(app::SameName(row.right, row.left), row.same) << row.left << " / " << row.right;
  }
}

TEST(WindowsPath, TrimTakesBlanksOnly) {
  EXPECT_EQ(app::Trim("  a b "), "a b");
  EXPECT_EQ(app::Trim(" \ta\t "), "\ta\t");
  EXPECT_EQ(app::Trim("   "), "");
}

}  // namespace
