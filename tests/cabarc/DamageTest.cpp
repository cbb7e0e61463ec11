// Damaged cabinets: refused, or extracted exactly; never anything else. To be run with sanitizers.
#include <cstdio>
#include <functional>
#include <numeric>

#include "RawCabinet.h"
#include "Workspace.h"
#include "cabarc/CabFormat.h"

namespace {

class Damage : public Workspace {
 protected:
  struct Result {
    ExitCode code = ExitCode::Ok;
    Tree tree;
    std::string list;    // names, sizes, dates and attributes
    bool wrote = false;  // any file, under whatever name

    bool IsCleanRefusal() const { return code == ExitCode::Broken && !wrote; }
  };

  static Result Extract(const std::string& bytes) {
    Write("damaged.cab", bytes);
    return ExtractDamaged();
  }

  static Result ExtractDamaged() {
    fs::remove_all("out");
    Result result;
    result.code = Cabarc("-t 1 --allow-unchecked -p x damaged.cab out\\").code;
    result.wrote = fs::exists("out");
    if (result.wrote) result.tree = Read("out");
    if (result.code == ExitCode::Ok) result.list = Cabarc("l damaged.cab").out;
    return result;
  }

  // Calls `check` with every cabinet that differs in one byte: by one bit, or by all of them.
  static void ChangeEveryByte(const std::string& whole, const std::function<void(const Result&, std::size_t)>& check) {
    Write("damaged.cab", whole);
    // In its place: a file that is written anew waits for the disk on some file systems.
    std::fstream file("damaged.cab", std::ios::binary | std::ios::in | std::ios::out);
    for (std::size_t at = 0; at < whole.size(); ++at) {
      for (const int mask : {1, 2, 4, 8, 16, 32, 64, 128, 255, 0}) {
        file.seekp(static_cast<std::streamoff>(at)).put(static_cast<char>(whole[at] ^ mask)).flush();
        if (mask != 0) check(ExtractDamaged(), at);
      }
    }
    ASSERT_TRUE(file.good());
  }
};

TEST_F(Damage, OfAnOwnCabinetIsFoundBeforeAnythingIsWritten) {
  Write("a.txt", "a short text, a short text");
  Write("Images/b", Noise(9, 1));
  Write("empty", "");
  Succeeds("-p -r n whole.cab a.txt .\\Images\\*.* empty");
  const std::string whole = ReadFile("whole.cab");
  const Result good = Extract(whole);
  ASSERT_EQ(3u, good.tree.size());
  for (std::size_t size = 0; size < whole.size(); ++size) {
    EXPECT_TRUE(Extract(whole.substr(0, size)).IsCleanRefusal()) << "cut to " << size;
  }
  int refused = 0;
  ChangeEveryByte(whole, [&](const Result& result, std::size_t at) {
    EXPECT_TRUE(result.IsCleanRefusal()) << "at " << at;
    ++refused;
  });
  std::printf("own cabinet of %zu bytes: %zu cuts refused; all %d changes of one byte refused\n", whole.size(),
              whole.size(), refused);
}

// Here nothing guards names, sizes, dates and attributes, so they may come out changed; the data may not.
TEST_F(Damage, OfAForeignCabinetNeverChangesDataUnseen) {
  const std::string data = "0123456789";
  RawCabinet cabinet = PlainCabinet("a.txt", data);
  cabinet.members = {{"a.txt", 4}, {"b\\c.txt", 6, 4}};
  cabinet.reserves = cabinet.reserveCounts = true;
  const std::string whole = cabinet.Build();
  const Result good = Extract(whole);
  ASSERT_EQ((Tree{{"a.txt", ".0123"}, {"b/c.txt", ".456789"}}), good.tree);
  for (std::size_t size = 0; size < whole.size(); ++size)
    EXPECT_EQ(ExitCode::Broken, Extract(whole.substr(0, size)).code) << size;
  std::map<std::string, int> counts;
  ChangeEveryByte(whole, [&](const Result& result, std::size_t at) {
    EXPECT_TRUE(result.code == ExitCode::Ok || result.code == ExitCode::Broken || result.code == ExitCode::UnsafeName)
        << "at " << at;
    for (const auto& [name, text] : result.tree) {
      EXPECT_NE(std::string::npos, data.find(text.substr(1))) << name << " at " << at;
    }
    ++counts[result.code != ExitCode::Ok ? "refused"
             : result.tree != good.tree  ? "other names or sizes"
             : result.list != good.list  ? "other dates or attributes"
                                         : "harmless"];
  });
  for (const auto& [what, count] : counts)
    std::printf("foreign cabinet: %d changes of one byte: %s\n", count, what.c_str());
}

TEST_F(Damage, IsSalvagedOnRequestOnlyAndWithoutUnfinishedFiles) {
  Write("first", Noise(40000, 1));
  Write("second", Noise(40000, 2));
  Succeeds("n whole.cab first second");
  std::string bytes = ReadFile("whole.cab");
  // More than the checksums can put right.
  for (std::size_t at = bytes.size() - 40; at < bytes.size() - 20; at += 2) bytes[at] ^= static_cast<char>(at | 1);
  EXPECT_TRUE(ExtractedBytes(bytes, ExitCode::Broken).empty());
  Fails(ExitCode::Broken, "--salvage x raw.cab out\\");
  EXPECT_EQ((Tree{{"first", Read()["first"]}}), Read("out"));
}

TEST_F(Damage, OtherDataBeforeOrBehindIsRefused) {
  const std::string whole = PlainCabinet("a", "x").Build();
  EXPECT_EQ(ExitCode::Broken, Extract('\0' + whole).code);
  EXPECT_EQ(ExitCode::Broken, Extract(whole + '\0').code);
}

// The archive of a floppy set, put together wrongly. The second set is the first one with another file in its middle:
// its pieces fit between those of the first one block by block.
class JoinedPieces : public Damage {
 protected:
  // The set's pieces are called by letters from `first`.
  void MakeSet(char first, unsigned middle) {
    for (unsigned i = 0; i < 5; ++i) Write("set/" + std::to_string(i), Noise(50000, i == 2 ? middle : i));
    Succeeds("n joined.cab set");
    sets_.push_back(Read("set"));
    const std::string whole = ReadFile("joined.cab");
    for (std::size_t at = 0; at < whole.size(); at += 40000) pieces_[first++] = whole.substr(at, 40000);
  }

