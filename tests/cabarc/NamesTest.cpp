// Names: what is safe, what matches, how it is encoded.
#include "cabarc/MemberNames.h"

#include "RawCabinet.h"
#include "Workspace.h"

namespace fs = std::filesystem;

namespace {

class Names : public Workspace {};

TEST_F(Names, UnsafeOnesAreNeitherExtractedNorPacked) {
  const std::string unsafe[] = {"",
                                "\\a",
                                "/a",
                                "\\\\server\\share\\a",
                                "C:a",
                                "C:\\a",
                                "..",
                                "..\\a",
                                "a\\..\\b",
                                "a/../../b",
                                "a\\..",
                                ".",
                                ".\\a",
                                "a\\\\b",
                                "a\\",
                                "a:stream",
                                "a.",
                                "a ",
                                "a.\\b",
                                "CON",
                                "con.txt",
                                "a\\NUL",
                                "nul .x",
                                "AUX.a.b",
                                "PRN\\a",
                                "com1",
                                "LPT9.txt",
                                "COM\xC2\xB2",
                                "CONIN$",
                                "CONOUT$.txt",
                                "a\nb",
                                "a<b",
                                "a>b",
                                "a|b",
                                "a\"b",
                                "a?b",
                                "a*b",
                                "COM0",
                                "Images\\lpt1\\a",
                                "\\\\?\\C:\\a",
                                "..\\..\\tmp\\a"};
  for (const std::string& name : unsafe) {
    EXPECT_TRUE(cabinet::WhyUnsafe(name)) << name;
    RawCabinet raw = PlainCabinet(name, "x");
    raw.members[0].attributes |= 0x80;
    WriteBytes("unsafe.cab", raw.Build());
    EXPECT_TRUE(Extracted("unsafe.cab", 4).empty()) << name;
    EXPECT_EQ(4, Cabarc({"x", "unsafe.cab", "out\\"}).code) << name;  // not without its folders either
  }
  for (const std::string name : {"a", "a.b", "..a", "a..b", "console", "com10", "comx", "nulls.txt", "LPT", " a",
                                 "a b\\c d", ".hidden", "\xC3\xA9", "CON1"}) {
    EXPECT_FALSE(cabinet::WhyUnsafe(name)) << name;
  }
  fs::create_directory("sub");
  Write("a:b", "x");
  Write("a", "x");
  EXPECT_EQ(4, Cabarc({"n", "u.cab", "a:b"}).code);
  EXPECT_EQ(4, Cabarc({"-p", "n", "u.cab", "sub/../a"}).code);
  EXPECT_EQ(4, Cabarc({"-p", "n", "u.cab", fs::absolute("a")}).code);
  EXPECT_FALSE(fs::exists("u.cab"));
  EXPECT_EQ(0, Cabarc({"n", "u.cab", fs::absolute("a")}).code);
}

TEST_F(Names, TwoOfTheSameAreRefused) {
  for (const auto& [one, other] : {std::pair{"a", "a"}, {"a\\B", "A/b"}}) {
    RawCabinet raw = PlainCabinet(one, "xy");
    raw.members = {{one, 1}, {other, 1, 1}};
    WriteBytes("two.cab", raw.Build());
    EXPECT_TRUE(Extracted("two.cab", 4).empty()) << one;
  }
  Write("1/a", "x");
  Write("2/A", "y");
  EXPECT_EQ(4, Cabarc({"n", "t.cab", "1/a", "2/A"}).code);
  EXPECT_EQ(0, Cabarc({"-p", "n", "t.cab", "1/a", "2/A"}).code);
  EXPECT_EQ(4, Cabarc({"x", "t.cab", "out\\"}).code);
}

TEST_F(Names, AreDecodedAsTheCabinetSays) {
  const struct {
    std::string bytes;
    std::uint16_t flag;
    std::string name;  // empty: refused
  } cases[] = {{"\xE9t\x80", 0, "ét€"},    {"ét€", 0x80, "ét€"},           {"\x81", 0, "\xEF\xBF\xBD"},
               {"\xE9t", 0x80, ""},        {"\xC0\xAF", 0x80, ""},         {"\xE0\x80\xAF", 0x80, ""},
               {"\xED\xA0\x80", 0x80, ""}, {"\xF4\x90\x80\x80", 0x80, ""}, {"\xF0\x8F\xBF\xBF", 0x80, ""},
               {"\xE2\x82", 0x80, ""},     {"\xF0\x9F\x98\x80", 0x80, "😀"}};
  for (const auto& one : cases) {
    RawCabinet raw = PlainCabinet(one.bytes, "x");
    raw.members[0].attributes |= one.flag;
    WriteBytes("n.cab", raw.Build());
    const Tree expected = one.name.empty() ? Tree() : Tree{{one.name, ".x"}};
    EXPECT_EQ(expected, Extracted("n.cab", one.name.empty() ? 3 : 0)) << one.bytes;
  }
}

// Compared with a plain matcher in tests/fuzz; here what only the archiver has.
TEST_F(Names, MatchWildcards) {
  EXPECT_TRUE(cabinet::Matches("*.*", "noext"));
  EXPECT_TRUE(cabinet::Matches("*.txt", "a.TXT"));
  EXPECT_TRUE(cabinet::Matches("a?c", "a\u00E9c"));
  EXPECT_FALSE(cabinet::Matches("*a*a*a*a*a*a*a*a*a*a*a*a*a*a*b", std::string(200, 'a')));  // must not take for ever
}

}  // namespace
