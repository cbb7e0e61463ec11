#include "HostFixture.h"

#include <windows.h>

#include <shlobj.h>

#include <fstream>
#include <sstream>

#include "common/Database.h"
#include "common/Text.h"

namespace components_test {
namespace {

constexpr wchar_t kDatabase[] = L"C:\\Host\\Host.db", kAway[] = L"C:\\Host\\Host.away";

std::wstring Wide(const std::string& path) {
  return reference::Utf16(path);
}

}  // namespace

HostTest::HostTest() {
  folder_ = std::string("C:\\Test\\") + testing::UnitTest::GetInstance()->current_test_info()->name() + "\\";
  SHCreateDirectoryExW(nullptr, Wide(folder_).c_str(), nullptr);
}

void HostTest::WriteFile(const std::string& path, const std::string& bytes) {
  SHCreateDirectoryExW(nullptr, Wide(path.substr(0, path.rfind('\\'))).c_str(), nullptr);
  std::ofstream file(Wide(path).c_str(), std::ios::binary);
  ASSERT_TRUE(file << bytes << std::flush) << path;
}

std::string HostTest::ReadFile(const std::string& path) {
  const std::ifstream file(Wide(path).c_str(), std::ios::binary);
  if (!file) return "(none)";
  std::ostringstream bytes;
  bytes << file.rdbuf();
  return bytes.str();
}

bool HostTest::Exists(const std::string& path) {
  return GetFileAttributesW(Wide(path).c_str()) != INVALID_FILE_ATTRIBUTES;
}

std::vector<std::string> HostTest::Query(const std::string& statement) {
  std::vector<std::string> lines;
  const auto database = reference::Database::Open("DRIVER=SQLite3;Database=C:\\Host\\Host.db");
  const auto rows = database ? database->Run(statement) : std::nullopt;
  if (!rows) return {"(failed)"};
  for (const auto& row : rows->cells) {
    std::string line;
    for (const auto& cell : row) {
      if (!line.empty()) line += '|';
      line += cell.value_or("NULL");
    }
    lines.push_back(line);
  }
  return lines;
}

WithoutDatabase::WithoutDatabase() {
  EXPECT_TRUE(MoveFileW(kDatabase, kAway));
}
WithoutDatabase::~WithoutDatabase() {
  EXPECT_TRUE(MoveFileW(kAway, kDatabase));
}

}  // namespace components_test

int main(int count, char** arguments) {
  testing::InitGoogleTest(&count, arguments);
  return RUN_ALL_TESTS();
}
