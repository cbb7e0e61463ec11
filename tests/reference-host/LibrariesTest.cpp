// The host libraries as the program meets them, through its own adapters: names, answers, and the sizes of buffers.
#include <gtest/gtest.h>

#include "common/Host.h"
#include "windows/adapters/Qx32Library.h"
#include "windows/adapters/Qx32libLibrary.h"
#include "windows/adapters/QxNetDBLibrary.h"

namespace {

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
    return library_.GetString(name, capacity, value) == 0 ? value : "(failed)";
  }

  static constexpr wchar_t kPathTable[] = L"C:\\Tarsus\\System\\Directory.ini", kKept[] = L"C:\\Tarsus\\Temp\\kept.ini";
  windows::Qx32Library library_;
};

TEST_F(QX32Test, ReadsThePathTableAnewAtEachCall) {
  EXPECT_EQ(Entry("ApplicationRoot"), "C:\\Tarsus\\");
  EXPECT_EQ(Entry("Temp"), "C:\\Tarsus\\Temp");
  SetEntry(L"Temp", L"D:\\Other");
  EXPECT_EQ(Entry("Temp"), "D:\\Other");
  EXPECT_EQ(Entry("NoSuchEntry"), "(failed)");
  EXPECT_EQ(Entry(""), "(failed)");
}

TEST_F(QX32Test, CutsEntriesToTheCallersBuffer) {
  SetEntry(L"Temp", std::wstring(900, L'x'));
  SetEntry(L"SysMasterDB", std::wstring(900, L'y'));
  EXPECT_EQ(Entry("Temp"), std::string(511, 'x'));
  EXPECT_EQ(Entry("SysMasterDB", 256), std::string(255, 'y'));
  // As bytes: nothing stands behind the NUL, and nothing at all is written where there is no entry.
  windows::HostLibrary library(L"QX32.dll");
  long(__stdcall * getString)(const char* name, char* value) = nullptr;
  library.Find("_QXGetString@8", getString);
  std::string buffer(512, '#');
  EXPECT_EQ(getString("NoSuchEntry", buffer.data()), -1);
  EXPECT_EQ(buffer, std::string(512, '#'));
  EXPECT_EQ(getString("SysMasterDB", buffer.data()), 0);
  EXPECT_EQ(buffer, std::string(255, 'y') + '\0' + std::string(256, '#'));
}

TEST_F(QX32Test, KeepsRegistryTextsAndCutsLongOnes) {
  const std::string name = "BackupUtility\\Prüfung";
  std::string value;
  EXPECT_EQ(library_.RegSetKeySZ(name, "Größe: 5"), 0);
  EXPECT_EQ(library_.RegGetKeySZ("\\" + name, value), 0);
  EXPECT_EQ(value, "Größe: 5");
  EXPECT_EQ(reference::ReadRegistryText(name), "Größe: 5");
  EXPECT_EQ(library_.RegSetKeySZ(name, std::string(700, 'z')), 0);
  EXPECT_EQ(library_.RegGetKeySZ(name, value), 0);
  EXPECT_EQ(value, std::string(255, 'z'));
}

TEST_F(QX32Test, KeepsRegistryNumbersApartFromTexts) {
  std::uint32_t number = 7;
  EXPECT_EQ(library_.RegGetKeyDWORD("ClientLogBackupNumber", number), 0);
  EXPECT_EQ(number, 20U);
  EXPECT_EQ(library_.RegSetKeyDWORD("BackupUtility\\dlgTestLeft", 0xFFFFFF38U), 0);
  EXPECT_EQ(library_.RegGetKeyDWORD("BackupUtility\\dlgTestLeft", number), 0);
  EXPECT_EQ(number, 0xFFFFFF38U);
  EXPECT_EQ(library_.RegGetKeyDWORD("Font", number), -1);
  EXPECT_EQ(library_.RegGetKeyDWORD("NoSuchValue", number), -1);
}

TEST_F(QX32Test, NamesTheHostAndItsVersion) {
  EXPECT_FALSE(library_.GetHostname().empty());
  EXPECT_EQ(library_.GetSoftwareVersion(), "3.00");
}

TEST(QX32lib, ReadsTheConfigurationWhileItIsConnected) {
  windows::Qx32libLibrary library;
  std::string value = "before";
  EXPECT_EQ(library.SysDBReadszValue("SysConfig", "MsgTableName", value), -1);
  EXPECT_EQ(library.SysDBConnect("DRIVER=SQLite3;Database=C:\\Tarsus\\Database\\None.db"), -1);
  EXPECT_EQ(library.SysDBClose(), -1);
  ASSERT_EQ(library.SysDBConnect(*reference::ReadPathEntry("SysMasterDB")), 0);
  EXPECT_EQ(library.SysDBReadszValue("SysConfig", "Nothing", value), -1);
  EXPECT_EQ(library.SysDBReadszValue("SysConfig", "MsgTableName", value), 0);
  EXPECT_EQ(value, "ENG:MSG_ENGLISH");
  EXPECT_EQ(library.SysDBClose(), 0);
}

TEST(QXNetDB, ListsTheMediaDrivesInOrder) {
  windows::QxNetDBLibrary library;
  std::vector<std::int32_t> numbers;
  EXPECT_EQ(library.GetEquip("MEDIA", numbers), -1);
  ASSERT_EQ(library.Connect(*reference::ReadPathEntry("NetConfigDB")), 0);
  EXPECT_EQ(library.GetEquip("TAPE", numbers), 0);
  ASSERT_EQ(library.GetEquip("MEDIA", numbers), 3);
  std::string drives;
  host::MediaRecord record;
  for (const std::int32_t number : numbers) {
    ASSERT_EQ(library.GetDriveInfo(number, record), 0);
    drives += record.attribute + " " + record.drive + " " + record.preparationType + ";";
  }
  EXPECT_EQ(drives, "READONLY D: NONE;WRITABLE E: STANDARD;WRITABLE F: NONE;");
  EXPECT_EQ(library.GetDriveInfo(999, record), -1);
  library.Close();
  EXPECT_EQ(library.GetEquip("MEDIA", numbers), -1);
}

}  // namespace
