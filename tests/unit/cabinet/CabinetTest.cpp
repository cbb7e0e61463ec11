// The reader of cabinet structure, on cabinets made by hand.
#include <cstring>
#include <random>

#include "../../cabarc/RawCabinet.h"
#include "cabinet/Blocks.h"
#include "cabinet/Rescue.h"
#include "cabinet/Structure.h"

namespace {

using base::Result;
using cabinet::Structure;

// Bytes in memory, which cannot be read where a bad place begins, and come in small pieces if so wanted.
class MemorySource : public cabinet::Source {
 public:
  explicit MemorySource(std::string text) : bytes(std::move(text)) {}

  std::int64_t ReadAt(std::uint64_t offset, void* data, std::size_t count) override {
    if (offset >= bytes.size()) return 0;
    const std::size_t size = std::min({count, pieces, bytes.size() - static_cast<std::size_t>(offset)});
    if (offset < badTo && badFrom < offset + size) return -1;
    longest = std::max(longest, size);
    std::memcpy(data, bytes.data() + offset, size);
    return static_cast<std::int64_t>(size);
  }
  std::uint64_t Size() override { return bytes.size(); }

  std::string bytes;
  std::size_t pieces = SIZE_MAX;
  std::uint64_t badFrom = 0, badTo = 0;
  std::size_t longest = 0;
};

struct Notes : cabinet::WalkObserver {
  bool Sound(const cabinet::Block& block) override {
    sound.push_back(block.offset);
    return sound.size() != enough;
  }
  bool Damaged(const cabinet::Damage& damage) override {
    damages.push_back(damage);
    return true;
  }

