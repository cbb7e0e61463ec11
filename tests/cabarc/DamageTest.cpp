// Damaged cabinets: refused, or extracted exactly; never anything else. To be run with sanitizers.
#include <cstdio>
#include <fstream>
#include <functional>

#include "RawCabinet.h"
#include "Workspace.h"

namespace fs = std::filesystem;

namespace {

class Damage : public Workspace {
 protected:
  struct Result {
    int code = 0;
    bool wrote = false;  // any file, under whatever name
    Tree tree;
    std::string list;  // names, sizes, dates and attributes
  };

  static Result Extract(const Bytes& bytes) {
    WriteBytes("damaged.cab", bytes);
    return ExtractDamaged();
  }

  static Result ExtractDamaged() {
    if (fs::exists("out")) fs::remove_all("out");
    Result result;
    result.code = Cabarc({"-t", "1", "--allow-unchecked", "-p", "x", "damaged.cab", "out\\"}).code;
    result.wrote = fs::exists("out");
    if (result.wrote) result.tree = Read("out");
    if (result.code == 0) result.list = Cabarc({"l", "damaged.cab"}).out;
    return result;
  }

  static Result ExtractStart(const Bytes& whole, std::size_t size) {
    return Extract(Bytes(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size)));
  }

  // Calls `check` with every cabinet that differs in one byte: by one bit, or by all of them.
  static void ChangeEveryByte(const Bytes& whole, const std::function<void(const Result&, std::size_t)>& check) {
    WriteBytes("damaged.cab", whole);
    // In its place: a file that is written anew waits for the disk on some file systems.
    std::fstream file("damaged.cab", std::ios::binary | std::ios::in | std::ios::out);
    const auto put = [&](std::size_t at, int byte) {
      file.seekp(static_cast<std::streamoff>(at)).put(static_cast<char>(byte)).flush();
    };
    for (std::size_t at = 0; at < whole.size(); ++at) {
      for (const int mask : {1, 2, 4, 8, 16, 32, 64, 128, 255}) {
        put(at, whole[at] ^ mask);
        check(ExtractDamaged(), at);
      }
      put(at, whole[at]);
    }
    ASSERT_TRUE(file.good());
  }
};

TEST_F(Damage, OfAnOwnCabinetIsFoundBeforeAnythingIsWritten) {
  Write("a.txt", "a short text, a short text");
  Write("Images/b", Noise(9, 1));
  Write("empty", "");
  ASSERT_EQ(0, Cabarc({"-p", "-r", "n", "whole.cab", "a.txt", ".\\Images\\*.*", "empty"}).code);
  const Bytes whole = ReadBytes("whole.cab");
  const Result good = Extract(whole);
  ASSERT_EQ(3u, good.tree.size());
  for (std::size_t size = 0; size < whole.size(); ++size) {
    const Result result = ExtractStart(whole, size);
    EXPECT_TRUE(result.code == 3 && !result.wrote) << "cut to " << size;
  }
  int refused = 0;
  int exact = 0;
  ChangeEveryByte(whole, [&](const Result& result, std::size_t at) {
    // Without its mark it counts as another archiver's cabinet, a whole one.
    const bool inMark = at >= cabinet::kCrcAt - cabinet::kCrcMark.size() && at < cabinet::kCrcAt;
    if (inMark) {
      EXPECT_TRUE(result.code == 0 && result.tree == good.tree && result.list == good.list) << "at " << at;
    } else {
      EXPECT_TRUE(result.code == 3 && !result.wrote) << "at " << at;
    }
    ++(result.code == 0 ? exact : refused);
  });
  std::printf("own cabinet of %zu bytes: %zu cuts refused; of the changes of one byte %d refused, %d harmless\n",
              whole.size(), whole.size(), refused, exact);
}

// Here nothing guards names, sizes, dates and attributes, so they may come out changed; the data may not.
TEST_F(Damage, OfAForeignCabinetNeverChangesDataUnseen) {
  RawCabinet cabinet = PlainCabinet("a.txt", "0123456789");
  cabinet.members = {{"a.txt", 4}, {"b\\c.txt", 6, 4}};
  cabinet.reserves = true;
  const Bytes whole = cabinet.Build();
  const Result good = Extract(whole);
  ASSERT_EQ((Tree{{"a.txt", ".0123"}, {"b/c.txt", ".456789"}}), good.tree);
  for (std::size_t size = 0; size < whole.size(); ++size) EXPECT_EQ(3, ExtractStart(whole, size).code) << size;
  std::map<std::string, int> counts;
  ChangeEveryByte(whole, [&](const Result& result, std::size_t at) {
    EXPECT_TRUE(result.code == 0 || result.code == 3 || result.code == 4) << "at " << at;
    for (const auto& [name, text] : result.tree) {
      EXPECT_NE(std::string::npos, std::string("0123456789").find(text.substr(1))) << name << " at " << at;
    }
    const bool sameData = result.tree == good.tree;
    ++counts[result.code != 0           ? "refused"
             : !sameData                ? "other names or sizes"
             : result.list != good.list ? "other dates or attributes"
                                        : "harmless"];
  });
  for (const auto& [what, count] : counts)
    std::printf("foreign cabinet: %d changes of one byte: %s\n", count, what.c_str());
}

