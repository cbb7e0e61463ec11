// Maintenance bundles through the real dialogs.

#include "cases/EndToEndTest.h"

namespace endtoend {
namespace {

class Maintenance : public EndToEndTest {};

TEST_F(Maintenance, BothBundlesAreWritten) {
  Operator person;
  person.SignIn();
  for (const bool protect : {true, false}) {
    SCOPED_TRACE(protect);
    const std::string folder = protect ? "E:\\Protected\\" : "E:\\Open\\";
    person.Accept(person.CollectMaintenanceLog(protect, 30), folder);
    person.ConsentUntil(65450, {64452});
    person.MainMenu();
    EXPECT_TRUE(fs::exists(folder + "MAINTENANCE.cab"));
    EXPECT_TRUE(fs::exists(folder + "T_TSTUDY.txt"));
    EXPECT_TRUE(
        ReadBytes(folder + "BackupInfo.ini").ends_with("CABFile=MAINTENANCE.cab;\r\n\r\n[VersionInfo]\r\n\r\n"));
    EXPECT_TRUE(fs::is_empty(fs::temp_directory_path()));
  }
  EXPECT_NE(ReadBytes("E:\\Protected\\T_TSTUDY.txt"), ReadBytes("E:\\Open\\T_TSTUDY.txt"));
  person.End();
}

TEST_F(Maintenance, CancelAndRefusalLeaveNothingBehind) {
  Operator person;
  person.SignIn().Press(ID_frmMainMenu_cmdMenu2);
  const Window dialog = person.TheProgram().WaitForDialog(ID_frmMaintenance_cmdStart);
  EXPECT_EQ(dialog.Text(ID_frmMaintenance_txtPatientCount), "120");
  EXPECT_FALSE(dialog.IsEnabled(ID_frmMaintenance_txtCollectRange));
  dialog.Choose(ID_frmMaintenance_Option2);
  dialog.Press(ID_frmMaintenance_cmdStart);
  EXPECT_EQ(person.Answer(Answer::Refuse), 64530);
  EXPECT_TRUE(dialog.IsTicked(ID_frmMaintenance_Option2));
  dialog.Press(ID_frmMaintenance_cmdCancel);
  person.MainMenu();
  EXPECT_TRUE(fs::is_empty(fs::temp_directory_path()));
  person.End();
}

TEST_F(Maintenance, UnreachableStudyDatabaseIsSaid) {
  const fs::path directory = kTarsus / "System" / "Directory.ini";
  const Altered elsewhere(directory, Replaced(ReadBytes(directory), "\nStudyDB=", "\nxStudyDB="));
  Operator person;
  person.SignIn().Press(ID_frmMainMenu_cmdMenu2);
  EXPECT_EQ(person.Answer(), 60520);
  const Window dialog = person.TheProgram().WaitForDialog(ID_frmMaintenance_cmdStart);
  EXPECT_FALSE(dialog.Text(ID_frmMaintenance_lblError2).empty());
  dialog.Press(ID_frmMaintenance_cmdCancel);
  person.End();
}

}  // namespace
}  // namespace endtoend
