// The host libraries as their callers meet them: names, answers, and the sizes of buffers.
#include <gtest/gtest.h>
#include <windows.h>

#include <string>
#include <vector>

#include "common/HostPaths.h"
#include "common/Text.h"

namespace {

class Library {
 public:
  explicit Library(const wchar_t* name) : module_(LoadLibraryW(name)) {}
  ~Library() { FreeLibrary(module_); }
  Library(const Library&) = delete;
  Library& operator=(const Library&) = delete;

  template <typename... Parameters>
  long Call(const char* name, Parameters... parameters) const {
    using Function = long(__stdcall*)(Parameters...);
    const auto function = reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(module_, name)));
    if (function) return function(parameters...);
    ADD_FAILURE() << name << " is not exported";
    return -2;
  }

 private:
  HMODULE module_;
};

/// A buffer that knows when something is written behind its end.
class Buffer {
 public:
  explicit Buffer(std::size_t size) : bytes_(size + 64, '#'), size_(size) {}
  char* Data() { return bytes_.data(); }
  std::string Text() const { return bytes_.data(); }
  bool IsIntact() const { return bytes_.substr(size_).find_first_not_of('#') == std::string::npos; }

 private:
  std::string bytes_;
  std::size_t size_;
};

/// An entry of the path table for the time of a test.
class TemporaryEntry {
 public:
  TemporaryEntry(const wchar_t* name, const std::wstring& value) : name_(name) {
    GetPrivateProfileStringW(L"Directory", name, L"", before_, 512, kFile);
    WritePrivateProfileStringW(L"Directory", name, value.c_str(), kFile);
  }
  ~TemporaryEntry() { WritePrivateProfileStringW(L"Directory", name_, before_[0] ? before_ : nullptr, kFile); }
  TemporaryEntry(const TemporaryEntry&) = delete;
  TemporaryEntry& operator=(const TemporaryEntry&) = delete;

 private:
  static constexpr wchar_t kFile[] = L"C:\\Tarsus\\System\\Directory.ini";
  const wchar_t* name_;
  wchar_t before_[512] = {};
};

class QX32Test : public testing::Test {
 protected:
  std::pair<long, std::string> Entry(const char* name) {
    Buffer buffer(512);
    const long result = library_.Call("_QXGetString@8", name, buffer.Data());
    EXPECT_TRUE(buffer.IsIntact());
    return {result, buffer.Text().substr(0, buffer.Text().find('#'))};
  }

  Library library_{L"QX32.dll"};
};

TEST_F(QX32Test, ReadsThePathTableAnewAtEachCall) {
  EXPECT_EQ(Entry("ApplicationRoot"), std::pair(0L, std::string("C:\\Tarsus\\")));
  EXPECT_EQ(Entry("Temp").second, "C:\\Tarsus\\Temp");
  const TemporaryEntry changed(L"Temp", L"D:\\Other");
  EXPECT_EQ(Entry("Temp").second, "D:\\Other");
}

TEST_F(QX32Test, LeavesTheBufferAloneForAnUnknownEntry) {
  EXPECT_EQ(Entry("NoSuchEntry"), std::pair(-1L, std::string()));
  EXPECT_EQ(Entry(""), std::pair(-1L, std::string()));
}

TEST_F(QX32Test, CutsEntriesToTheCallersBuffer) {
  const TemporaryEntry longEntry(L"Temp", std::wstring(900, L'x'));
  const TemporaryEntry longConnection(L"SysMasterDB", std::wstring(900, L'y'));
  EXPECT_EQ(Entry("Temp").second, std::string(511, 'x'));
  Buffer small(256);
  EXPECT_EQ(library_.Call("_QXGetString@8", "SysMasterDB", small.Data()), 0);
  EXPECT_EQ(small.Text(), std::string(255, 'y'));
  EXPECT_TRUE(small.IsIntact());
}

TEST_F(QX32Test, KeepsRegistryTextsAndCutsLongOnes) {
  Buffer buffer(256);
  const std::string name = reference::ToAnsi("BackupUtility\\Prüfung"), value = reference::ToAnsi("Größe: 5");
  EXPECT_EQ(library_.Call("_QXRegSetKeySZ@8", name.c_str(), value.c_str()), 0);
  EXPECT_EQ(library_.Call("_QXRegGetKeySZ@8", ("\\" + name).c_str(), buffer.Data()), 0);
  EXPECT_EQ(buffer.Text(), value);
  EXPECT_EQ(reference::ReadRegistryText("BackupUtility\\Prüfung"), "Größe: 5");
  EXPECT_EQ(library_.Call("_QXRegSetKeySZ@8", name.c_str(), std::string(700, 'z').c_str()), 0);
  EXPECT_EQ(library_.Call("_QXRegGetKeySZ@8", name.c_str(), buffer.Data()), 0);
  EXPECT_EQ(buffer.Text(), std::string(255, 'z'));
  EXPECT_TRUE(buffer.IsIntact());
}

