// The demo workstation for tests of single modules: before start-up, and as a job finds it.
#pragma once

#include <algorithm>

#include "app/Application.h"
#include "backup/JobContext.h"
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
  CatalogueTest() { host.catalogue.Open("", host.catalogue.tableName); }
};

/// Notes what the job runner asks of the maintenance room.
struct NotedCollectors : backup::MaintenanceCollectors {
  Names asked;
  base::Result personalInfo = base::Result::Done;

  void RunMaintenanceScript(backup::ScriptPhase phase) override {
    asked.push_back("script " + std::to_string(static_cast<int>(phase)));
  }
  base::Result ApplyPersonalInfoList(const std::string& section) override {
    asked.push_back("personal info of " + section);
    return personalInfo;
  }
  void CopyRecentImages(const std::string& stagingFolder) override { asked.push_back("images to " + stagingFolder); }
  base::Result ImportClientLogs() override {
    asked.push_back("client logs");
    return base::Result::Failed;
  }
};

/// Signed in, with a staging folder, and a job file of the test's own.
struct JobStation : Workstation {
  JobStation() {
    host.catalogue.Open("", host.catalogue.tableName);
    host.disk.MakeFolders(kStaging);
    app::State& state = application.state;
    state.StartupDirectory = fakes::kProgramFolder;
    state.LogFolder = "C:\\Tarsus\\Log";
    state.SystemFolder = fakes::kSystemFolder;
    state.ApplicationRootFolder = "C:\\Tarsus\\";
    state.UserFolder = "C:\\Tarsus\\User\\";
    state.SoftwareVersion = "3.00";
    state.StagingFolder = kStaging;
    state.CurrentOperation = app::Operation::Backup;
    application.appearance.ApplicationName = "Tarsus.exe";
  }

  static constexpr const char* kStaging = "C:\\Work\\";

  /// Replaces the job file by one section and loads it.
  base::Result LoadSection(const std::string& section, Names lines) {
    lines.insert(lines.begin(), "[" + section + "]");
    Jobs(lines)(host);
    return definitions.Load(application, fakes::kSystemFolder, backup::kJobDefinitionFile, section);
  }
  Names Staged() { return NamesBelow(kStaging); }

  backup::JobDefinitions definitions;
  NotedCollectors collectors;
  backup::JobContext job{application, definitions, collectors};
};

class JobTest : public testing::Test, public JobStation {};
