// The host's DLLs, through the adapters that the program loads them with.
#include "host-check/Checks.h"
#include "windows/adapters/Qx32Library.h"
#include "windows/adapters/Qx32libLibrary.h"
#include "windows/adapters/QxNetDBLibrary.h"

namespace hostcheck {
namespace {

void CheckLibrary(Report& report, const windows::HostLibrary& library, const std::string& name,
                  const std::string& purpose) {
  report.Require(library.IsLoaded(), name, purpose + "; beside the program or in the system folder");
  if (!library.IsLoaded()) return;
  for (const auto& [exportName, found] : library.Exports()) {
    report.Require(found, name + " export " + exportName, purpose);
  }
}

}  // namespace

void CheckLibraries(Report& report) {
  CheckLibrary(report, windows::Qx32Library().Library(), "QX32.dll", "path table and registry");
  CheckLibrary(report, windows::Qx32libLibrary().Library(), "QX32lib.dll", "system configuration database");
  CheckLibrary(report, windows::QxNetDBLibrary().Library(), "QXNetDB.dll", "media drives");
}

}  // namespace hostcheck
