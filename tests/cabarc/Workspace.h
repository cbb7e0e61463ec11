// A temporary folder to run the archiver in, with what the tests ask of it.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

using Bytes = std::vector<std::uint8_t>;

struct RunResult {
  int code = 0;
  std::string out;
  std::string err;
};

/// What a tree holds: relative path with "/" to contents, preceded by "R" for a read-only file and "." for others.
using Tree = std::map<std::string, std::string>;

/// Every test begins in an empty folder, which is the current one.
class Workspace : public testing::Test {
 protected:
  Workspace();
  ~Workspace() override;

  static void Write(const std::string& path, const std::string& text);
  static void WriteBytes(const std::string& path, const Bytes& bytes);
  static Bytes ReadBytes(const std::string& path);
  static Tree Read(const std::string& folder);
  /// Runs the archiver in this process.
  static RunResult Cabarc(const std::vector<std::string>& arguments);
  /// Extracts to an emptied folder "out"; what it holds afterwards is the result.
  static Tree Extracted(const std::string& cabinet, int expectedCode);
  /// `size` bytes without any pattern, always the same for a seed.
  static std::string Noise(std::size_t size, unsigned seed);
  static bool Installed(const std::string& program);

 private:
  const std::filesystem::path before_;
  std::filesystem::path folder_;
};
