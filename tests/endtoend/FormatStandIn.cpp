// Stands in for the system's format.com, which Wine has not: what a medium is linked to comes into being, as a desktop
// brings a medium up once there is a file system on it. Leaves its arguments there for the test to read.
//
//   format.com E: OPTION ...
#include <cstdlib>
#include <fstream>
#include <stdexcept>
#include <string>

#include "operator/Desktop.h"

int main(int argc, char** argv) {
  if (argc < 2) return 4;
  const char letter = static_cast<char>(argv[1][0] | 0x20);
  std::string arguments;
  for (int index = 1; index < argc; ++index) arguments += std::string(index > 1 ? " " : "") + argv[index];
  try {
    endtoend::RunNative("medium=$(readlink \"$WINEPREFIX/dosdevices/" + std::string(1, letter) +
                        ":\") && mkdir \"$medium\" && echo '" + arguments + "' >\"$medium.formatted\"");
  } catch (const std::runtime_error&) {
    return 4;
  }
  return 0;
}
