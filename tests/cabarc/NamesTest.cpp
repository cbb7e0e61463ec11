// Names: what is safe, what matches, how it is encoded.
#include "cabarc/MemberNames.h"

#include "RawCabinet.h"
#include "Workspace.h"
#include "cabarc/CabFormat.h"

namespace {

class Names : public Workspace {};

using cabinet::kNameIsUtf8;

TEST_F(Names, UnsafeOnesAreNeitherExtractedNorPacked) {
  const std::map<std::string, std::vector<std::string>> unsafe = {
      {"it is empty", {""}},
      {"it is an absolute path", {"\\a", "/a", "\\\\server\\share\\a", "\\\\?\\C:\\a"}},
      {"a drive or a stream", {"C:a", "C:\\a", "a:stream"}},
      {"it leads out of the folder", {"..", "..\\a", "a\\..\\b", "a/../../b", "a\\..", "..\\..\\tmp\\a"}},
      {"an empty part in its path", {"a\\\\b", "a\\"}},
      {"a blank or a dot at the end of a name", {".", ".\\a", "a.", "a ", "a.\\b"}},
      {"a character that no file name may have", {"a\nb", "a<b", "a>b", "a|b", "a\"b", "a?b", "a*b"}},
      {"it is the name of a device",
       {"CON", "con.txt", "a\\NUL", "nul .x", "AUX.a.b", "PRN\\a", "com1", "LPT9.txt", "COM\xC2\xB2", "CONIN$",
        "CONOUT$.txt", "COM0", "Images\\lpt1\\a"}}};
  for (const auto& [reason, names] : unsafe) {
    for (const std::string& name : names) {
      EXPECT_EQ(reason, cabarc::WhyUnsafe(name).value_or("safe")) << name;
      EXPECT_TRUE(ExtractedBytes(PlainCabinet(name, "x", kNameIsUtf8).Build(), ExitCode::UnsafeName).empty()) << name;
      Fails(ExitCode::UnsafeName, "x raw.cab out\\");  // not without its folders either
    }
  }
  for (const std::string name : {"a", "a.b", "..a", "a..b", "console", "com10", "comx", "nulls.txt", "LPT", " a",
                                 "a b\\c d", ".hidden", "\xC3\xA9", "CON1"}) {
    EXPECT_FALSE(cabarc::WhyUnsafe(name)) << name;
  }
  fs::create_directory("sub");
  Write("a:b", "x");
  Write("a", "x");
  const std::string absolute = fs::absolute("a");
  for (const std::string& argument : {std::string("a:b"), std::string("sub/../a"), absolute}) {
    Fails(ExitCode::UnsafeName, "-p n u.cab " + argument);
  }
  EXPECT_FALSE(fs::exists("u.cab"));
  Succeeds("n u.cab " + absolute);
}

TEST_F(Names, TwoOfTheSameAreRefused) {
  for (const auto& [one, other] : {std::pair{"a", "a"}, {"a\\B", "A/b"}}) {
    RawCabinet raw = PlainCabinet(one, "xy");
    raw.members = {{one, 1}, {other, 1, 1}};
    EXPECT_TRUE(ExtractedBytes(raw.Build(), ExitCode::UnsafeName).empty()) << one;
  }
  Write("1/a", "x");
  Write("2/A", "y");
  Fails(ExitCode::UnsafeName, "n t.cab 1/a 2/A");
  Succeeds("-p n t.cab 1/a 2/A");
  Fails(ExitCode::UnsafeName, "x t.cab out\\");
}

TEST_F(Names, AreDecodedAsTheCabinetSays) {
  // The name's bytes, their flag, and what they mean; nothing where they are refused.
  const std::tuple<std::string, std::uint16_t, std::string> cases[] = {
      {"\xE9t\x80", 0, "ét€"},           {"ét€", kNameIsUtf8, "ét€"},           {"\x81", 0, "\xEF\xBF\xBD"},
      {"\xE9t", kNameIsUtf8, ""},        {"\xC0\xAF", kNameIsUtf8, ""},         {"\xE0\x80\xAF", kNameIsUtf8, ""},
      {"\xED\xA0\x80", kNameIsUtf8, ""}, {"\xF4\x90\x80\x80", kNameIsUtf8, ""}, {"\xF0\x8F\xBF\xBF", kNameIsUtf8, ""},
      {"\xE2\x82", kNameIsUtf8, ""},     {"\xF0\x9F\x98\x80", kNameIsUtf8, "😀"}};
  for (const auto& [bytes, flag, name] : cases) {
    const Tree expected = name.empty() ? Tree() : Tree{{name, ".x"}};
    EXPECT_EQ(expected,
              ExtractedBytes(PlainCabinet(bytes, "x", flag).Build(), name.empty() ? ExitCode::Broken : ExitCode::Ok))
        << bytes;
  }
}

// What fits is compared with a plain matcher in tests/fuzz.
TEST_F(Names, MatchWildcardsBeforeLong) {
  EXPECT_FALSE(cabarc::Matches("*a*a*a*a*a*a*a*a*a*a*a*a*a*a*b", std::string(200, 'a')));  // must not take for ever
}

}  // namespace
