// Cuts a joined archive into pieces by the program's own cutter, on the real file system: to be timed against other
// tools.
//
//   bench_pieces FOLDER     cuts FOLDER/FDDivide.cab and leaves the pieces beside it

#include <cstdio>
#include <filesystem>
#include <iostream>
#include <memory>
#include <string>

#include "backupset/Pieces.h"
#include "fakes/FakeHost.h"

namespace {

struct CloseFile {
  void operator()(std::FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, CloseFile>;

/// Without a buffer: each call of the program is one call of the system, as on Windows.
File OpenFile(const std::string& path, const char* mode) {
  File file(std::fopen(path.c_str(), mode));
  if (file) std::setvbuf(file.get(), nullptr, _IONBF, 0);
  return file;
}

class Reader : public host::BinaryReader {
 public:
  explicit Reader(File file) : file_(std::move(file)) {}
  std::int64_t Read(std::byte* data, std::size_t count) override {
    const std::size_t got = std::fread(data, 1, count, file_.get());
    return got == 0 && std::ferror(file_.get()) != 0 ? -1 : static_cast<std::int64_t>(got);
  }

 private:
  File file_;
};

class Writer : public host::BinaryWriter {
 public:
  explicit Writer(File file) : file_(std::move(file)) {}
  base::Outcome Write(const std::byte* data, std::size_t count) override {
    return std::fwrite(data, 1, count, file_.get()) == count ? base::Result::Done : base::Result::Failed;
  }
  base::Outcome Close() override {
    return std::fclose(file_.release()) == 0 ? base::Result::Done : base::Result::Failed;
  }

 private:
  File file_;
};

/// The two calls that the cutter makes; all others stay imaginary.
class RealFiles : public fakes::FakeFileSystem {
 public:
  using FakeFileSystem::FakeFileSystem;
  base::Obtained<host::BinaryReader> OpenBinary(const std::string& path) override {
    File file = OpenFile(path, "rb");
    if (!file) return base::Failure("cannot be opened: " + path);
    return std::make_unique<Reader>(std::move(file));
  }
  base::Obtained<host::BinaryWriter> CreateBinary(const std::string& path) override {
    File file = OpenFile(path, "wb");
    if (!file) return base::Failure("cannot be made: " + path);
    return std::make_unique<Writer>(std::move(file));
  }
};

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::cerr << "usage: bench_pieces FOLDER\n";
    return 2;
  }
  const std::string folder = std::string(argv[1]) + "/";
  std::error_code error;
  const auto size = std::filesystem::file_size(folder + backupset::kJoinedArchive, error);
  fakes::FakeHost fake;
  RealFiles files(fake.disk, fake.calls);
  const auto count = static_cast<std::uint32_t>(size);
  if (error || !backupset::SplitArchive(files, fake.messageLoop, folder, count).IsDone()) {
    std::cerr << "bench_pieces: the archive cannot be cut\n";
    return 1;
  }
}
