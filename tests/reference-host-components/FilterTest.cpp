// The personal-information filter. The list names "P12" (Weiß Änne), "P99" and "77".

#include <windows.h>

#include "HostFixture.h"
#include "common/Text.h"

namespace components_test {
namespace {

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
  static void SetAge(const std::string& path, int days) {
    FILETIME time = {};
    GetSystemTimeAsFileTime(&time);
    ULARGE_INTEGER ticks = {{time.dwLowDateTime, time.dwHighDateTime}};
    ticks.QuadPart -= static_cast<unsigned long long>(days) * 24 * 3600 * 10'000'000;
    time = {ticks.LowPart, ticks.HighPart};
    const HANDLE file = CreateFileW(reference::Utf16(path).c_str(), FILE_WRITE_ATTRIBUTES, FILE_SHARE_READ, nullptr,
                                    OPEN_EXISTING, 0, nullptr);
    EXPECT_TRUE(SetFileTime(file, nullptr, nullptr, &time)) << path;
    CloseHandle(file);
  }

  const std::string from_ = folder_ + "Logs", to_ = folder_ + "Out\\";
};

TEST_F(Filter, LeavesOutLinesThatNameListedPatients) {
  struct Case {
    const char *name, *before, *after;
  };
  const Case cases[] = {
      {"utf8.log", "a P12 b\r\nP120 stays\r\nweiß änne\r\nend", "P120 stays\r\nend"},
      {"id.log", "x=77;\n1770\n(p99)\n", "1770\n"},
      {"only.txt", "P12\r\n", ""},
      {"empty.txt", "", ""},
      {"binary.dat", "\x01P12\r\n\x02", "\x02"},
      {"plain.txt", "Weißer Ännel\r\nno line end", "Weißer Ännel\r\nno line end"},
  };
  for (const Case& check : cases) WriteFile(from_ + "\\" + check.name, check.before);
  WriteFile(from_ + "\\image.bin", std::string("P12\0\r\nP12", 9));
  WriteFile(from_ + "\\Report P12.txt", "nothing");
  WriteFile(from_ + "\\Sub\\deep.txt", "not directly in the folder");
  const std::wstring wide = L"\xFEFFWeiß Änne kam\r\nbleibt\r\n", wideAfter =
                                                                      L"\xFEFF"
                                                                      L"bleibt\r\n";
  const auto bytes = [](const std::wstring& text) {
    return std::string(reinterpret_cast<const char*>(text.data()), text.size() * sizeof(wchar_t));
  };
  WriteFile(from_ + "\\wide.txt", bytes(wide));

  ASSERT_EQ(Run(Kind::kFiles, from_ + "\\"), 0);
  for (const Case& check : cases) EXPECT_EQ(ReadFile(to_ + "Logs\\" + check.name), check.after) << check.name;
  EXPECT_EQ(ReadFile(to_ + "Logs\\image.bin").size(), 9u) << "not a text";
  EXPECT_FALSE(Exists(to_ + "Logs\\Report P12.txt"));
  EXPECT_FALSE(Exists(to_ + "Logs\\Sub"));
  EXPECT_EQ(ReadFile(to_ + "Logs\\wide.txt"), bytes(wideAfter));
}

TEST_F(Filter, TakesASingleFile) {
  WriteFile(from_ + "\\one.log", "P99 out\r\nin\r\n");
  ASSERT_EQ(Run(Kind::kFiles, from_ + "\\one.log"), 0);
  EXPECT_EQ(ReadFile(to_ + "one.log"), "in\r\n");
}

TEST_F(Filter, MakesNothingOfASourceWithoutFiles) {
  WriteFile(from_ + "\\Sub\\x.txt", "x");
  EXPECT_EQ(Run(Kind::kFiles, from_), 0);
  EXPECT_EQ(Run(Kind::kImages, from_), 0);
  EXPECT_FALSE(Exists(to_));
}

TEST_F(Filter, CopiesImagesOfPatientsThatAreNotListed) {
  for (const char* name : {"P12_1.ddo", "P120_1.DDO", "77.ddo", "P1_P12.ddo", "note.txt"}) {
    WriteFile(from_ + "\\003\\" + name, name);
  }
  ASSERT_EQ(Run(Kind::kImages, from_), 0);
  EXPECT_EQ(ReadFile(to_ + "Logs\\003\\P120_1.DDO"), "P120_1.DDO");
  EXPECT_TRUE(Exists(to_ + "Logs\\003\\P1_P12.ddo"));
  for (const char* name : {"P12_1.ddo", "77.ddo", "note.txt"}) EXPECT_FALSE(Exists(to_ + "Logs\\003\\" + name)) << name;
}

TEST_F(Filter, KeepsToTheRangeOfDays) {
  for (const char* name : {"new.ddo", "old.ddo"}) WriteFile(from_ + "\\" + name, "x");
  SetAge(from_ + "\\old.ddo", 31);
  SetAge(from_ + "\\new.ddo", 29);
  WriteFile(from_ + "\\range.txt", "-30");
  ASSERT_EQ(Run(Kind::kImages, from_), 0);
  EXPECT_TRUE(Exists(to_ + "Logs\\new.ddo"));
  EXPECT_FALSE(Exists(to_ + "Logs\\old.ddo"));
  WriteFile(from_ + "\\range.txt", "-9999");
  ASSERT_EQ(Run(Kind::kImages, from_), 0);
  EXPECT_TRUE(Exists(to_ + "Logs\\old.ddo"));
}

TEST_F(Filter, TellsWhatFailed) {
  WriteFile(from_ + "\\x.txt", "x");
  WriteFile(from_ + "\\x.ddo", "x");
  for (const Kind kind : {Kind::kFiles, Kind::kImages}) {
    EXPECT_EQ(Run(kind, from_, "C:\\missing.db"), 1);
    EXPECT_EQ(Run(kind, from_, "C:\\Host\\Host.db"), 1) << "no such table";
    EXPECT_EQ(Run(kind, folder_ + "missing"), 2);
    EXPECT_EQ(Run(kind, ""), 2);
  }
  WriteFile(folder_ + "Out", "a file in the way of the destination");
  EXPECT_EQ(Run(Kind::kFiles, from_), 3);
  EXPECT_EQ(Run(Kind::kImages, from_), 3);
}

}  // namespace
}  // namespace components_test
