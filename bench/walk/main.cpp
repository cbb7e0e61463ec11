// How fast a cabinet is walked by its checksums, beside reading the file and nothing more.
//
//   bench_walk CABINET ROUNDS     the two take turns; the first round fills the cache and does not count
//
// Prints a line "walk SECONDS" and one "walk.read SECONDS" a round.

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include "cabinet/Blocks.h"
#include "cabinet/Structure.h"

namespace {

struct CloseFile {
  void operator()(std::FILE* file) const { std::fclose(file); }
};

/// Without a buffer of its own: each call of the walk is one call of the system, as on Windows.
class File : public cabinet::Source {
 public:
  explicit File(const char* path) : file_(std::fopen(path, "rb")) {
    if (file_) std::setvbuf(file_.get(), nullptr, _IONBF, 0);
  }
  std::int64_t ReadAt(std::uint64_t offset, void* data, std::size_t count) override {
    if (!file_ || (offset != at_ && std::fseek(file_.get(), static_cast<long>(offset), SEEK_SET) != 0)) return -1;
    const std::size_t got = std::fread(data, 1, count, file_.get());
    at_ = offset + got;
    return got == 0 && std::ferror(file_.get()) != 0 ? -1 : static_cast<std::int64_t>(got);
  }
  std::uint64_t Size() override {
    if (!file_ || std::fseek(file_.get(), 0, SEEK_END) != 0) return 0;
    at_ = static_cast<std::uint64_t>(std::ftell(file_.get()));
    return at_;
  }

 private:
  std::unique_ptr<std::FILE, CloseFile> file_;
  std::uint64_t at_ = 0;
};

/// As a restore does it before it begins.
bool Walk(const char* path) {
  File file(path);
  cabinet::Structure structure;
  return cabinet::ReadStructure(file, structure).IsDone() && cabinet::WalkBlocks(file, structure).IsDone();
}

/// By pieces as large as the walk's.
bool Read(const char* path) {
  File file(path);
  std::vector<std::byte> piece(4 * cabinet::Window::kReach);
  const std::uint64_t size = file.Size();
  std::uint64_t at = 0;
  std::int64_t got = 1;
  for (; got > 0; at += static_cast<std::uint64_t>(got)) {
    got = file.ReadAt(at, piece.data(), piece.size());
    if (got < 0) return false;
  }
  return at == size;
}

bool Time(const char* name, bool (*work)(const char*), const char* path, bool counts) {
  const auto start = std::chrono::steady_clock::now();
  const bool done = work(path);
  const double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
  if (counts) std::printf("%s %.6f\n", name, seconds);
  return done;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) {
    std::cerr << "usage: bench_walk CABINET ROUNDS\n";
    return 2;
  }
  const int rounds = std::atoi(argv[2]);
  for (int round = 0; round <= rounds; ++round) {
    const bool counts = round > 0;
    const bool read = Time("walk.read", Read, argv[1], counts);
    if (read && Time("walk", Walk, argv[1], counts)) continue;
    std::cerr << "bench_walk: the cabinet is not whole\n";
    return 1;
  }
}
