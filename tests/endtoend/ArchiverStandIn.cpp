// Stands in for the archiver of a host: what it makes is not what it was told to make, and it says that all went well.
//
//   cabarc ... NAME.cab ITEM ...
//
// What is wrong is the word in cabarc.flaw beside it: with "half" it has the host's own archiver, which stands aside,
// do the work and cuts the archive in the middle; with any other it does nothing.
#include <windows.h>

#include <algorithm>
#include <filesystem>

#include "operator/Program.h"
#include "operator/Workstation.h"

namespace fs = std::filesystem;

namespace {

fs::path OwnFolder() {
  wchar_t self[MAX_PATH] = L"";
  GetModuleFileNameW(nullptr, self, MAX_PATH);
  return fs::path(self).parent_path();
}

/// This program's own command line with the true archiver in front.
std::string TrueCommand() {
  const std::wstring own = GetCommandLineW();
  const fs::path archiver = OwnFolder() / "cabarc.exe.aside";
  return endtoend::Utf8(archiver.wstring() + own.substr(std::min(own.find(L' '), own.size())));
}

}  // namespace

int main(int argc, char** argv) {
  constexpr int kArchive = 4;
  if (argc <= kArchive || endtoend::ReadBytes(OwnFolder() / "cabarc.flaw") != "half") return 0;
  endtoend::Program(TrueCommand()).WaitForEnd();
  fs::resize_file(argv[kArchive], fs::file_size(argv[kArchive]) / 2);
  return 0;
}
