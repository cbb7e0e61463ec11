// How far the archiver is, for a program that waits for it.
#include "cabarc/Progress.h"

#include <filesystem>
#include <iomanip>

namespace cabarc {

Progress::Progress(const std::string& cabinet)
    : file_(std::filesystem::path(std::u8string(cabinet.begin(), cabinet.end()) + u8".progress"),
            std::ios::in | std::ios::out | std::ios::binary),
      toldAt_(std::chrono::steady_clock::now()) {}

void Progress::Add(std::uint64_t bytes) {
  constexpr std::chrono::milliseconds kTellEvery{200};
  bytes_ += bytes;
  if (!file_.is_open()) return;
  const auto now = std::chrono::steady_clock::now();
  if (now - toldAt_ < kTellEvery) return;
  toldAt_ = now;
  Tell();
}

void Progress::Tell() {
  constexpr int kWidth = 20;
  if (!file_.is_open() || bytes_ == 0) return;
  file_.seekp(0);
  file_ << std::left << std::setw(kWidth) << bytes_ << std::flush;
}

}  // namespace cabarc
