// Path and name rules.
#include "app/WindowsPath.h"

#include <gtest/gtest.h>

namespace {

TEST(WindowsPath, TrailingBackslash) {
  const struct {
    const char* given;
    const char* with;
    const char* without;
  } rows[] = {{"C:\\a", "C:\\a\\", "C:\\a"},
              {"C:\\a\\", "C:\\a\\", "C:\\a"},
              {"C:\\a\\\\", "C:\\a\\\\", "C:\\a"},
              {"C:\\", "C:\\", "C:"},
              {"", "\\", ""}};
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

using Pairs = std::vector<std::pair<const char*, const char*>>;

TEST(WindowsPath, SameNameFoldsThePairsThatWindowsFolds) {
  const Pairs same = {{"BackupInfo.ini", "BACKUPINFO.INI"},
                      {"ÀÞ", "àþ"},
                      {"ŸŽ", "ÿž"},
                      {"Łódź", "łÓDŹ"},
                      {"ΆΏΣ", "άώσ"},
                      {"ς", "Σ"},
                      {"ЁЯҊӀ", "ёяҋӏ"},
                      {"Ｑ", "ｑ"},
                      {"a\xFF", "a\xFF"}};
  // Neighbours of letters, what is 32 apart, letters that Windows leaves alone, a stray byte, overlong forms.
  const Pairs different = {{"[x]", "{X}"},  {"×", "÷"},           {"ı", "I"},        {"ſ", "s"},           {"a", "ab"},
                           {"a\xFF", "aÿ"}, {"\xC3", "\xC3\xA9"}, {"\xC1\x81", "A"}, {"\xE0\x81\x81", "A"}};
  for (const auto& [left, right] : same)
    EXPECT_TRUE(app::SameName(left, right) && app::SameName(right, left)) << left << " / " << right;
  for (const auto& [left, right] : different)
    EXPECT_FALSE(app::SameName(left, right) || app::SameName(right, left)) << left << " / " << right;
}

TEST(WindowsPath, TrimTakesBlanksOnly) {
  EXPECT_EQ(app::Trim("  a b "), "a b");
  EXPECT_EQ(app::Trim(" \ta\t "), "\ta\t");
  EXPECT_EQ(app::Trim("   "), "");
}

}  // namespace
