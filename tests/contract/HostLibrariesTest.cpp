// Host libraries that write past their buffers, refuse, lack exports, or are not there.
#include <gtest/gtest.h>

#include "fakes/Printing.h"
#include "windows/adapters/Libraries.h"

namespace {

using enum base::Result;

/// `words`, filled up to the stated size of its buffer.
std::string Filled(std::string words, std::size_t size) {
  words.resize(size, '#');
  return words;
}

TEST(HostLibraries, TextsAreCutAtTheStatedSizeAndAtNul) {
  constexpr std::size_t kSystemSize = host::QX32::kSystemEntrySize;
  constexpr std::size_t kPathSize = host::QX32::kPathEntrySize;
  windows::Qx32Library library;
  std::string value = "before";
  EXPECT_EQ(library.GetString("Missing", kPathSize, value).cause, "QX32.dll _QXGetString@8: answered -1");
  EXPECT_EQ(library.GetString("Strange", kPathSize, value).cause, "QX32.dll _QXGetString@8: answered 5");
  EXPECT_EQ(value, "before");
  EXPECT_EQ(library.GetString("Temp", kPathSize, value), Done);
  EXPECT_EQ(value, Filled("Temp", kPathSize));
  EXPECT_EQ(library.GetString("Temp", kSystemSize, value), Done);
  EXPECT_EQ(value, Filled("Temp", kSystemSize));
  EXPECT_EQ(library.GetString("Cut", kPathSize, value), Done);
  EXPECT_EQ(value, "C:\\Tarsus");
  EXPECT_EQ(library.RegGetKeySZ("\\PathAppl", value), Done) << "an answer of 7 is none of -1";
  EXPECT_EQ(value, Filled("\\PathAppl", 256));
  EXPECT_EQ(library.GetHostname(), Filled("HOST", 16));
  std::uint32_t number = 0;
  EXPECT_EQ(library.RegGetKeyDWORD("x", number), Done);
  EXPECT_EQ(number, 0xFFFFFFFE);
}

TEST(HostLibraries, TextsGoOutInTheCodePage) {
  windows::Qx32Library library;
  EXPECT_EQ(library.RegSetKeySZ("Müll", "€"), Done);
  EXPECT_EQ(library.RegSetKeySZ("Müll", "$").cause, "QX32.dll _QXRegSetKeySZ@8: answered -1");
}

TEST(HostLibraries, WhatIsMissingIsAFailedCallThatSaysSo) {
  windows::Qx32Library library;
  const base::Outcome written = library.RegSetKeyDWORD("x", 1);
  EXPECT_EQ(written, Failed);
  EXPECT_TRUE(written.cause.starts_with("QX32.dll _QXRegSetKeyDWORD@8: ") && written.cause.ends_with(" (127)"))
      << written.cause;
  EXPECT_EQ(library.GetSoftwareVersion(), "");

  windows::Qx32libLibrary absent;  // not among the libraries of this test
  std::string value = "before";
  for (const base::Outcome& called :
       {absent.SysDBConnect("x"), absent.SysDBClose(), absent.SysDBReadszValue("SysConfig", "MsgTableName", value)}) {
    EXPECT_EQ(called, Failed);
    EXPECT_TRUE(called.cause.starts_with("QX32lib.dll QXSysDB") && called.cause.ends_with(" (126)")) << called.cause;
  }
  EXPECT_EQ(value, "before");
}

TEST(HostLibraries, MediaRecords) {
  constexpr std::size_t kSize = 255;
  constexpr std::size_t kMost = 1024;
  windows::QxNetDBLibrary library;
  EXPECT_EQ(library.Connect(""), Done);
  EXPECT_EQ(library.Connect("four").cause, "QXNetDB.dll QXNetDBConnect: answered 4");
  std::vector<std::int32_t> numbers{99};
  EXPECT_EQ(library.GetEquip("OTHER", numbers).cause, "QXNetDB.dll QXNetDBGetEquip: answered -7");
  EXPECT_TRUE(numbers.empty());
  EXPECT_EQ(library.GetEquip("MEDIA", numbers), Done);
  ASSERT_EQ(numbers.size(), kMost);
  EXPECT_EQ(numbers.back(), std::int32_t{kMost});
  host::MediaRecord record;
  EXPECT_EQ(library.GetDriveInfo(2, record), Failed);
  EXPECT_EQ(record.drive, "");
  EXPECT_EQ(library.GetDriveInfo(1, record), Done);
  EXPECT_EQ(record.attribute, Filled("WRITABLE", kSize));
  EXPECT_EQ(record.drive, Filled("E", kSize));
  EXPECT_EQ(record.reserved, Filled("third", kSize));
  EXPECT_EQ(record.preparationType, Filled("NONE", kSize));
  EXPECT_EQ(record.programCommand, Filled("command", kSize));
  library.Close();
}

}  // namespace