TEST_F(QX32Test, KeepsRegistryNumbersApartFromTexts) {
  unsigned long number = 7;
  EXPECT_EQ(library_.Call("_QXRegGetKeyDWORD@8", "ClientLogBackupNumber", &number), 0);
  EXPECT_EQ(number, 20U);
  EXPECT_EQ(library_.Call("_QXRegSetKeyDWORD@8", "BackupUtility\\dlgTestLeft", 0xFFFFFF38UL), 0);
  EXPECT_EQ(library_.Call("_QXRegGetKeyDWORD@8", "BackupUtility\\dlgTestLeft", &number), 0);
  EXPECT_EQ(number, 0xFFFFFF38UL);
  EXPECT_EQ(library_.Call("_QXRegGetKeyDWORD@8", "Font", &number), -1);
  EXPECT_EQ(library_.Call("_QXRegGetKeyDWORD@8", "NoSuchValue", &number), -1);
  EXPECT_EQ(number, 0xFFFFFF38UL);
}

TEST_F(QX32Test, NamesTheHostAndItsVersion) {
  Buffer host(16), version(128);
  EXPECT_EQ(library_.Call("_QXGetHostname@4", host.Data()), 0);
  EXPECT_EQ(library_.Call("_QXGetSoftwareVersion@4", version.Data()), 0);
  EXPECT_FALSE(host.Text().empty());
  EXPECT_EQ(version.Text(), "3.00");
  EXPECT_TRUE(host.IsIntact() && version.IsIntact());
}

TEST(QX32lib, ReadsTheConfigurationWhileItIsConnected) {
  const Library library(L"QX32lib.dll");
  const std::string connection = *reference::ReadPathEntry("SysMasterDB");
  Buffer buffer(256);
  EXPECT_EQ(library.Call("QXSysDBReadszValue", "SysConfig", "MsgTableName", buffer.Data()), -1);
  EXPECT_EQ(library.Call("QXSysDBConnect", "DRIVER=SQLite3;Database=C:\\Tarsus\\Database\\None.db"), -1);
  EXPECT_EQ(library.Call("QXSysDBClose"), -1);
  ASSERT_EQ(library.Call("QXSysDBConnect", connection.c_str()), 0);
  EXPECT_EQ(library.Call("QXSysDBReadszValue", "SysConfig", "Nothing", buffer.Data()), -1);
  EXPECT_EQ(buffer.Data()[0], '#');
  EXPECT_EQ(library.Call("QXSysDBReadszValue", "SysConfig", "MsgTableName", buffer.Data()), 0);
  EXPECT_EQ(buffer.Text(), "ENG:MSG_ENGLISH");
  EXPECT_EQ(library.Call("QXSysDBClose"), 0);
}

TEST(QXNetDB, ListsTheMediaDrivesInOrder) {
  const Library library(L"QXNetDB.dll");
  long numbers[1024] = {};
  EXPECT_EQ(library.Call("QXNetDBGetEquip", "MEDIA", &numbers[0]), -1);
  ASSERT_EQ(library.Call("QXNetDBConnect", reference::ReadPathEntry("NetConfigDB")->c_str()), 0);
  ASSERT_EQ(library.Call("QXNetDBGetEquip", "MEDIA", &numbers[0]), 3);
  EXPECT_EQ(library.Call("QXNetDBGetEquip", "TAPE", &numbers[3]), 0);
  std::string drives;
  for (int i = 0; i < 3; ++i) {
    long value = -1;
    std::vector<Buffer> texts(5, Buffer(255));
    ASSERT_EQ(library.Call("QXNetDBGetDriveInfo", numbers[i], &value, texts[0].Data(), texts[1].Data(), texts[2].Data(),
                           texts[3].Data(), texts[4].Data()),
              0);
    drives += texts[0].Text() + " " + texts[1].Text() + " " + texts[3].Text() + ";";
  }
  EXPECT_EQ(drives, "READONLY D: NONE;WRITABLE E: STANDARD;WRITABLE F: NONE;");
  Buffer text(255);
  long value = 0;
  EXPECT_EQ(library.Call("QXNetDBGetDriveInfo", 999L, &value, text.Data(), text.Data(), text.Data(), text.Data(),
                         text.Data()),
            -1);
  EXPECT_EQ(library.Call("QXNetDBClose"), 0);
  EXPECT_EQ(library.Call("QXNetDBGetEquip", "MEDIA", &numbers[0]), -1);
}

}  // namespace
