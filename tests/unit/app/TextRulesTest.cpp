// Rules of text: formats, wildcard patterns, paths and names.
#include <gtest/gtest.h>

#include <array>

#include "app/TextFormat.h"
#include "app/WindowsPath.h"

namespace {

using Pairs = std::vector<std::pair<const char*, const char*>>;

/// All of `fitting` fit, and none of `others` does.
void ExpectFits(bool (*fits)(std::string_view, std::string_view), const Pairs& fitting, const Pairs& others) {
  for (const auto& [left, right] : fitting) EXPECT_TRUE(fits(left, right)) << left << " / " << right;
  for (const auto& [left, right] : others) EXPECT_FALSE(fits(left, right)) << left << " / " << right;
}

TEST(TextFormat, Stamps) {
  const host::LocalTime time{2012, 3, 4, 5, 6, 7};
  EXPECT_EQ(app::FormatLogTime(time), "2012/03/04 05:06:07");
  EXPECT_EQ(app::FormatShortStamp(time), "120304050607");
  EXPECT_EQ(app::FormatLongStamp(time), "20120304050607");
  EXPECT_EQ(app::FormatDay(time), "20120304");
}

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
  for (const auto& [bytes, text] : rows) EXPECT_EQ(app::FormatMegabytes(bytes), text);
}

TEST(TextFormat, PieceNumbers) {
  EXPECT_EQ(app::FormatPieceNumber(1), "001");
  EXPECT_EQ(app::FormatPieceNumber(999), "999");
  EXPECT_EQ(app::FormatPieceNumber(1000), "1000");
}

TEST(TextFormat, SplitKeepsEmptyPieces) {
  using Pieces = std::vector<std::string>;
  EXPECT_EQ(app::Split("", ';'), Pieces{""});
  EXPECT_EQ(app::Split("a;;b;", ';'), (Pieces{"a", "", "b", ""}));
}

// Characters, not bytes: an accented letter is one.
TEST(Patterns, OfText) {
  const Pairs fitting = {{"", ""},
                         {"", "*"},
                         {"K=1=2", "K=*"},
                         {"aXbXc", "a*X?"},
                         {"aaab", "*a*ab"},
                         {"é", "?"},
                         {"\U0001F600\u0E01", "??"},
                         {"7", "#"},
                         {"b", "[a-c]"},
                         {"d", "[!a-c]"},
                         {"-", "[a-]"},
                         {"!", "[!]"},
                         {"!", "!"},
                         {"ж", "[а-я]"},
                         {"[A]", "[[]*[]]"},
                         {"*", "[*]"}};
  const Pairs others = {{"", "?"},     {"k=1", "K=*"}, {" K=1", "K=*"},     {"ab", "a"},
                        {"a", "a*b"},  {"x", "#"},     {"d", "[a-c]"},      {"", "[!a-c]"},
                        {"b", "[a-]"}, {"x", "[!]"},   {"[A] ", "[[]*[]]"}, {"[", "[[]*[]]"},
                        {"x", "[*]"},  {"[a", "[a"},   {"a", "*["},         {"b", "[c-a]"}};
  ExpectFits(app::MatchesPattern, fitting, others);
}

TEST(Patterns, ManyRunsDoNotExplode) {
  EXPECT_FALSE(app::MatchesPattern(std::string(5000, 'a'), "*a*a*a*a*a*a*a*a*a*a*a*a*b"));
}

TEST(Patterns, OfFileNames) {
  const Pairs fitting = {{"A.MDB", "*.mdb"},   {"readme", "*.*"},  {"Är.log", "ä*.LOG"},
                         {"a[1].x", "a[1].x"}, {"#.txt", "#.txt"}, {"a1", "a?"}};
  const Pairs others = {{"a.mdb.bak", "*.mdb"}, {"a1.txt", "a[1].txt"}, {"1.txt", "#.txt"}, {"a", "a?"}};
  ExpectFits(app::MatchesFileName, fitting, others);
}

TEST(WindowsPath, TrailingBackslash) {
  const std::array<const char*, 3> rows[] = {
      {"C:\\a", "C:\\a\\", "C:\\a"}, {"C:\\a\\", "C:\\a\\", "C:\\a"},     {"", "\\", ""},
      {"C:\\", "C:\\", "C:"},        {"C:\\a\\\\", "C:\\a\\\\", "C:\\a"},
  };
  for (const auto& [given, with, without] : rows) {
    EXPECT_EQ(app::WithTrailingBackslash(given), with) << given;
    EXPECT_EQ(app::WithoutTrailingBackslash(given), without) << given;
  }
}

TEST(WindowsPath, Parts) {
  const std::array<const char*, 4> rows[] = {
      {"C:\\a\\b.txt", "C:\\a\\", "b.txt", "C"}, {"C:\\a\\", "C:\\a\\", "", "C"}, {"b.txt", "", "b.txt", ""},
      {"C:b.txt", "", "C:b.txt", "C"},           {"a\\\\b", "a\\\\", "b", ""},    {"", "", "", ""},
  };
  for (const auto& [path, folder, file, drive] : rows) {
    EXPECT_EQ(app::FolderOf(path), folder) << path;
    EXPECT_EQ(app::FileNameOf(path), file) << path;
    EXPECT_EQ(app::DriveLetterOf(path), drive) << path;
  }
}

// The others: neighbours of letters, what is 32 apart, letters that Windows leaves alone, a stray byte, overlong forms.
TEST(WindowsPath, SameNameFoldsThePairsThatWindowsFolds) {
  const Pairs same = {{"Info.ini", "INFO.INI"}, {"ÀÞ", "àþ"},   {"ŸŽ", "ÿž"},
                      {"Łódź", "łÓDŹ"},         {"ΆΏΣ", "άώσ"}, {"ς", "Σ"},
                      {"ЁЯҊӀ", "ёяҋӏ"},         {"Ｑ", "ｑ"},   {"a\xFF", "a\xFF"}};
  const Pairs others = {{"[x]", "{X}"},  {"×", "÷"},           {"ı", "I"},        {"ſ", "s"},           {"a", "ab"},
                        {"a\xFF", "aÿ"}, {"\xC3", "\xC3\xA9"}, {"\xC1\x81", "A"}, {"\xE0\x81\x81", "A"}};
  ExpectFits(app::SameName, same, others);
  ExpectFits([](std::string_view left, std::string_view right) { return app::SameName(right, left); }, same, others);
}

TEST(WindowsPath, TrimTakesBlanksOnly) {
  EXPECT_EQ(app::Trim("  a b "), "a b");
  EXPECT_EQ(app::Trim(" \ta\t "), "\ta\t");
  EXPECT_EQ(app::Trim("   "), "");
}

}  // namespace
