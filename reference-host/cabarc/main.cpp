// cabarc: the cabinet archiver of the reference host.
#include <sstream>

#include "cabarc/Commands.h"
#include "cabarc/Platform.h"

int main(int argc, char** argv) {
  std::ostringstream out;
  std::ostringstream err;
  const int code = cabarc::Run(cabarc::platform::Arguments(argc, argv), out, err);
  cabarc::platform::Print(out.str(), false);
  cabarc::platform::Print(err.str(), true);
  return code;
}
