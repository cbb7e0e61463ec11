// Host libraries that write past their buffers, give odd answers, lack exports, or are not there. What they answer as
// agreed, and the code page of their texts, is tested against the reference host.
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

TEST(HostLibraries, TextsAreCutAtTheStatedSize) {
  windows::Qx32Library library;
  std::string value;
  for (const std::size_t size : {host::QX32::kPathEntrySize, host::QX32::kSystemEntrySize}) {
    EXPECT_EQ(library.GetString("Temp", size, value), Done);
    EXPECT_EQ(value, Filled("Temp", size));
  }
  EXPECT_EQ(library.GetString("Strange", 512, value).cause, "QX32.dll _QXGetString@8: answered 5");
  EXPECT_EQ(value, Filled("Temp", 256)) << "what a failed call leaves alone";
  EXPECT_EQ(library.RegGetKeySZ("PathAppl", value), Done) << "7 is no failure here";
  EXPECT_EQ(value, Filled("PathAppl", 256));
  EXPECT_EQ(library.RegGetKeySZ("Missing", value).cause, "QX32.dll _QXRegGetKeySZ@8: answered -1");
  EXPECT_EQ(library.GetHostname(), Filled("HOST", 16));
}

TEST(HostLibraries, WhatIsMissingIsAFailedCallThatSaysSo) {
  windows::Qx32Library library;
  const base::Outcome written = library.RegSetKeyDWORD("x", 1);
  EXPECT_TRUE(written.cause.starts_with("QX32.dll _QXRegSetKeyDWORD@8: ") && written.cause.ends_with(" (127)"))
      << written.cause;
  EXPECT_EQ(library.GetSoftwareVersion(), "");

  windows::Qx32libLibrary absent;  // not among the libraries of this test
  std::string value = "before";
  for (const base::Outcome& called :
       {absent.SysDBConnect("x"), absent.SysDBReadszValue("SysConfig", "MsgTableName", value), absent.SysDBClose()})
    EXPECT_TRUE(called.cause.starts_with("QX32lib.dll QXSysDB") && called.cause.ends_with(" (126)")) << called.cause;
  EXPECT_EQ(value, "before");
}

TEST(HostLibraries, MediaRecords) {
  constexpr std::size_t kSize = 255;
  constexpr std::size_t kMost = 1024;
  windows::QxNetDBLibrary library;
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
  for (const std::string& text : {record.attribute, record.drive, record.reserved, record.preparationType})
    EXPECT_EQ(text, Filled("text", kSize));
  EXPECT_EQ(record.programCommand, Filled("command", kSize));
}

}  // namespace
