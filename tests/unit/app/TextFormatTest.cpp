// Dates, sizes, numbers and wildcard patterns.
#include "app/TextFormat.h"

#include <gtest/gtest.h>

namespace {

TEST(TextFormat, Stamps) {
  const host::LocalTime time{2012, 3, 4, 5, 6, 7};
  EXPECT_EQ(app::FormatLogTime(time), "2012/03/04 05:06:07");
  EXPECT_EQ(app::FormatShortStamp(time), "120304050607");
  EXPECT_EQ(app::FormatLongStamp(time), "20120304050607");
  EXPECT_EQ(app::FormatDay(time), "20120304");
}

// 5242 bytes are just below half a hundredth.
TEST(TextFormat, Megabytes) {
  constexpr std::uint64_t kMegabyte = 1048576;
  const struct {
    std::uint64_t bytes;
    const char* text;
  } rows[] = {{0, "0.00"},
              {5242, "0.00"},
              {5243, "0.01"},
              {1400000, "1.34"},
              {kMegabyte - 1, "1.00"},
              {999 * kMegabyte, "999.00"},
              {10240 * kMegabyte, "10,240.00"},
              {1234567 * kMegabyte + kMegabyte / 2, "1,234,567.50"},
              {UINT64_MAX, "17,592,186,044,416.00"}};
  for (const auto& row : rows) EXPECT_EQ(app::FormatMegabytes(row.bytes), row.text) << row.bytes;
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
TEST(TextFormat, Patterns) {
  const struct {
    const char* text;
    const char* pattern;
    bool fits;
  } rows[] = {{"", "", true},
              {"", "*", true},
              {"", "?", false},
              {"Key=1=2", "Key=*", true},
              {"key=1", "Key=*", false},
              {" Key=1", "Key=*", false},
              {"aXbXc", "a*X?", true},
              {"aaab", "*a*ab", true},
              {"ab", "a", false},
              {"a", "a*b", false},
              {"é", "?", true},
              {"7", "#", true},
              {"x", "#", false},
              {"b", "[a-c]", true},
              {"d", "[a-c]", false},
              {"d", "[!a-c]", true},
              {"", "[!a-c]", false},
              {"-", "[a-]", true},
              {"b", "[a-]", false},
              {"!", "[!]", true},
              {"x", "[!]", false},
              {"!", "!", true},
              {"ж", "[а-я]", true},
              {"[SECTION]", "[[]*[]]", true},
              {"[SECTION] ", "[[]*[]]", false},
              {"[", "[[]*[]]", false},
              {"*", "[*]", true},
              {"x", "[*]", false},
              {"[a", "[a", false},
              {"a", "*[", false},
              {"b", "[c-a]", false}};
  for (const auto& row : rows) {
    EXPECT_EQ(app::MatchesPattern(row.text, row.pattern), row.fits) << row.text << " / " << row.pattern;
  }
}

TEST(TextFormat, ManyRunsDoNotExplode) {
  EXPECT_FALSE(app::MatchesPattern(std::string(5000, 'a'), "*a*a*a*a*a*a*a*a*a*a*a*a*b"));
}

TEST(TextFormat, FileNamePatterns) {
  const struct {
    const char* name;
    const char* pattern;
    bool fits;
  } rows[] = {{"CONFIG.MDB", "*.mdb", true},
              {"config.mdb.bak", "*.mdb", false},
              {"readme", "*.*", true},
              {"Ärzte.log", "ä*.LOG", true},
              {"a[1].txt", "a[1].txt", true},
              {"a1.txt", "a[1].txt", false},
              {"#.txt", "#.txt", true},
              {"1.txt", "#.txt", false},
              {"a1", "a?", true},
              {"a", "a?", false}};
  for (const auto& row : rows) {
    EXPECT_EQ(app::MatchesFileName(row.name, row.pattern), row.fits) << row.name << " / " << row.pattern;
  }
}

}  // namespace