  std::size_t enough = SIZE_MAX;
  std::vector<std::uint64_t> sound;
  std::vector<cabinet::Damage> damages;
};

std::string Filled(std::size_t size, unsigned seed) {
  std::string text(size, '\0');
  std::generate(text.begin(), text.end(), std::mt19937(seed));
  return text;
}

// Two folders: a.txt and b.txt share the first block of the first one, c.txt takes three blocks; d.txt stands in the
// second one, and so does an empty file.
RawCabinet TwoFolders() {
  RawCabinet raw;
  raw.members = {{"a.txt", 10}, {"b.txt", 20, 10}, {"s/c.txt", 90000, 30}, {"d.txt", 5, 0, 1}, {"e.txt", 0, 5, 1}};
  for (const std::size_t size : {32768u, 32768u, 24494u}) raw.blocks.push_back({Filled(size, 1), size});
  raw.blocks.push_back({"folder", 6});
  raw.firstFolder = 3;
  return raw;
}

std::string Cause(MemorySource& source, Structure& structure) {
  const base::Outcome read = cabinet::ReadStructure(source, structure);
  EXPECT_EQ(read.IsDone(), read.cause.empty()) << "a refusal has words";
  return read.cause;
}

std::string Cause(const std::string& bytes) {
  MemorySource source(bytes);
  Structure structure;
  return Cause(source, structure);
}

TEST(CabinetStructure, IsReadWholeInWhateverPieces) {
  for (const std::size_t pieces : {std::size_t{1}, std::size_t{7}, SIZE_MAX}) {
    for (const bool reserves : {false, true}) {
      RawCabinet raw = TwoFolders();
      raw.reserves = reserves;
      MemorySource source(raw.Build());
      source.pieces = pieces;
      Structure structure;
      ASSERT_EQ("", Cause(source, structure));
      EXPECT_EQ(source.bytes.size(), structure.size);
      ASSERT_EQ(2u, structure.folders.size());
      EXPECT_EQ(structure.recordsEnd, structure.folders[0].dataAt);
      EXPECT_EQ(structure.folders[1].dataAt, structure.EndOfFolder(0));
      EXPECT_EQ(structure.size, structure.EndOfFolder(1));
      EXPECT_EQ((std::vector<std::uint64_t>{90030, 5}), structure.Extents());
      ASSERT_EQ(5u, structure.members.size());
      const cabinet::Member& member = structure.members[2];
      EXPECT_EQ("s\\c.txt", member.name);
      EXPECT_EQ(90000u, member.size);
      EXPECT_EQ(30u, member.at);
      EXPECT_EQ(0x5A21, member.stamp.date);
      EXPECT_EQ(0x6000, member.stamp.time);
      EXPECT_EQ(cabinet::kArchive, member.attributes);
      EXPECT_TRUE(cabinet::WalkBlocks(source, structure).IsDone());
    }
  }
}

TEST(CabinetStructure, NamesThatAreMalformedDoNotHideOthers) {
  RawCabinet raw = TwoFolders();
  raw.members[0].name = "\xE9\x80";
  raw.members[1].name = "\xE9\x80";
  raw.members[1].attributes = cabinet::kNameIsUtf8;
  raw.members[2].name = "\xC3\xA9";
  raw.members[2].attributes = cabinet::kNameIsUtf8;
  MemorySource source(raw.Build());
  Structure structure;
  ASSERT_EQ("", Cause(source, structure));
  for (const auto& [index, name, malformed] :
       {std::tuple(0, "\u00E9\u20AC", false), {1, "\u00E9\u20AC", true}, {2, "\u00E9", false}}) {
    EXPECT_EQ(name, structure.members[static_cast<std::size_t>(index)].name);
    EXPECT_EQ(malformed, structure.members[static_cast<std::size_t>(index)].nameIsMalformed);
  }
  const cabinet::ReadingRules other{[](std::string_view) { return std::string("other"); }};
  ASSERT_TRUE(cabinet::ReadStructure(source, structure, other).IsDone());
  EXPECT_EQ("other", structure.members[0].name);
  EXPECT_EQ("\u241B[2J\u2400\uFFFD\uFFFD\u00E9", cabinet::Printable(std::string_view("\x1B[2J\0\xFF\u202E\u00E9", 11)));
}

TEST(CabinetStructure, WhatContradictsItselfIsRefused) {
  const std::string whole = TwoFolders().Build();
  const std::tuple<std::size_t, int, std::uint64_t, std::string> cases[] = {
      {0, 1, 'N', "no cabinet"},
      {8, 4, whole.size() + 1, "its end is missing"},
      {8, 4, whole.size() - 1, "longer"},
      {16, 4, 40, "not where they should be"},
      {16, 4, 0x20000, "not where"},
      {24, 2, 0x0104, "version"},
      {26, 2, 1, "in no folder"},
      {28, 2, 9, "too long"},
      {30, 2, 1, "set"},
      {30, 2, 8, "flags"},
      {36, 4, 40, "data are not where"},
      {36, 4, 0xFFFFFFF0, "data are not where"},
      {40, 2, 65535, "data are not"},
      {40, 2, 2, "has no data"},
      {52, 4, 0xFFFFFFFF, "no data"},
      {52, 4, 11, "overlap"}};
  for (const auto& [at, size, value, words] : cases) {
    const std::string cause =
        Cause(std::string(whole).replace(at, static_cast<std::size_t>(size), Number(value, size)));
    EXPECT_NE(std::string::npos, cause.find(words)) << at << ": " << cause;
  }
  for (std::size_t size = 0; size < whole.size(); ++size) EXPECT_NE("", Cause(whole.substr(0, size))) << size;
  MemorySource unreadable(whole);
  unreadable.badTo = 100;
  Structure structure;
  EXPECT_EQ("it cannot be read", Cause(unreadable, structure));
}

// Twenty bytes that the header reserves tell of the signature, which stands behind the cabinet.
TEST(CabinetStructure, ASignatureMayFollow) {
  RawCabinet raw = PlainCabinet("a", "x");
  std::string bytes = raw.Build();
  const std::size_t size = bytes.size() + 24;
  bytes.replace(8, 4, Number(size, 4)).replace(16, 4, Number(44 + 24, 4)).replace(30, 2, Number(4, 2));
  bytes.replace(36, 4, Number(44 + 17 + 26, 4));
  bytes.insert(36, Number(20, 4) + Number(0x100000, 4) + Number(size, 4) + Number(9, 4) + Number(0, 8));
  bytes.replace(60, 4, Number(68 + 18, 4));
  EXPECT_EQ("", Cause(bytes + "signature"));
  EXPECT_NE("", Cause(bytes + "signatur"));
  EXPECT_NE("", Cause(bytes + "signatures"));
}

TEST(CabinetBlocks, AWalkTellsAllDamagesAndWhomTheyTouch) {
  const std::string whole = TwoFolders().Build();
  MemorySource source(whole);
  Structure structure;
  ASSERT_EQ("", Cause(source, structure));
  const std::size_t first = structure.folders[0].dataAt, second = structure.folders[1].dataAt;
  const std::tuple<std::size_t, std::string, std::size_t> cases[] = {{first + 8, "a.txt b.txt s\\c.txt ", 3},
                                                                     {first + 32776 + 100, "s\\c.txt ", 3},
                                                                     {first + 2 * 32776 + 24501, "s\\c.txt ", 3},
                                                                     {second + 12, "d.txt ", 3},
                                                                     {second, "d.txt ", 3},
                                                                     {second + 5, "d.txt ", 3}};
  for (const auto& [at, expected, sound] : cases) {
    source.bytes = whole;
    source.bytes[at] = static_cast<char>(source.bytes[at] ^ 4);
    EXPECT_EQ(Result::Failed, cabinet::WalkBlocks(source, structure).result) << at;
    Notes notes;
    EXPECT_NE("", cabinet::WalkBlocks(source, structure, notes).cause);
    ASSERT_EQ(1u, notes.damages.size()) << at;
    std::string touched;
    for (const cabinet::Member* member : cabinet::TouchedMembers(structure, notes.damages[0])) {
      touched += member->name + " ";
    }
    EXPECT_EQ(expected, touched) << at;
    EXPECT_EQ(sound, notes.sound.size()) << at;
  }
}

TEST(CabinetBlocks, EachMustBeThereReadableAndWithinItsFolder) {
  RawCabinet raw = TwoFolders();
  MemorySource source(raw.Build());
  Structure structure;
  ASSERT_EQ("", Cause(source, structure));
  const std::size_t first = structure.folders[0].dataAt;

  Notes stopping;
  stopping.enough = 2;
  EXPECT_EQ(Result::Stopped, cabinet::WalkBlocks(source, structure, stopping).result);
  EXPECT_EQ(2u, stopping.sound.size());

  source.badFrom = first + 40000;
  source.badTo = source.badFrom + 1;
  Notes notes;
  EXPECT_NE(std::string::npos, cabinet::WalkBlocks(source, structure, notes).cause.find("cannot be read"));
  EXPECT_EQ((std::vector<std::uint64_t>{0, 65536, 0}), notes.sound) << "the blocks around a bad place are read";
  source.badTo = 0;

  raw.members[2].size += 1;  // more than the blocks hold, though not more than they could
  MemorySource lacking(raw.Build());
  ASSERT_EQ("", Cause(lacking, structure));
  EXPECT_NE(std::string::npos, cabinet::WalkBlocks(lacking, structure).cause.find("missing"));

  raw = TwoFolders();
  raw.blocks[1].checked = false;
  MemorySource unchecked(raw.Build());
  ASSERT_EQ("", Cause(unchecked, structure));
  EXPECT_TRUE(cabinet::WalkBlocks(unchecked, structure).IsDone());
  structure.guarded = true;  // then every block has one
  EXPECT_FALSE(cabinet::WalkBlocks(unchecked, structure).IsDone());
  EXPECT_LE(unchecked.longest, 4 * cabinet::Window::kReach) << "memory does not depend on the cabinet's size";
}

TEST(CabinetRescue, GoesOnBehindWhatCannotBeReadAndWhereRecordsAreWrong) {
  const std::string whole = TwoFolders().Build();
  MemorySource source(whole);
  Structure structure;
  ASSERT_EQ("", Cause(source, structure));
  const std::size_t first = structure.folders[0].dataAt;
  source.badFrom = first + 32776;  // the second block, its header too
  source.badTo = source.badFrom + 512;
  source.bytes.replace(44, 4, Number(7, 4));  // where the second folder's data begin
  cabinet::RescuedStructure rescued;
  ASSERT_TRUE(cabinet::RescueStructure(source, rescued).IsDone());
  EXPECT_FALSE(rescued.flaws.empty());
  ASSERT_EQ(5u, rescued.structure.members.size());
  const std::vector<cabinet::RescuedFolder> folders = cabinet::RescueBlocks(source, rescued);
  ASSERT_EQ(2u, folders.size());
  ASSERT_EQ(2u, folders[0].blocks.size());
  EXPECT_EQ(0u, folders[0].blocks[0].offset);
  EXPECT_EQ(65536u, folders[0].blocks[1].offset);
  ASSERT_EQ(1u, folders[0].damages.size());
  EXPECT_EQ(32768u, folders[0].damages[0].from);
  EXPECT_EQ(65536u, folders[0].damages[0].to);
  ASSERT_EQ(1u, folders[1].blocks.size());
  EXPECT_TRUE(folders[1].damages.empty());
}

TEST(CabinetRescue, ACrcTellsWhereAFewBytesAreWrong) {
  const auto crc = [](const std::string& text) {
    return cabinet::Crc32(0, reinterpret_cast<const std::uint8_t*>(text.data()), text.size());
  };
  ASSERT_EQ(0xCBF43926, crc("123456789"));
  const std::string text = Filled(5000, 7);
  for (const std::size_t at : {0u, 1u, 2500u, 4996u}) {
    for (const std::uint32_t mask : {1u, 0x80u, 0x5Au, 0x12345678u}) {
      std::string other = text;
      for (std::size_t i = 0; i < 4; ++i)
        other[at + i] = static_cast<char>(other[at + i] ^ static_cast<char>(mask >> 8 * i));
      for (const std::size_t behind : {0u, 3000u}) {
        const std::string rest = Filled(behind, 8);
        const auto accept = [mask](const cabinet::WrongBytes& wrong) { return wrong.mask == mask; };
        const auto wrong = cabinet::FindWrongBytes(5000, behind, crc(text + rest) ^ crc(other + rest), accept);
        ASSERT_TRUE(wrong) << at;
        EXPECT_EQ(at, wrong->at);
      }
    }
  }
}

}  // namespace
