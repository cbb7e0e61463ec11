#include "fakes/FakeHost.h"

#include <gtest/gtest.h>

#include "fakes/CommandLineTools.h"
#include "fakes/Text.h"

namespace fakes {

FakeHost::FakeHost() = default;
FakeHost::~FakeHost() = default;

host::Host FakeHost::Contracts() {
  return {qx32,  qx32lib, qxNetDB,   components, catalogue, compactor,
          files, drives,  processes, shell,      clock,     messageLoop};
}

void FakeHost::WriteLines(const std::string& path, const std::vector<std::string>& lines) {
  std::string text;
  for (const std::string& line : lines) text += line + "\r\n";
  disk.Write(path, ToCodePage(text));
}

CabinetContents FakeHost::Unpacked(const std::string& path) {
  const auto contents = ReadCabinet(disk.Read(path));
  if (!contents) ADD_FAILURE() << "no cabinet: " << path;
  return contents.value_or(CabinetContents());
}

}  // namespace fakes
