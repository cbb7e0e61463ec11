// Runs a fuzz target on the files below the folders named on the command line: seeds, and what fuzzing found.
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

#include "FuzzTarget.h"

namespace fs = std::filesystem;

int main(int argc, char** argv) {
  int files = 0;
  for (int i = 1; i < argc; ++i) {
    if (!fs::exists(argv[i])) continue;  // nothing was ever found
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(argv[i])) {
      if (!entry.is_regular_file()) continue;
      std::printf("%s\n", entry.path().c_str());
      std::fflush(stdout);  // what is on the last line broke a rule
      std::ifstream file(entry.path(), std::ios::binary);
      const std::vector<char> text{std::istreambuf_iterator<char>(file), {}};
      const std::vector<std::uint8_t> bytes(text.begin(), text.end());
      LLVMFuzzerTestOneInput(bytes.data(), bytes.size());
      ++files;
    }
  }
  std::printf("%d inputs\n", files);
  return files == 0 ? 1 : 0;
}
