// How far the archiver is, for a program that waits for it.
//
// Whoever wants to know makes a file beside the cabinet, under its name with ".progress" added, before the archiver is
// started. The bytes that were packed or unpacked are written into it some times a second and at the end, as a decimal
// number that is filled up with blanks. Without the file nothing is written.
#pragma once

#include <chrono>
#include <cstdint>
#include <fstream>
#include <string>

namespace cabarc {

class Progress {
 public:
  /// `cabinet`: its path.
  explicit Progress(const std::string& cabinet);
  ~Progress() { Tell(); }
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;

  /// So many bytes more. Costs next to nothing.
  void Add(std::uint64_t bytes);

 private:
  void Tell();

  std::fstream file_;
  std::uint64_t bytes_ = 0;
  std::chrono::steady_clock::time_point toldAt_;
};

}  // namespace cabarc