TEST_F(Damage, IsSalvagedOnRequestOnlyAndWithoutUnfinishedFiles) {
  Write("first", Noise(40000, 1));
  Write("second", Noise(40000, 2));
  ASSERT_EQ(0, Cabarc({"n", "whole.cab", "first", "second"}).code);
  Bytes bytes = ReadBytes("whole.cab");
  bytes[bytes.size() - 10] ^= 1;
  WriteBytes("damaged.cab", bytes);
  EXPECT_TRUE(Extracted("damaged.cab", 3).empty());
  EXPECT_EQ(3, Cabarc({"--salvage", "x", "damaged.cab", "out\\"}).code);
  EXPECT_EQ((Tree{{"first", Read(".")["first"]}}), Read("out"));
}

TEST_F(Damage, OtherDataBeforeOrBehindIsRefused) {
  for (const bool behind : {false, true}) {
    Bytes bytes = PlainCabinet("a", "x").Build();
    bytes.insert(behind ? bytes.end() : bytes.begin(), 0);
    EXPECT_EQ(3, Extract(bytes).code);
  }
}

// The archive of a floppy set, put together wrongly. The second set is the first one with another file in its middle:
// its pieces fit between those of the first one block by block.
class JoinedPieces : public Damage {
 protected:
  using Pieces = std::vector<Bytes>;
  static constexpr std::size_t kPieceSize = 40000;

  static Pieces MakeSet(unsigned middle, Tree& tree) {
    fs::create_directory("set");
    for (unsigned i = 0; i < 5; ++i) Write("set/" + std::to_string(i), Noise(50000, i == 2 ? middle : i));
    for (const auto& file : fs::directory_iterator("set")) fs::last_write_time(file, fs::last_write_time("."));
    EXPECT_EQ(0, Cabarc({"n", "joined.cab", "set"}).code);
    tree = Read("set");
    const Bytes whole = ReadBytes("joined.cab");
    Pieces pieces;
    for (std::size_t at = 0; at < whole.size(); at += kPieceSize) {
      const auto from = whole.begin() + static_cast<std::ptrdiff_t>(at);
      pieces.emplace_back(from, from + static_cast<std::ptrdiff_t>(std::min(kPieceSize, whole.size() - at)));
    }
    return pieces;
  }

  void Expect(const Pieces& pieces, const std::vector<Tree>& exact, const std::string& what) {
    Bytes joined;
    for (const Bytes& piece : pieces) joined.insert(joined.end(), piece.begin(), piece.end());
    const Result result = Extract(joined);
    const bool isExact = result.code == 0 && std::count(exact.begin(), exact.end(), result.tree) == 1;
    EXPECT_TRUE(isExact || (result.code == 3 && !result.wrote)) << what;
    ++(isExact ? exact_ : refused_);
  }

  int refused_ = 0;
  int exact_ = 0;
};

TEST_F(JoinedPieces, AreRefusedBeforeAnythingIsWrittenUnlessTheyAreAWholeSet) {
  Tree first;
  Tree second;
  const Pieces one = MakeSet(2, first);
  const Pieces other = MakeSet(77, second);
  const auto count = static_cast<std::ptrdiff_t>(one.size());
  ASSERT_EQ(7, count);
  ASSERT_EQ(one.size(), other.size());
  ASSERT_EQ(one[6], other[6]);
  for (std::ptrdiff_t i = 0; i < count; ++i) {
    Pieces pieces = one;
    pieces.erase(pieces.begin() + i);
    Expect(pieces, {}, "without piece " + std::to_string(i));
    pieces = one;
    pieces.insert(pieces.begin() + i, one[static_cast<std::size_t>(i)]);
    Expect(pieces, {}, "piece " + std::to_string(i) + " twice");
    for (std::ptrdiff_t k = i + 1; k < count; ++k) {
      pieces = one;
      std::swap(pieces[static_cast<std::size_t>(i)], pieces[static_cast<std::size_t>(k)]);
      Expect(pieces, {}, "swapped " + std::to_string(i) + " and " + std::to_string(k));
    }
  }
  ASSERT_EQ(0, exact_);
  for (unsigned mix = 0; mix < 128; ++mix) {
    Pieces pieces;
    for (std::size_t i = 0; i < one.size(); ++i) pieces.push_back((mix >> i & 1) != 0 ? other[i] : one[i]);
    Expect(pieces, {first, second}, "mixed of two sets, " + std::to_string(mix));
  }
  std::printf("joined pieces: %d refused before anything was written, %d mixes that are a whole set exact\n", refused_,
              exact_);
}

}  // namespace
