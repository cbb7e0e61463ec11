// Cabinets as others write them, and kinds that are refused.
#include "RawCabinet.h"
#include "Workspace.h"

namespace {

class Foreign : public Workspace {
 protected:
  static void Refused(const std::string& what, const Bytes& bytes, const std::string& reason) {
    WriteBytes("refused.cab", bytes);
    EXPECT_TRUE(Extracted("refused.cab", 3).empty()) << what;
    EXPECT_NE(std::string::npos, Cabarc({"x", "refused.cab", "out\\"}).err.find(reason)) << what;
  }

  static std::string Stored(const std::string& text) {
    const auto size = static_cast<std::uint16_t>(text.size());
    std::string block = "CK\x01";
    for (const int value : {size & 255, size >> 8, ~size & 255, ~size >> 8 & 255}) block += static_cast<char>(value);
    return block + text;
  }

  static constexpr std::uint16_t kCopied = 127 * 258;

  // 127 copies of the 258 bytes that stand 32,768 bytes before: a block that is nothing without the one before it.
  static std::string FarCopies() {
    std::string bits =
        "1"
        "10";  // last block, fixed codes (low bit first)
    for (int i = 0; i < 127; ++i)
      bits +=
          "11000101"
          "11101"
          "1111111111111";  // length 258, distance 32,768
    bits += "0000000";
    std::string block = "CK";
    for (std::size_t i = 0; i < bits.size(); i += 8) {
      int byte = 0;
      for (std::size_t k = 0; k < 8 && i + k < bits.size(); ++k) byte |= (bits[i + k] - '0') << k;
      block += static_cast<char>(byte);
    }
    return block;
  }
};

TEST_F(Foreign, BlocksMayReferToTheOnesBeforeThem) {
  const std::string start = Noise(32768, 1);
  const std::string copy = start.substr(0, kCopied);
  RawCabinet raw;
  raw.method = 1;
  raw.blocks = {{Stored(start), 32768}, {FarCopies(), kCopied}};
  raw.members = {{"a", static_cast<std::uint32_t>(start.size() + copy.size())}};
  WriteBytes("h.cab", raw.Build());
  EXPECT_TRUE(Extracted("h.cab", 0) == (Tree{{"a", "." + start + copy}}));

  // More blocks than one thread takes at once; the second run of blocks begins in the history of the first.
  std::string whole = start + copy;
  raw.blocks.resize(1);
  for (int i = 0; i < 20; ++i) raw.blocks.push_back({FarCopies(), kCopied});
  for (int i = 1; i < 20; ++i) whole += whole.substr(whole.size() - 32768, kCopied);
  raw.members[0].size = static_cast<std::uint32_t>(whole.size());
  WriteBytes("long.cab", raw.Build());
  EXPECT_TRUE(Extracted("long.cab", 0) == (Tree{{"a", "." + whole}}));

  raw.blocks.erase(raw.blocks.begin());  // now it refers to what never was
  raw.members[0].size = 1000;
  Refused("no history", raw.Build(), "cannot be unpacked");
}

TEST_F(Foreign, ReservedBytesMayCountInChecksumsOrNot) {
  RawCabinet raw = PlainCabinet("a", "text");
  raw.reserves = true;
  for (const bool count : {false, true}) {
    raw.reserveCounts = count;
    WriteBytes("r.cab", raw.Build());
    EXPECT_EQ((Tree{{"a", ".text"}}), Extracted("r.cab", 0));
  }
}

TEST_F(Foreign, UnsupportedKindsAreNamed) {
  const Bytes plain = PlainCabinet("a", "text").Build();
  const auto with16 = [&](std::size_t at, std::uint32_t value) {
    Bytes bytes = plain;
    cabinet::Put16(bytes.data() + at, value);
    return bytes;
  };
  Refused("Quantum", with16(42, 2), "Quantum");
  Refused("LZX", with16(42, 0x1503), "LZX");
  Refused("first of a set", with16(30, 2), "set");
  Refused("last of a set", with16(30, 1), "set");
  Refused("version", with16(24, 0x0104), "version");
  Refused("no folder", with16(26, 0), "it");
  Refused(
      "overlap",
      [] {
        RawCabinet raw = PlainCabinet("a", "text");
        raw.members.push_back({"b", 2, 3});
        return raw.Build();
      }(),
      "overlap");
  Refused(
      "more than its data",
      [] {
        RawCabinet raw = PlainCabinet("a", "text");
        raw.members[0].size = 5;
        return raw.Build();
      }(),
      "missing");
  Refused(
      "name without end", [] { return PlainCabinet(std::string(256, 'a'), "text").Build(); }(), "too long");
}

TEST_F(Foreign, DataWithoutChecksumAreTakenOnRequestOnly) {
  RawCabinet raw = PlainCabinet("a", "text");
  raw.blocks[0].checked = false;
  Refused("unchecked", raw.Build(), "--allow-unchecked");
  EXPECT_EQ(0, Cabarc({"--allow-unchecked", "x", "refused.cab", "out\\"}).code);
  EXPECT_EQ((Tree{{"a", ".text"}}), Read("out"));
  // Never from a cabinet of our own, which has no such data.
  Write("a", "text");
  ASSERT_EQ(0, Cabarc({"-m", "NONE", "n", "own.cab", "a"}).code);
  Bytes own = ReadBytes("own.cab");
  cabinet::Put32(own.data() + own.size() - 12, 0);
  WriteBytes("own.cab", own);
  EXPECT_EQ(3, Cabarc({"--allow-unchecked", "--salvage", "x", "own.cab", "out2\\"}).code);
  EXPECT_TRUE(Read("out2").empty());
}

}  // namespace
