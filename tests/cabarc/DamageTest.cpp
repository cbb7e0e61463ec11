// Damaged cabinets: refused, or extracted exactly; never anything else. To be run with sanitizers.
#include "RawCabinet.h"
#include "Workspace.h"

namespace fs = std::filesystem;

namespace {

class Damage : public Workspace {
 protected:
  // Every file of `tree` is one of `whole`.
  static bool Within(const Tree& tree, const Tree& whole) {
    return std::includes(whole.begin(), whole.end(), tree.begin(), tree.end());
  }

  static void CutEverywhere(const Bytes& whole, const Tree& tree) {
    for (std::size_t size = 0; size < whole.size(); ++size) {
      WriteBytes("cut.cab", Bytes(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size)));
      EXPECT_TRUE(Within(Extracted("cut.cab", 3), tree)) << "cut to " << size;
    }
  }

  template <class Check>
  static void FlipEverywhere(const Bytes& whole, const Check& check) {
    for (std::size_t at = 0; at < whole.size(); ++at) {
      for (const int mask : {0x01, 0x10, 0x80, 0xFF}) {
        Bytes bytes = whole;
        bytes[at] = static_cast<std::uint8_t>(bytes[at] ^ mask);
        WriteBytes("flip.cab", bytes);
        fs::remove_all("out");
        const RunResult result = Cabarc({"-p", "x", "flip.cab", "out\\"});
        check(result.code, fs::exists("out") ? Read("out") : Tree(), at);
      }
    }
  }
};

TEST_F(Damage, IsFoundInEveryByteOfAnOwnCabinet) {
  Write("a.txt", "a short text, a short text, a short text");
  Write("Images/b", Noise(40, 1));
  Write("empty", "");
  ASSERT_EQ(0, Cabarc({"-p", "-r", "n", "whole.cab", "a.txt", ".\\Images\\*.*", "empty"}).code);
  const Bytes whole = ReadBytes("whole.cab");
  const Tree tree = Extracted("whole.cab", 0);
  ASSERT_EQ(3u, tree.size());
  CutEverywhere(whole, tree);
  FlipEverywhere(whole, [&](int code, const Tree& out, std::size_t at) {
    // Without its mark it counts as a foreign cabinet, a whole one.
    const bool inMark = at >= cabinet::kCrcAt - cabinet::kCrcMark.size() && at < cabinet::kCrcAt;
    EXPECT_EQ(inMark ? 0 : 3, code) << "at " << at;
    EXPECT_TRUE(inMark ? out == tree : Within(out, tree)) << "at " << at;
  });
}

// Here nothing guards names, sizes and dates, so they may come out changed; the data may not.
TEST_F(Damage, OfAForeignCabinetNeverChangesDataUnseen) {
  RawCabinet cabinet = PlainCabinet("a.txt", "0123456789");
  cabinet.members = {{"a.txt", 4}, {"b\\c.txt", 6, 4}};
  cabinet.reserves = true;
  const Bytes whole = cabinet.Build();
  WriteBytes("whole.cab", whole);
  const Tree tree = Extracted("whole.cab", 0);
  ASSERT_EQ((Tree{{"a.txt", ".0123"}, {"b/c.txt", ".456789"}}), tree);
  CutEverywhere(whole, tree);
  FlipEverywhere(whole, [&](int code, const Tree& out, std::size_t at) {
    EXPECT_TRUE(code == 0 || code == 3 || code == 4) << "at " << at;
    for (const auto& [name, text] : out) {
      EXPECT_NE(std::string::npos, std::string("0123456789").find(text.substr(1))) << name << " at " << at;
    }
  });
}

TEST_F(Damage, LeavesNoUnfinishedFileAndKeepsFinishedOnes) {
  Write("first", Noise(40000, 1));
  Write("second", Noise(40000, 2));
  ASSERT_EQ(0, Cabarc({"n", "whole.cab", "first", "second"}).code);
  Bytes bytes = ReadBytes("whole.cab");
  bytes[bytes.size() - 10] ^= 1;
  WriteBytes("damaged.cab", bytes);
  const Tree out = Extracted("damaged.cab", 3);
  EXPECT_EQ(1u, out.size());
  EXPECT_TRUE(out.contains("first"));
}

TEST_F(Damage, OtherDataBeforeOrBehindIsRefused) {
  Bytes bytes = PlainCabinet("a", "x").Build();
  bytes.push_back(0);
  WriteBytes("behind.cab", bytes);
  EXPECT_TRUE(Extracted("behind.cab", 3).empty());
  bytes.pop_back();
  bytes.insert(bytes.begin(), 0);
  WriteBytes("before.cab", bytes);
  EXPECT_TRUE(Extracted("before.cab", 3).empty());
}

}  // namespace
