// cabarc: the cabinet archiver of the reference host.
#include <sstream>

#include "cabarc/Commands.h"
#include "cabarc/Platform.h"

int main(int argc, char** argv) {
  std::ostringstream out;
  std::ostringstream err;
  const int code = cabinet::Run(cabinet::platform::Arguments(argc, argv), out, err);
  cabinet::platform::Print(out.str(), false);
  cabinet::platform::Print(err.str(), true);
  return code;
}
