// Rules of text: formats, wildcard patterns, paths and names.
#include <gtest/gtest.h>

#include <array>

#include "base/Path.h"
#include "base/Text.h"
#include "base/Wildcard.h"

namespace {

// 5242 bytes are just below half a hundredth.
TEST(TextFormat, Megabytes) {
  const std::pair<std::uint64_t, const char*> rows[] = {
      {0, "0.00"},
      {5242, "0.00"},
      {5243, "0.01"},
      {1048575, "1.00"},
      {1400000, "1.34"},
      {999ULL << 20, "999.00"},
      {10240ULL << 20, "10,240.00"},
      {2469135ULL << 19, "1,234,567.50"},
      {UINT64_MAX, "17,592,186,044,416.00"},
  };
  for (const auto& [bytes, text] : rows) EXPECT_EQ(base::FormatMegabytes(bytes), text);
}

TEST(Text, SizesUnderAMegabyteAreNotNothing) {
  EXPECT_EQ(base::FormatSize(0), "0 KB");
  EXPECT_EQ(base::FormatSize(1), "1 KB");
  EXPECT_EQ(base::FormatSize((1 << 20) - 1), "1024 KB");
  EXPECT_EQ(base::FormatSize(1 << 20), "1.00 MB");
}

TEST(Text, LeadingZerosCutNothing) {
  EXPECT_EQ(base::WithLeadingZeros(1000, 3), "1000");
}

// Of what is pasted, too: up to the first other character, and no more than 32 bits hold.
TEST(Text, LeadingNumber) {
  const std::pair<const char*, std::int32_t> rows[] = {{"12 days", 12},
                                                       {"-5", 0},
                                                       {"+5", 0},
                                                       {" 30", 30},
                                                       {"days 5", 0},
                                                       {"007", 7},
                                                       {"2147483648", INT32_MAX},
                                                       {"2147483647x", INT32_MAX}};
  for (const auto& [text, number] : rows) EXPECT_EQ(base::LeadingNumber(text), number) << text;
}

TEST(Text, CutAtNulDropsThePrefixFirst) {
  const std::string buffer("EN:T_MESSAGE\0rest:x", 19);
  EXPECT_EQ(base::CutAtNul(buffer), "EN:T_MESSAGE");
  EXPECT_EQ(base::CutAtNul(buffer, true), "T_MESSAGE");
  EXPECT_EQ(base::CutAtNul(std::string("T\0", 2), true), "T");
  EXPECT_EQ(base::CutAtNul(std::string("a:b:c\0", 6), true), "b:c");
  EXPECT_EQ(base::CutAtNul("no end"), "no end");
}

// What fits is compared with a plain matcher in tests/fuzz.
TEST(Patterns, ManyRunsDoNotExplode) {
  EXPECT_FALSE(base::MatchesPattern(std::string(5000, 'a'), "*a*a*a*a*a*a*a*a*a*a*a*a*b"));
}

TEST(WindowsPath, TrailingBackslash) {
  const std::array<const char*, 3> rows[] = {
      {"C:\\a", "C:\\a\\", "C:\\a"}, {"C:\\a\\", "C:\\a\\", "C:\\a"},     {"", "\\", ""},
      {"C:\\", "C:\\", "C:"},        {"C:\\a\\\\", "C:\\a\\\\", "C:\\a"},
  };
  for (const auto& [given, with, without] : rows) {
    EXPECT_EQ(base::WithTrailingBackslash(given), with) << given;
    EXPECT_EQ(base::WithoutTrailingBackslash(given), without) << given;
  }
}

TEST(WindowsPath, Parts) {
  const std::array<const char*, 4> rows[] = {
      {"C:\\a\\b.txt", "C:\\a\\", "b.txt", "C"}, {"C:\\a\\", "C:\\a\\", "", "C"}, {"b.txt", "", "b.txt", ""},
      {"C:b.txt", "", "C:b.txt", "C"},           {"a\\\\b", "a\\\\", "b", ""},    {"", "", "", ""},
  };
  for (const auto& [path, folder, file, drive] : rows) {
    EXPECT_EQ(base::FolderOf(path), folder) << path;
    EXPECT_EQ(base::FileNameOf(path), file) << path;
    EXPECT_EQ(base::DriveLetterOf(path), drive) << path;
  }
}

// The others: neighbours of letters, what is 32 apart, letters that Windows leaves alone, a stray byte, overlong forms.
TEST(WindowsPath, SameNameFoldsThePairsThatWindowsFolds) {
  using Pairs = std::vector<std::pair<const char*, const char*>>;
  const Pairs same = {{"Info.ini", "INFO.INI"}, {"ÀÞ", "àþ"},   {"ŸŽ", "ÿž"},
                      {"Łódź", "łÓDŹ"},         {"ΆΏΣ", "άώσ"}, {"ς", "Σ"},
                      {"ЁЯҊӀ", "ёяҋӏ"},         {"Ｑ", "ｑ"},   {"a\xFF", "a\xFF"}};
  const Pairs others = {{"[x]", "{X}"},  {"×", "÷"},           {"ı", "I"},        {"ſ", "s"},           {"a", "ab"},
                        {"a\xFF", "aÿ"}, {"\xC3", "\xC3\xA9"}, {"\xC1\x81", "A"}, {"\xE0\x81\x81", "A"}};
  const auto fits = [](const char* left, const char* right) {
    EXPECT_EQ(base::SameName(left, right), base::SameName(right, left)) << left << " / " << right;
    return base::SameName(left, right);
  };
  for (const auto& [left, right] : same) EXPECT_TRUE(fits(left, right)) << left << " / " << right;
  for (const auto& [left, right] : others) EXPECT_FALSE(fits(left, right)) << left << " / " << right;
}

}  // namespace
