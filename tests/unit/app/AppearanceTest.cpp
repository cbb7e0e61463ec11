// Appearance, captions and places of dialogs.
#include "app/Appearance.h"

#include <array>
#include <deque>

#include "app/Captions.h"
#include "unit/Station.h"

namespace {

TEST_F(AppTest, EveryValueIsRequired) {
  host.qx32.numbers["BackupUtility\\BUFontSizeS"] = 12;
  EXPECT_EQ(app::ReadAppearanceSettings(application), app::kDone);
  EXPECT_EQ(host.toolkit.font, "Tahoma 12") << "dialogs are laid out by the larger font";
  EXPECT_EQ(host.calls.Count(), 16u);
  EXPECT_EQ(host.calls.Calls().back().detail, "BackupUtility\\ColorTextR");
  for (std::size_t n = 1; n <= 16; ++n) {
    host.calls.Reset();
    host.calls.FailCall(n);
    EXPECT_EQ(app::ReadAppearanceSettings(application), app::kFailed) << n;
    EXPECT_EQ(host.calls.Count(), n) << "reading goes on";
  }
}

TEST_F(AppTest, TheHostApplicationIsAnExecutable) {
  for (const auto& [given, kept] :
       {std::pair("Tarsus", "Tarsus.exe"), {"Tarsus.EXE", "Tarsus.EXE"}, {"exe", "exe.exe"}}) {
    host.qx32.texts["ApplicationName"] = given;
    EXPECT_EQ(app::ReadAppearanceSettings(application), app::kDone);
    EXPECT_EQ(application.appearance.ApplicationName, kept);
  }
}

/// One control of each kind, and a label for errors.
struct Sample : forms::Form {
  explicit Sample(forms::Toolkit& toolkit) : Form(toolkit, "Sample") { error.SetLook({"", 0, 0, 0x0000FF}); }
  forms::Label label{*this, "lblLabel1"};
  forms::Frame frame{*this, "fraFrame"};
  forms::CheckBox check{*this, "chkBox"};
  forms::OptionButton option{*this, "Option1"};
  forms::Label error{*this, "lblError2"};
  forms::CommandButton button{*this, "cmdOK"};
  forms::TextBox text{*this, "txtText"};
  forms::ComboBox combo{*this, "cmbText"};
};

TEST_F(AppTest, LookOfEachKind) {
  host.qx32.numbers["BackupUtility\\BUFontSizeS"] = 12;
  app::ReadAppearanceSettings(application);
  Sample form(host.toolkit);
  app::ApplyControlAppearance(application, form);
  using Look = std::array<std::uint32_t, 3>;
  std::vector<Look> looks;
  const auto add = [&](const forms::Appearance& look) {
    EXPECT_EQ(look.fontName, "Tahoma");
    looks.push_back({look.fontSize, look.background, look.foreground});
  };
  add(form.Look());
  for (const forms::Control* control : form.Controls()) add(control->Look());
  const std::vector<Look> wanted = {
      {9, 0x202020, 0x404040}, {9, 0x202020, 0x404040},  {9, 0x202020, 0x404040},
      {9, 0x202020, 0x404040}, {9, 0x202020, 0x404040},  {9, 0x202020, 0x0000FF},
      {9, 0x303030, 0x404040}, {12, 0x505050, 0x404040}, {12, 0x202020, 0x404040},
  };
  EXPECT_EQ(looks, wanted);
}

// The screen has 15360 by 11520 twips, the form 6000 by 4000; centred it stands at 4680, 3760.
TEST_F(AppTest, Places) {
  const std::tuple<std::optional<int>, std::optional<int>, int, int> rows[] = {
      {{}, {}, 4680, 3760},         {100, {}, 100, 3760},   {{}, 100, 4680, 100},
      {15360, 11520, 15360, 11520},  // just off the screen still counts as on it
      {15361, 0, 4680, 3760},       {0, 11521, 4680, 3760}, {-6000, -4000, -6000, -4000},
      {-6001, 0, 4680, 3760},       {0, -4001, 4680, 3760}, {INT32_MAX, 0, 4680, 3760},
      {INT32_MIN, 0, 4680, 3760},
  };
  const std::string leftName = "BackupUtility\\dlgSampleLeft";
  const std::string topName = "BackupUtility\\dlgSampleTop";
  const std::map<std::string, std::uint32_t> others = host.qx32.numbers;
  for (const auto& [left, top, newLeft, newTop] : rows) {
    auto& saved = host.qx32.numbers = others;
    if (left) saved[leftName] = static_cast<std::uint32_t>(*left);
    if (top) saved[topName] = static_cast<std::uint32_t>(*top);
    Sample form(host.toolkit);
    form.Load();
    app::RestoreDialogPosition(application, "Sample", form);
    EXPECT_EQ(std::pair(form.Left(), form.Top()), std::pair(newLeft, newTop));
    EXPECT_EQ(saved[leftName], static_cast<std::uint32_t>(newLeft)) << "the place is saved at once";
    EXPECT_EQ(saved[topName], static_cast<std::uint32_t>(newTop));
    form.MoveTo(-5, 7);
    app::SaveDialogPosition(application, "Sample", form);
    EXPECT_EQ(saved[leftName], 0xFFFFFFFBu);
    EXPECT_EQ(saved[topName], 7u);
  }
}

/// The title, and the captions of these controls.
Names Captions(app::Application& application, int dialog, const Names& controls) {
  forms::Form form(application.toolkit, "form");
  std::deque<forms::Label> labels;
  for (const std::string& name : controls) labels.emplace_back(form, name);
  app::SetDialogCaptions(application, static_cast<app::DialogNumber>(dialog), form);
  Names captions = {form.Title()};
  for (const forms::Label& label : labels) captions.push_back(label.Caption());
  return captions;
}

TEST_F(CatalogueTest, EveryDialogGetsItsTexts) {
  const std::tuple<int, Names, std::vector<int>> dialogs[] = {
      {1, {"lblLabel1", "lblLabel2", "cmdOK", "cmdCancel"}, {66010, 66011, 66012, 66001, 66002}},
      {2, {"cmdMenu0", "cmdMenu1", "cmdMenu2", "cmdEnd"}, {66020, 66021, 66022, 66023, 66003}},
      {3,
       {"fraBackup", "chkPatientData", "chkSystemData", "chkLogData", "chkDeleteLog", "chkReportData", "cmdStart",
        "cmdCancel"},
       {66030, 66035, 66031, 66032, 66033, 66034, 66036, 66004, 66002}},
      {5,
       {"lblLabel1", "lblLabel2", "lblLabel3", "lblLabel4", "cmdStart", "cmdCancel", "Frame1", "Option1", "Option2",
        "lblLabel5", "Frame2", "Option3", "Option4", "lblLabel7"},
       {66100, 66101, 66106, 66107, 66108, 66004, 66002, 66102, 66103, 66104, 66115, 66117, 66118, 66119, 66120}},
      {6, {"lblLabel1", "lblLabel2", "cmdRefer", "cmdOK", "cmdCancel"}, {66040, 66041, 66042, 66005, 66001, 66002}},
  };
  for (const auto& [dialog, controls, ids] : dialogs) {
    Names texts;
    for (const int id : ids) texts.push_back("text " + std::to_string(id));
    EXPECT_EQ(Captions(application, dialog, controls), texts);
  }
}

TEST_F(CatalogueTest, AMissingTextDoesNotEndTheLoading) {
  host.catalogue.rows.erase(66011);
  EXPECT_EQ(Captions(application, 1, {"lblLabel1", "cmdCancel"}), (Names{"text 66010", "Not Defined!", "text 66002"}));
}

}  // namespace
