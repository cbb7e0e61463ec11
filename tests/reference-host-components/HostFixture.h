// What the suites share: COM, the components' factory, files and rows of the test host.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "windows/adapters/Com.h"
#include "windows/adapters/Components.h"
#include "windows/adapters/Dispatch.h"

namespace components_test {

class HostTest : public testing::Test {
 protected:
  /// A folder of its own for each test, empty; ends in "\".
  HostTest();

  /// Paths and contents are UTF-8 and bytes. Missing folders are made.
  static void WriteFile(const std::string& path, const std::string& bytes);
  /// "(none)" for a file that does not exist.
  static std::string ReadFile(const std::string& path);
  static bool Exists(const std::string& path);
  /// A statement on the test host's database; the rows' cells joined by "|", NULL as "NULL".
  static std::vector<std::string> Query(const std::string& statement);

  windows::ComApartment apartment_;
  windows::ComComponentFactory factory_;
  std::string folder_;
};

/// Takes the host's database away for as long as it lives.
class WithoutDatabase {
 public:
  WithoutDatabase();
  ~WithoutDatabase();
};

}  // namespace components_test
