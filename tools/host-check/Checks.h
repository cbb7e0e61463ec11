// The checks, in the order in which they run: a later one may need what an earlier one has read.
// None of them writes anything but its lines of the report.
#pragma once

#include "app/Application.h"
#include "host-check/Report.h"

namespace hostcheck {

/// The host's DLLs and every export that the program's adapters look for.
void CheckLibraries(Report& report);

/// Registry values and path table; fills the folders of the state and the appearance settings.
void CheckSettings(Report& report, app::Application& application);

/// Every component: registered, creatable, and with every operation.
void CheckComponents(Report& report);

/// The catalogue's table and every text that the program takes from it. Leaves the table open.
void CheckCatalogue(Report& report, app::Application& application);

/// The databases behind the components and the network configuration library.
void CheckDatabases(Report& report, app::Application& application);

/// BackupList.ini with everything that it names, and BackupVersion.ini.
void CheckJobs(Report& report, app::Application& application);

/// Programs of the host and of the system, and room to work in.
void CheckPrograms(Report& report, app::Application& application);

/// What this user may not do that a job needs: write to the host's registry key and where a restore puts things back,
/// export the registry, start the host application.
void CheckRights(Report& report, app::Application& application);

/// What Windows and the host's batch files may do otherwise than the jobs expect.
void CheckSurroundings(Report& report, app::Application& application);

/// Whether this user may create files in `folder`.
bool MayWriteTo(const std::string& folder);

}  // namespace hostcheck
