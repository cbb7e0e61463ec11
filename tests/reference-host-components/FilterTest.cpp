// The personal-information filter. The list names "P12" (Weiß Änne), "P99" and "77".
#include "HostFixture.h"

namespace {

using components::PersonalInfoFilter;

class Filter : public HostTest {
 protected:
  enum class Kind { kFiles, kImages };

  std::int32_t Run(Kind kind, const std::string& source, const std::string& list = "C:\\Host\\DeleteList.db") {
    const auto filter = factory_.CreatePersonalInfoFilter();
    filter->SetListDatabase(list);
    filter->SetSource(source);
    filter->SetDestination(to_);
    return kind == Kind::kFiles ? filter->FilterFiles() : filter->FilterImages();
  }

  static std::string Wide(const std::string& text) {
    const std::wstring wide = windows::Utf16(text);
    return {reinterpret_cast<const char*>(wide.data()), wide.size() * sizeof(wchar_t)};
  }

  const std::string from_ = folder_ + "Logs", to_ = folder_ + "Out\\";
};

TEST_F(Filter, LeavesOutLinesThatNameListedPatients) {
  const std::tuple<std::string, std::string, std::string> cases[] = {
      {"utf8.log", "a P12 b\r\nP120 stays\r\nweiß änne\r\nend", "P120 stays\r\nend"},
      {"id.log", "x=77;\n1770\n(p99)\n", "1770\n"},
      {"only.txt", "P12\r\n", ""},
      {"empty.txt", "", ""},
      {"binary.dat", "\x01P12\r\n\x02", "\x02"},
      {"plain.txt", "Weißer Ännel\r\nno line end", "Weißer Ännel\r\nno line end"},
      {"wide.txt", Wide("\uFEFFWeiß Änne kam\r\nbleibt\r\n"), Wide("\uFEFFbleibt\r\n")},
      {"image.bin", std::string("P12\0\r\nP12", 9), std::string("P12\0\r\nP12", 9)},  // not a text
      {"Report P12.txt", "nothing", "(none)"},
      {"Sub\\deep.txt", "not directly in the folder", "(none)"},
  };
  for (const auto& [name, before, after] : cases) WriteFile(from_ + "\\" + name, before);
  ASSERT_EQ(Run(Kind::kFiles, from_ + "\\"), kDone);
  for (const auto& [name, before, after] : cases) EXPECT_EQ(ReadFile(to_ + "Logs\\" + name), after) << name;
  EXPECT_FALSE(Exists(to_ + "Logs\\Sub"));
  ASSERT_EQ(Run(Kind::kFiles, from_ + "\\utf8.log"), kDone);
  EXPECT_EQ(ReadFile(to_ + "utf8.log"), "P120 stays\r\nend") << "a file by itself";
}

TEST_F(Filter, MakesNothingOfASourceWithoutFiles) {
  WriteFile(from_ + "\\Sub\\x.txt", "x");
  EXPECT_EQ(Run(Kind::kFiles, from_), kDone);
  EXPECT_EQ(Run(Kind::kImages, from_), kDone);
  EXPECT_FALSE(Exists(to_));
}

TEST_F(Filter, CopiesImagesOfPatientsThatAreNotListed) {
  const std::string unlisted[] = {"P120_1.DDO", "P1_P12.ddo"}, others[] = {"P12_1.ddo", "77.ddo", "note.txt"};
  for (const std::string& name : unlisted) WriteFile(from_ + "\\003\\" + name, name);
  for (const std::string& name : others) WriteFile(from_ + "\\003\\" + name, name);
  ASSERT_EQ(Run(Kind::kImages, from_), kDone);
  for (const std::string& name : unlisted) EXPECT_EQ(ReadFile(to_ + "Logs\\003\\" + name), name);
  for (const std::string& name : others) EXPECT_FALSE(Exists(to_ + "Logs\\003\\" + name)) << name;
}

TEST_F(Filter, KeepsToTheRangeOfDays) {
  for (const auto& [name, days] : {std::pair<std::string, int>{"old.ddo", 31}, {"new.ddo", 29}}) {
    WriteFile(from_ + "\\" + name, "x");
    fs::last_write_time(from_ + "\\" + name, fs::file_time_type::clock::now() - std::chrono::hours(24 * days));
  }
  WriteFile(from_ + "\\range.txt", "-30");
  ASSERT_EQ(Run(Kind::kImages, from_), kDone);
  EXPECT_TRUE(Exists(to_ + "Logs\\new.ddo"));
  EXPECT_FALSE(Exists(to_ + "Logs\\old.ddo"));
  WriteFile(from_ + "\\range.txt", "-9999");
  ASSERT_EQ(Run(Kind::kImages, from_), kDone);
  EXPECT_TRUE(Exists(to_ + "Logs\\old.ddo"));
}

TEST_F(Filter, TellsWhatFailed) {
  WriteFile(from_ + "\\x.txt", "x");
  WriteFile(from_ + "\\x.ddo", "x");
  for (const Kind kind : {Kind::kFiles, Kind::kImages}) {
    EXPECT_EQ(Run(kind, from_, "C:\\missing.db"), PersonalInfoFilter::kListUnreadable);
    EXPECT_EQ(Run(kind, from_, kDatabase), PersonalInfoFilter::kListUnreadable) << "no such table";
    EXPECT_EQ(Run(kind, folder_ + "missing"), PersonalInfoFilter::kNoSource);
    EXPECT_EQ(Run(kind, ""), PersonalInfoFilter::kNoSource);
  }
  WriteFile(folder_ + "Out", "a file in the way of the destination");
  EXPECT_EQ(Run(Kind::kFiles, from_), PersonalInfoFilter::kCopyFailed);
  EXPECT_EQ(Run(Kind::kImages, from_), PersonalInfoFilter::kCopyFailed);
}

}  // namespace
