// What the suites share: COM, the components' factory, files and rows of the test host.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "common/Database.h"
#include "components/Components.h"
#include "fakes/Printing.h"
#include "operator/Workstation.h"
#include "windows/adapters/Com.h"
#include "windows/adapters/Components.h"
#include "windows/adapters/Dispatch.h"
#include "windows/adapters/Text.h"

namespace fs = std::filesystem;

using components::kDone;
using components::kFailed;
using enum base::Result;
using endtoend::Altered;
using endtoend::Fault;

class HostTest : public testing::Test {
 protected:
  HostTest() { fs::create_directories(Path(folder_)); }

  static fs::path Path(const std::string& utf8) { return windows::Utf16(utf8); }
  static bool Exists(const std::string& path) { return fs::exists(Path(path)); }

  /// Paths are UTF-8, contents bytes. Missing folders are made.
  static void WriteFile(const std::string& path, const std::string& bytes) {
    fs::create_directories(Path(path).parent_path());
    ASSERT_TRUE(std::ofstream(Path(path), std::ios::binary) << bytes << std::flush) << path;
  }
  /// "(none)" for a file that does not exist.
  static std::string ReadFile(const std::string& path) {
    return Exists(path) ? endtoend::ReadBytes(Path(path)) : "(none)";
  }

  /// A statement on the test host's database; cells end in "|", rows in a line end, NULL is "NULL".
  static std::string Query(const std::string& statement) {
    const auto database = reference::Database::Open("DRIVER=SQLite3;Database=" + std::string(kDatabase));
    const auto rows = database ? database->Run(statement) : std::nullopt;
    if (!rows) return "(failed)";
    std::string text;
    for (const auto& row : rows->cells) {
      for (const auto& cell : row) text += cell.value_or("NULL") + "|";
      text += '\n';
    }
    return text;
  }

  static constexpr char kDatabase[] = "C:\\Host\\Host.db";
  windows::ComApartment apartment_;
  windows::ComComponentFactory factory_;
  /// A folder of its own for each test, empty; ends in "\".
  const std::string folder_ =
      "C:\\Test\\" + std::string(testing::UnitTest::GetInstance()->current_test_info()->name()) + "\\";
};
