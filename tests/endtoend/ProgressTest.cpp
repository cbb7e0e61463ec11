// How far a job is, read from the real bar by another process, as a screen reader does.
#include <algorithm>

#include "EndToEndTest.h"

namespace endtoend {
namespace {

using Progress = EndToEndTest;

/// What a bar shows from the moment when it appears until it is hidden or at its end.
std::vector<int> Readings(const Window& dialog, int bar) {
  std::vector<int> values;
  WaitUntil([&] {
    const std::optional<int> value = dialog.Progress(bar);
    if (value && (values.empty() || *value != values.back())) values.push_back(*value);
    return value == 1000 || (!value && !values.empty());
  });
  return values;
}

TEST_F(Progress, TheBarsOfABackupComeToTheirEndAndNeverGoBack) {
  Operator person;
  person.SignIn();
  const Window backup = person.OpenBackup({.patient = true, .report = true});
  EXPECT_FALSE(backup.Progress(ID_frmBackup_prgJob)) << "nothing is at work";
  backup.Press(ID_frmBackup_cmdStart);
  const std::vector<int> packing = Readings(backup, ID_frmBackup_prgJob);
  EXPECT_GE(packing.size(), 4U);
  EXPECT_TRUE(std::ranges::is_sorted(packing)) << testing::PrintToString(packing);

  const Window destination = person.DestinationDialog();
  EXPECT_EQ(destination.Text(ID_frmSelectFolder_lblProgress), "");
  person.Accept(destination, "E:\\Progress\\");
  EXPECT_EQ(person.Answer(), AskMakeBackupFolder);
  const std::vector<int> writing = Readings(destination, ID_frmSelectFolder_prgJob);
  EXPECT_TRUE(std::ranges::is_sorted(writing)) << testing::PrintToString(writing);
  ASSERT_FALSE(writing.empty());
  EXPECT_EQ(writing.back(), 1000);
  EXPECT_EQ(person.NextMessage(), BackupComplete);
  EXPECT_TRUE(destination.Text(ID_frmSelectFolder_lblProgress).starts_with("100 % - "));
  EXPECT_EQ(person.Answer(), BackupComplete);
  person.End();
}

}  // namespace
}  // namespace endtoend
