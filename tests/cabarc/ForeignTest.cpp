// Cabinets as others write them, and kinds that are refused.
#include "RawCabinet.h"
#include "Workspace.h"

namespace {

class Foreign : public Workspace {
 protected:
  static void Refused(const std::string& bytes, const std::string& reason) {
    EXPECT_TRUE(ExtractedBytes(bytes, ExitCode::Broken).empty()) << reason;
    EXPECT_NE(std::string::npos, Cabarc("x raw.cab out\\").err.find(reason)) << reason;
  }

  static constexpr std::size_t kCopied = 127 * 258;

  // 127 copies of the 258 bytes that stand 32,768 bytes before: a block that is nothing without the one before it.
  static std::string FarCopies() {
    std::string bits = "110";                                            // last block, fixed codes
    for (int i = 0; i < 127; ++i) bits += "11000101111011111111111111";  // length 258, distance 32,768
    bits += "0000000";
    std::string block = "CK" + std::string((bits.size() + 7) / 8, '\0');
    for (std::size_t i = 0; i < bits.size(); ++i) {
      if (bits[i] == '1') block[2 + i / 8] = static_cast<char>(block[2 + i / 8] | 1 << i % 8);
    }
    return block;
  }
};

TEST_F(Foreign, BlocksMayReferToTheOnesBeforeThem) {
  const std::string start = Noise(32768, 1);
  const std::string stored = "CK\x01" + Number(32768, 2) + Number(~32768U, 2) + start;
  RawCabinet raw;
  raw.method = 1;
  raw.reserves = true;  // bytes that do not count in the checksums; in DamageTest.cpp they do
  raw.blocks = {{stored, start.size()}};
  std::string whole = start;
  for (const int copies : {1, 19}) {  // 20 are more blocks than a thread takes at once: the rest begins in a history
    for (int i = 0; i < copies; ++i) {
      raw.blocks.push_back({FarCopies(), kCopied});
      whole += whole.substr(whole.size() - 32768, kCopied);
    }
    raw.members = {{"a", whole.size()}};
    EXPECT_TRUE(ExtractedBytes(raw.Build()) == (Tree{{"a", "." + whole}})) << copies;
  }
  raw.blocks.erase(raw.blocks.begin());  // now it refers to what never was
  raw.members[0].size = 1000;
  Refused(raw.Build(), "cannot be unpacked");
}

TEST_F(Foreign, UnsupportedKindsAreNamed) {
  RawCabinet raw = PlainCabinet("a", "text");
  const std::tuple<std::size_t, unsigned, std::string> cases[] = {
      {42, 2, "Quantum"}, {42, 0x1503, "LZX"},     {30, 2, "set"},  // the first of a set
      {30, 1, "set"},     {24, 0x0104, "version"}, {26, 0, "it"}};  // no folder
  for (const auto& [at, value, reason] : cases) Refused(raw.Build().replace(at, 2, Number(value, 2)), reason);
  raw.members.push_back({"b", 2, 3});
  Refused(raw.Build(), "overlap");
  raw.members = {{"a", 5}};
  Refused(raw.Build(), "missing");
  Refused(PlainCabinet(std::string(256, 'a'), "text").Build(), "too long");
}

TEST_F(Foreign, DataWithoutChecksumAreTakenOnRequestOnly) {
  RawCabinet raw = PlainCabinet("a", "text");
  raw.blocks[0].checked = false;
  Refused(raw.Build(), "--allow-unchecked");
  Succeeds("--allow-unchecked x raw.cab out\\");
  EXPECT_EQ((Tree{{"a", ".text"}}), Read("out"));
  // Never from a cabinet of our own, which has no such data.
  Write("a", "text");
  Succeeds("-m NONE n own.cab a");
  std::string own = ReadFile("own.cab");
  own.back() = 'T';  // the folder's CRC alone would tell what the checksum was
  Write("own.cab", own.replace(own.size() - 12, 4, 4, '\0'));
  Fails(ExitCode::Broken, "--allow-unchecked --salvage x own.cab out2\\");
  EXPECT_TRUE(Read("out2").empty());
}

}  // namespace
