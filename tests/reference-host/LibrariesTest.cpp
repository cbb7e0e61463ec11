// The host libraries as the program meets them, through its own adapters: names, answers, and the sizes of buffers.
#include <gtest/gtest.h>

#include "common/Host.h"
#include "fakes/Printing.h"
#include "windows/adapters/Libraries.h"

namespace {

using enum base::Result;

/// Puts the path table back at the end.
class QX32Test : public testing::Test {
 protected:
  QX32Test() { CopyFileW(kPathTable, kKept, FALSE); }
  ~QX32Test() override { CopyFileW(kKept, kPathTable, FALSE); }

  static void SetEntry(const wchar_t* name, const std::wstring& value) {
    WritePrivateProfileStringW(L"Directory", name, value.c_str(), kPathTable);
  }
  std::string Entry(const std::string& name, std::size_t capacity = 512) {
    std::string value;
    return library_.GetString(name, capacity, value) == Done ? value : "(failed)";
  }

  static constexpr wchar_t kPathTable[] = L"C:\\Tarsus\\System\\Directory.ini", kKept[] = L"C:\\Tarsus\\Temp\\kept.ini";
  windows::Qx32Library library_;
};

TEST_F(QX32Test, ReadsThePathTableAnewAndCutsEntriesToTheCallersBuffer) {
  EXPECT_EQ(Entry("Temp"), "C:\\Tarsus\\Temp");
  EXPECT_EQ(Entry(""), "(failed)");
  SetEntry(L"Temp", std::wstring(900, L'x'));
  SetEntry(L"SysMasterDB", std::wstring(900, L'y'));
  EXPECT_EQ(Entry("Temp"), std::string(511, 'x'));
  // As bytes: nothing stands behind the NUL, and nothing at all is written where there is no entry.
  windows::HostLibrary library(L"QX32.dll");
  windows::HostExport<long __stdcall(const char* name, char* value)> getString;
  library.Find("_QXGetString@8", getString);
  std::string buffer(512, '#');
  EXPECT_EQ(getString.Call(windows::FailsAt::AnyButZero, "NoSuchEntry", buffer.data()), Failed);
  EXPECT_EQ(buffer, std::string(512, '#'));
  EXPECT_EQ(getString.Call(windows::FailsAt::AnyButZero, "SysMasterDB", buffer.data()), Done);
  EXPECT_EQ(buffer, std::string(255, 'y') + '\0' + std::string(256, '#'));
}

TEST_F(QX32Test, KeepsRegistryTextsAndNumbersApart) {
  const std::string text = "BackupUtility\\Prüfung", place = "BackupUtility\\dlgTestLeft";
  std::string value;
  EXPECT_EQ(library_.RegSetKeySZ(text, "Größe: 5"), Done);
  EXPECT_EQ(library_.RegGetKeySZ("\\" + text, value), Done);
  EXPECT_EQ(value, "Größe: 5");
  EXPECT_EQ(library_.RegSetKeySZ(text, std::string(700, 'z')), Done);
  EXPECT_EQ(library_.RegGetKeySZ(text, value), Done);
  EXPECT_EQ(value, std::string(255, 'z'));
  std::uint32_t number = 7;
  EXPECT_EQ(library_.RegGetKeyDWORD(text, number), Failed);
  EXPECT_EQ(library_.RegGetKeyDWORD("NoSuchValue", number), Failed);
  EXPECT_EQ(number, 7U);
  EXPECT_EQ(library_.RegSetKeyDWORD(place, 0xFFFFFF38U), Done);
  EXPECT_EQ(library_.RegGetKeyDWORD(place, number), Done);
  EXPECT_EQ(number, 0xFFFFFF38U);
  EXPECT_FALSE(library_.GetHostname().empty());
}

TEST(QX32lib, ReadsTheConfigurationWhileItIsConnected) {
  windows::Qx32libLibrary library;
  std::string value = "before";
  EXPECT_EQ(library.SysDBConnect("DRIVER=SQLite3;Database=C:\\Tarsus\\Database\\None.db"), Failed);
  EXPECT_EQ(library.SysDBReadszValue("SysConfig", "MsgTableName", value), Failed);
  EXPECT_EQ(library.SysDBClose(), Failed);
  ASSERT_EQ(library.SysDBConnect(*reference::ReadPathEntry("SysMasterDB")), Done);
  EXPECT_EQ(library.SysDBReadszValue("SysConfig", "Nothing", value), Failed);
  EXPECT_EQ(library.SysDBReadszValue("SysConfig", "MsgTableName", value), Done);
  EXPECT_EQ(value, "ENG:MSG_ENGLISH");
  EXPECT_EQ(library.SysDBClose(), Done);
}

TEST(QXNetDB, ListsTheMediaDrivesInOrder) {
  windows::QxNetDBLibrary library;
  std::vector<std::int32_t> numbers;
  EXPECT_EQ(library.GetEquip("MEDIA", numbers), Failed);
  ASSERT_EQ(library.Connect(*reference::ReadPathEntry("NetConfigDB")), Done);
  EXPECT_EQ(library.GetEquip("TAPE", numbers), Done);
  EXPECT_EQ(numbers.size(), 0U);
  ASSERT_EQ(library.GetEquip("MEDIA", numbers), Done);
  EXPECT_EQ(numbers.size(), 3U);
  std::string drives;
  host::MediaRecord record;
  for (const std::int32_t number : numbers) {
    ASSERT_EQ(library.GetDriveInfo(number, record), Done);
    drives += record.attribute + " " + record.drive + " " + record.preparationType + ";";
  }
  EXPECT_EQ(drives, "READONLY D: NONE;WRITABLE E: STANDARD;WRITABLE F: NONE;");
  EXPECT_EQ(library.GetDriveInfo(999, record), Failed);
  library.Close();
  EXPECT_EQ(library.GetEquip("MEDIA", numbers), Failed);
}

}  // namespace
