// The demo workstation for tests of single modules: before start-up, and as a job finds it.
#pragma once

#include <algorithm>

#include "app/Application.h"
#include "backupset/SetWriter.h"
#include "jobs/Items.h"
#include "unit/Arrange.h"

struct Workstation {
  Workstation() { fakes::FillDemoWorkstation(host); }

  /// Paths below a folder, in name order.
  Names NamesBelow(const std::string& folder) { return NamesOf(host.disk.Tree(folder)); }
  bool WasWarnedOf(const std::string& part) {
    return std::any_of(host.Told().logLines.begin(), host.Told().logLines.end(),
                       [&](const std::string& line) { return line.find(part) != std::string::npos; });
  }

  fakes::FakeHost host;
  app::Application application{host.Contracts(), host.toolkit};
};

class AppTest : public testing::Test, public Workstation {};

/// Opens the catalogue as start-up does.
class CatalogueTest : public AppTest {
 public:
  CatalogueTest() { static_cast<void>(host.catalogue.Open("", host.catalogue.tableName)); }
};

/// Signed in, with a work folder, and a job file of the test's own.
struct JobStation : Workstation {
  JobStation() {
    static_cast<void>(host.catalogue.Open("", host.catalogue.tableName));
    host.disk.MakeFolders("C:\\Work");
    host.files.temporaryFolder = "C:\\Work\\";
    EXPECT_TRUE(packed.workFolder.Create(host.clock, host.messageLoop).IsDone());
    EXPECT_EQ(packed.workFolder.StagingFolder(), kStaging);
    app::State& state = application.state;
    state.StartupDirectory = fakes::kProgramFolder;
    state.LogFolder = "C:\\Tarsus\\Log";
    state.SystemFolder = fakes::kSystemFolder;
    state.ApplicationRootFolder = "C:\\Tarsus\\";
    state.UserFolder = "C:\\Tarsus\\User\\";
    state.SoftwareVersion = "3.00";
    state.CurrentOperation = app::Operation::Backup;
    application.appearance.ApplicationName = "Tarsus.exe";
  }

  static constexpr const char* kStaging = "C:\\Work\\120315093012\\";

  /// Replaces the job file by one section and loads it.
  base::Outcome LoadSection(const std::string& section, Names lines) {
    lines.insert(lines.begin(), "[" + section + "]");
    Jobs(lines)(host);
    return definitions.Load(tools, fakes::kSystemFolder, jobs::kJobDefinitionFile, section);
  }
  /// The job's tools on another file system.
  work::Tools ToolsOn(host::FileSystem& files) const {
    return {files, tools.processes, tools.messageLoop, tools.log, tools.programFolder, tools.clock, tools.progress};
  }
  Names Staged() { return NamesBelow(kStaging); }

  work::Tools tools = work::ToolsOf(application);
  media::MediaDrives drives{host.Contracts(), application.paths, application.messages, application.failures};
  jobs::JobDefinitions definitions;
  backupset::PackedSet packed{{host.files, host.qx32, fakes::kProgramFolder}, {}, 0};
  jobs::Job job{tools,
                application.paths,
                host.components,
                definitions,
                packed.workFolder,
                application.state.ApplicationRootFolder,
                application.state.SystemFolder,
                application.state.UserFolder,
                std::nullopt};
};

class JobTest : public testing::Test, public JobStation {};
