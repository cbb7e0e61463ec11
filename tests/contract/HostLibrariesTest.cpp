// Host libraries that write past their buffers, lack exports, or are not there.
#include <gtest/gtest.h>

#include "windows/adapters/Qx32Library.h"
#include "windows/adapters/Qx32libLibrary.h"
#include "windows/adapters/QxNetDBLibrary.h"

namespace {

/// `words`, filled up to the stated size of its buffer.
std::string Filled(std::string words, std::size_t size) {
  words.resize(size, '#');
  return words;
}

TEST(HostLibraries, TextsAreCutAtTheStatedSizeAndAtNul) {
  windows::Qx32Library library;
  std::string value = "before";
  EXPECT_EQ(library.GetString("Missing", 512, value), -1);
  EXPECT_EQ(value, "before");
  EXPECT_EQ(library.GetString("Temp", 512, value), 0);
  EXPECT_EQ(value, Filled("Temp", 512));
  EXPECT_EQ(library.GetString("Temp", 256, value), 0);
  EXPECT_EQ(value, Filled("Temp", 256));
  EXPECT_EQ(library.GetString("Cut", 512, value), 0);
  EXPECT_EQ(value, "C:\\Tarsus");
  EXPECT_EQ(library.RegGetKeySZ("\\PathAppl", value), 0);
  EXPECT_EQ(value, Filled("\\PathAppl", 256));
  EXPECT_EQ(library.GetHostname(), Filled("HOST", 16));
  std::uint32_t number = 0;
  EXPECT_EQ(library.RegGetKeyDWORD("x", number), 0);
  EXPECT_EQ(number, 0xFFFFFFFE);
}

TEST(HostLibraries, TextsGoOutInTheCodePage) {
  windows::Qx32Library library;
  EXPECT_EQ(library.RegSetKeySZ("Müll", "€"), 0);
}

TEST(HostLibraries, AMissingExportIsAFailedCall) {
  windows::Qx32Library library;
  EXPECT_EQ(library.RegSetKeyDWORD("x", 1), -1);
  EXPECT_EQ(library.GetSoftwareVersion(), "");
}

TEST(HostLibraries, MediaRecords) {
  windows::QxNetDBLibrary library;
  EXPECT_EQ(library.Connect("four"), 4);
  std::vector<std::int32_t> numbers{99};
  EXPECT_EQ(library.GetEquip("OTHER", numbers), -1);
  EXPECT_TRUE(numbers.empty());
  EXPECT_EQ(library.GetEquip("MEDIA", numbers), 1024);
  ASSERT_EQ(numbers.size(), 1024U);
  EXPECT_EQ(numbers.back(), 1024);
  host::MediaRecord record;
  EXPECT_EQ(library.GetDriveInfo(2, record), -1);
  EXPECT_EQ(record.drive, "");
  EXPECT_EQ(library.GetDriveInfo(1, record), 0);
  EXPECT_EQ(record.attribute, Filled("WRITABLE", 255));
  EXPECT_EQ(record.drive, Filled("E", 255));
  EXPECT_EQ(record.reserved, Filled("third", 255));
  EXPECT_EQ(record.preparationType, Filled("NONE", 255));
  EXPECT_EQ(record.programCommand, Filled("command", 255));
  library.Close();
}

TEST(HostLibraries, AMissingLibraryFailsEveryCall) {
  windows::Qx32libLibrary library;  // not among the libraries of this test
  std::string value = "before";
  EXPECT_EQ(library.SysDBConnect("x"), -1);
  EXPECT_EQ(library.SysDBReadszValue("SysConfig", "MsgTableName", value), -1);
  EXPECT_EQ(value, "before");
  EXPECT_EQ(library.SysDBClose(), -1);
}

}  // namespace
