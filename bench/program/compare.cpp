// Compares two files byte by byte, as the command `fc /b` does on Windows; Wine's compares nothing.
//
//   bench_compare FILE OTHER     ends with 0 when they hold the same

#include <cstdio>
#include <memory>
#include <vector>

namespace {

struct CloseFile {
  void operator()(std::FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, CloseFile>;

File OpenFile(const char* path) {
  File file(std::fopen(path, "rb"));
  if (file) std::setvbuf(file.get(), nullptr, _IONBF, 0);
  return file;
}

bool AreSame(std::FILE* left, std::FILE* right) {
  constexpr std::size_t kPiece = 1 << 20;
  std::vector<char> one(kPiece);
  std::vector<char> other(kPiece);
  std::size_t got = kPiece;
  while (got == kPiece) {
    one.resize(got = std::fread(one.data(), 1, kPiece, left));
    other.resize(std::fread(other.data(), 1, kPiece, right));
    if (one != other) return false;
  }
  return std::ferror(left) == 0 && std::ferror(right) == 0;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) return 2;
  const File left = OpenFile(argv[1]);
  const File right = OpenFile(argv[2]);
  return left && right && AreSame(left.get(), right.get()) ? 0 : 1;
}
