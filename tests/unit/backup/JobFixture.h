// The demo workstation as a job finds it: signed in, a staging folder made, a job file of the test's own.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "app/Application.h"
#include "backup/JobContext.h"
#include "fakes/FakeHost.h"

/// Notes what the job runner asks of the maintenance room.
struct NotedCollectors : backup::MaintenanceCollectors {
  std::vector<std::string> asked;
  app::ResultCode personalInfo = app::kDone;

  void RunMaintenanceScript(backup::ScriptPhase phase) override {
    asked.push_back("script " + std::to_string(static_cast<int>(phase)));
  }
  app::ResultCode ApplyPersonalInfoList(const std::string& section) override {
    asked.push_back("personal info of " + section);
    return personalInfo;
  }
  void CopyRecentImages(const std::string& stagingFolder) override { asked.push_back("images to " + stagingFolder); }
  app::ResultCode ImportClientLogs() override {
    asked.push_back("client logs");
    return app::kFailed;
  }
};

struct JobStation {
  JobStation() {
    fakes::FillDemoWorkstation(host);
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
  app::ResultCode LoadSection(const std::string& section, std::vector<std::string> lines) {
    lines.insert(lines.begin(), "[" + section + "]");
    host.WriteLines("C:\\Tarsus\\System\\BackupList.ini", lines);
    return definitions.Load(application, fakes::kSystemFolder, backup::kJobDefinitionFile, section);
  }

  /// Paths below the staging folder, in name order.
  std::vector<std::string> Staged() { return NamesBelow(kStaging); }
  std::vector<std::string> NamesBelow(const std::string& folder) {
    std::vector<std::string> names;
    for (const auto& [name, bytes] : host.disk.Tree(folder)) names.push_back(name);
    return names;
  }
  bool WasWarnedOf(const std::string& part) {
    for (const std::string& line : host.Told().logLines) {
      if (line.find(part) != std::string::npos) return true;
    }
    return false;
  }

  fakes::FakeHost host;
  app::Application application{host.Contracts(), host.toolkit};
  backup::JobDefinitions definitions;
  NotedCollectors collectors;
  backup::JobContext job{application, definitions, collectors};
};

class JobTest : public testing::Test, public JobStation {};

using Names = std::vector<std::string>;
