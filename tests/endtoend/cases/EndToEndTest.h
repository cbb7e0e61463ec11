// What every end-to-end case shares.
#pragma once

#include <gtest/gtest.h>

#include "MessageDialogIds.h"
#include "operator/Operator.h"
#include "resource.h"

namespace endtoend {

/// Leaves the workstation tidy before and after each case.
class EndToEndTest : public ::testing::Test {
 protected:
  void SetUp() override { TidyUp(); }
  void TearDown() override { TidyUp(); }
};

/// A program of a given name that runs and does nothing, until it goes out of scope.
class RunningSibling {
 public:
  explicit RunningSibling(const std::string& executable)
      : path_(kTarsus / "Temp" / executable), program_(Copied(path_)) {}
  ~RunningSibling() { EndAll(path_.filename().wstring()); }
  RunningSibling(const RunningSibling&) = delete;
  RunningSibling& operator=(const RunningSibling&) = delete;

 private:
  static std::string Copied(const fs::path& path) {
    CopyFileW(L"C:\\windows\\system32\\notepad.exe", path.c_str(), FALSE);
    return "\"" + Utf8(path.wstring()) + "\"";
  }

  fs::path path_;
  Program program_;
};

}  // namespace endtoend
