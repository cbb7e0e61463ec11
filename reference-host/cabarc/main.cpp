// cabarc: the cabinet archiver of the reference host.
#include <sstream>

#include "cabarc/Commands.h"
#include "cabarc/Platform.h"
#include "cabarc/Status.h"

int main(int argc, char** argv) {
  cabarc::platform::RemoveUnfinishedWhenEnded();
  std::ostringstream out;
  std::ostringstream err;
  const int code = cabarc::Run(cabarc::platform::Arguments(argc, argv), out, err);
  const bool told = cabarc::platform::Print(out.str(), false);
  if (!told) err << "cabarc: its output cannot be written\n";
  cabarc::platform::Print(err.str(), true);
  return told || code != 0 ? code : static_cast<int>(cabarc::ExitCode::Files);
}
