#include "unit/restore/RestoreSession.h"

#include <gtest/gtest.h>

void RestoreSession::BeginRestore(const std::string& folder, const std::string& user) {
  SignIn(user);
  person.Expect<flows::frmMainMenu>([](flows::frmMainMenu& form) { fakes::Press(form.cmdMenu[1]); });
  AcceptFolder(folder);
}

void RestoreSession::StartRestore(const std::string& ticks) {
  AtRestore([=](frmRestore& form) {
    for (std::size_t i = 0; i < kBoxes.size(); ++i) {
      forms::CheckBox& box = form.*kBoxes[i];
      if (box.Value() != (ticks[i] == 'x')) fakes::Tick(box, ticks[i] == 'x');
    }
    fakes::Press(form.cmdStart);
  });
}

void RestoreSession::CancelRestore() {
  AtRestore([](frmRestore& form) { fakes::Press(form.cmdCancel); });
}

void RestoreSession::LeaveSelection() {
  CancelFolder();
  EndMenu();
}

void RestoreSession::BackUpEverything() {
  BeginBackup(flows::kEverything);
  AcceptFolder(kSetFolder);
  person.ExpectMessage(64302, app::kConsented).ExpectMessage(65300);
  EndMenu();
  Run();
  Told().auditRecords.clear();
  Told().logLines.clear();
  Told().operations.clear();
  processes.started.clear();
}

void RestoreSession::InsertDisk(const MediumFiles& contents) {
  disk.FindDrive("A:")->ready = true;
  disk.Format("A:");
  for (const auto& [name, bytes] : contents) EXPECT_TRUE(disk.Write("A:\\" + name, bytes));
}

std::vector<std::string> DescriptorLines(const std::vector<std::string>& more) {
  std::vector<std::string> lines = {"[Info]", "AppVersion=3.00", "Date=2012/03/15 09:30:12", "AppType=Tarsus"};
  lines.insert(lines.end(), more.begin(), more.end());
  return lines;
}

std::string Lines(const std::vector<std::string>& lines, const std::string& end) {
  std::string text;
  for (const std::string& line : lines) text += line + end;
  return text;
}
