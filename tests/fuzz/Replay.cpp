// Runs a fuzz target on the files below the folders named on the command line: seeds, and what fuzzing found.
#include "FuzzTarget.h"

int main(int argc, char** argv) {
  int files = 0;
  for (int i = 1; i < argc; ++i) {
    if (!fs::exists(argv[i])) continue;  // nothing was ever found
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(argv[i])) {
      if (!entry.is_regular_file()) continue;
      std::printf("%s\n", entry.path().c_str());
      std::fflush(stdout);  // what is on the last line broke a rule
      std::ifstream file(entry.path(), std::ios::binary);
      const std::vector<std::uint8_t> bytes{std::istreambuf_iterator<char>(file), {}};
      LLVMFuzzerTestOneInput(bytes.data(), bytes.size());
      ++files;
    }
  }
  std::printf("%d inputs\n", files);
  return files == 0 ? 1 : 0;
}