  void Join(const std::string& names) {
    const Result result = Extract(std::accumulate(names.begin(), names.end(), std::string(),
                                                  [&](std::string all, char name) { return all + pieces_[name]; }));
    const bool isExact = result.code == ExitCode::Ok && std::count(sets_.begin(), sets_.end(), result.tree) == 1;
    EXPECT_TRUE(isExact || result.IsCleanRefusal()) << names;
    ++(isExact ? exact_ : refused_);
  }

  std::map<char, std::string> pieces_;
  std::vector<Tree> sets_;
  int refused_ = 0, exact_ = 0;
};

TEST_F(JoinedPieces, AreRefusedBeforeAnythingIsWrittenUnlessTheyAreAWholeSet) {
  MakeSet('A', 2);
  MakeSet('a', 77);
  const std::string one = "ABCDEFG", other = "abcdefg";
  ASSERT_EQ(one.size() + other.size(), pieces_.size());
  ASSERT_EQ(pieces_['G'], pieces_['g']);
  for (std::size_t i = 0; i < one.size(); ++i) {
    Join(std::string(one).erase(i, 1));
    Join(std::string(one).insert(i, 1, one[i]));
    for (std::size_t k = i + 1; k < one.size(); ++k) {
      std::string swapped = one;
      std::swap(swapped[i], swapped[k]);
      Join(swapped);
    }
  }
  ASSERT_EQ(0, exact_);
  for (unsigned mix = 0; mix < 128; ++mix) {
    std::string names;
    for (std::size_t i = 0; i < one.size(); ++i) names += (mix >> i & 1) != 0 ? other[i] : one[i];
    Join(names);
  }
  std::printf("joined pieces: %d refused before anything was written, %d mixes that are a whole set exact\n", refused_,
              exact_);
}

}  // namespace
