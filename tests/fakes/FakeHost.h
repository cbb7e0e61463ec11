// A whole imaginary workstation in one object.
#pragma once

#include "fakes/CallCounter.h"
#include "fakes/Disk.h"
#include "fakes/FakeComponents.h"
#include "fakes/FakeDatabases.h"
#include "fakes/FakeDesktop.h"
#include "fakes/FakeFileSystem.h"
#include "fakes/FakeLibraries.h"
#include "fakes/FakeProcesses.h"
#include "fakes/ScriptedOperator.h"
#include "host/Host.h"

namespace fakes {

/// Owns all fakes; empty until a test or FillDemoWorkstation fills it. Made and destroyed in FakeHost.cpp, so that the
/// fakes are compiled there alone.
struct FakeHost {
  FakeHost();
  ~FakeHost();

  CallCounter calls;
  Disk disk;
  ScriptedOperator person;
  ScriptedToolkit toolkit{person};
  FakeQX32 qx32{calls};
  FakeQX32lib qx32lib{calls};
  FakeQXNetDB qxNetDB{calls};
  FakeComponents components{disk, calls, person};
  FakeCatalogue catalogue{calls};
  FakeCompactor compactor{disk, calls};
  FakeFileSystem files{disk, calls};
  FakeDrives drives{disk, calls};
  FakeProcesses processes{disk, calls};
  FakeShell shell{disk, calls, person};
  FakeClock clock;
  FakeMessageLoop messageLoop;

  host::Host Contracts();
  ComponentState& Told() { return components.state; }
  /// Writes a text file with CR LF line ends.
  void WriteLines(const std::string& path, const std::vector<std::string>& lines);
  /// The cabinet in a file; fails the test when there is none.
  CabinetContents Unpacked(const std::string& path);
};

/// Folders of the demo workstation.
inline constexpr const char* kSystemFolder = "C:\\Tarsus\\System\\";
inline constexpr const char* kProgramFolder = "C:\\Tarsus\\Backup";
inline constexpr const char* kLogFile = "C:\\Tarsus\\Log\\BackupUtility.log";

/// Users of the demo workstation, one of each right; the password of all is "secret".
inline constexpr const char* kBackupUser = "Anna Backup";
inline constexpr const char* kRestoreUser = "Rolf Restore";
inline constexpr const char* kBothUser = "Bea Both";
inline constexpr const char* kServiceUser = "Sven Service";
inline constexpr const char* kPowerlessUser = "Nora Nothing";

/// A host system that is installed and works: the host disk C:, writable media in D:, a floppy
/// in A:, path table, registry, catalogue, users, programs, BackupList.ini, BackupVersion.ini
/// and data of every category.
void FillDemoWorkstation(FakeHost& host);

}  // namespace fakes
