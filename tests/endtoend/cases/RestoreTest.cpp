// Restores through the real dialogs: back to the byte, or refused with nothing touched.

#include <optional>

#include "cases/EndToEndTest.h"

namespace endtoend {
namespace {

constexpr char kSet[] = "E:\\Set\\";
const fs::path kReports = kTarsus / "Data" / "Report";

class Restore : public EndToEndTest {
 protected:
  void SetUp() override {
    EndToEndTest::SetUp();
    person_.emplace().SignIn();
    before_ = Snapshot(kTarsus / "Data");
    person_->Accept(person_->StartBackup(person_->OpenBackup({.system = true, .report = true})), kSet);
    person_->ConsentUntil(65300, {64302});
  }

  void TearDown() override {
    person_.reset();
    EndToEndTest::TearDown();
  }

  /// Chooses `folder` as the source and returns the number of the message that refuses it; the
  /// selection dialog is left by Cancel.
  int Refusal(const std::string& folder) {
    person_->MainMenu().Press(ID_frmMainMenu_cmdMenu1);
    person_->Accept(person_->DestinationDialog(), folder);
    const int message = person_->Answer();
    person_->DestinationDialog().Press(ID_frmSelectFolder_cmdCancel);
    person_->MainMenu();
    return message;
  }

  std::optional<Operator> person_;
  std::vector<std::pair<std::string, std::string>> before_;
};

TEST_F(Restore, PutsEveryByteBack) {
  fs::remove_all(kReports);
  WriteBytes(kTarsus / "Data" / "Menu" / "Standard.mnu", "damaged");
  fs::remove(kTarsus / "Data" / "Explanation" / L"撮影 手順.htm");
  person_->OpenRestore(kSet).Press(ID_frmRestore_cmdStart);
  person_->ConsentUntil(65400, {});
  person_->MainMenu();
  EXPECT_TRUE(Snapshot(kTarsus / "Data") == before_);
  EXPECT_TRUE(fs::is_empty(fs::temp_directory_path()));
  EXPECT_TRUE(LogHolds("Start Restore"));
  person_->End();
}

TEST_F(Restore, OffersWhatTheSetHoldsAndThisSystemFits) {
  const fs::path version = kTarsus / "System" / "BackupVersion.ini";
  const Altered altered(version, Replaced(ReadBytes(version), "MenuData=V2.1", "MenuData=V2.2"));
  const Window dialog = person_->OpenRestore(kSet);
  EXPECT_FALSE(dialog.IsEnabled(ID_frmRestore_chkPatientData));
  EXPECT_FALSE(dialog.IsEnabled(ID_frmRestore_chkMenuData));
  EXPECT_NE(dialog.Text(ID_frmRestore_LblPatient), dialog.Text(ID_frmRestore_LblMenu));
  EXPECT_TRUE(dialog.IsTicked(ID_frmRestore_chkReportData));
  EXPECT_TRUE(dialog.IsVisible(ID_frmRestore_chkIPCounter));
  EXPECT_EQ(dialog.Text(ID_frmRestore_lblAppVersionValue), "3.00");
  for (int box : {ID_frmRestore_chkSystemData, ID_frmRestore_chkUserData, ID_frmRestore_chkExplanationData,
                  ID_frmRestore_chkReportSetData, ID_frmRestore_chkReportData}) {
    dialog.Tick(box, false);
  }
  EXPECT_FALSE(dialog.IsEnabled(ID_frmRestore_cmdStart));
  dialog.Tick(ID_frmRestore_chkReportData);
  EXPECT_TRUE(dialog.IsEnabled(ID_frmRestore_cmdStart));
  dialog.Press(ID_frmRestore_cmdCancel);
  person_->DestinationDialog().Press(ID_frmSelectFolder_cmdCancel);
  person_->End();
  EXPECT_TRUE(LogHolds("Cancel Restore"));
}

TEST_F(Restore, RefusesSetsThatDoNotBelongHere) {
  const fs::path info = fs::path(kSet) / "BackupInfo.ini";
  const std::string whole = ReadBytes(info);
  EXPECT_EQ(Refusal("E:\\"), 60426);
  const struct {
    const char* from;
    const char* to;
    int message;
  } changes[] = {{"AppType=Tarsus", "AppType=tarsus", 60429},
                 {"AppType=Tarsus", "", 60427},
                 {"AppVersion=3.00", "AppVersion=4.00", 60430},
                 {"AppVersion=3.00", "AppVersion=3", 60430},
                 {"Date=", "Day=", 60427}};
  for (const auto& change : changes) {
    SCOPED_TRACE(change.to);
    const Altered altered(info, Replaced(whole, change.from, change.to));
    EXPECT_EQ(Refusal(kSet), change.message);
  }
  EXPECT_EQ(Refusal("Q:\\Set\\"), 63411);
  person_->End();
  EXPECT_TRUE(Snapshot(kTarsus / "Data") == before_);
}

TEST_F(Restore, DamagedArchivesTouchNothing) {
  const fs::path archive = fs::path(kSet) / "ReportData.cab";
  const std::string whole = ReadBytes(archive);
  std::string flipped = whole;
  flipped[flipped.size() / 2] = static_cast<char>(flipped[flipped.size() / 2] ^ 1);
  for (const std::string& bytes : {whole.substr(0, whole.size() / 2), std::string(), flipped}) {
    SCOPED_TRACE(bytes.size());
    const Altered damaged(archive, bytes);
    const Window dialog = person_->OpenRestore(kSet);
    for (int box : {ID_frmRestore_chkMenuData, ID_frmRestore_chkSystemData, ID_frmRestore_chkUserData,
                    ID_frmRestore_chkExplanationData, ID_frmRestore_chkReportSetData}) {
      dialog.Tick(box, false);
    }
    dialog.Press(ID_frmRestore_cmdStart);
    EXPECT_EQ(person_->Answer(), 60401);
    person_->DestinationDialog().Press(ID_frmSelectFolder_cmdCancel);
    person_->MainMenu();
    EXPECT_TRUE(Snapshot(kTarsus / "Data") == before_);
    EXPECT_TRUE(fs::is_empty(fs::temp_directory_path()));
  }
  person_->End();
}

}  // namespace
}  // namespace endtoend
