// Appearance, captions and places of dialogs.
#include "app/Appearance.h"

#include <deque>
#include <sstream>

#include "app/Captions.h"
#include "unit/Station.h"

namespace {

/// One control of each kind.
class Sample : public forms::Form {
 public:
  explicit Sample(forms::Toolkit& toolkit) : Form(toolkit, "Sample") {}
  forms::Label label{*this, "lblLabel1"};
  forms::Label error{*this, "lblError2"};
  forms::Frame frame{*this, "fraFrame"};
  forms::CheckBox check{*this, "chkBox"};
  forms::OptionButton option{*this, "Option1"};
  forms::TextBox text{*this, "txtText"};
  forms::CommandButton button{*this, "cmdOK"};
};

TEST_F(AppTest, EveryValueIsRequired) {
  host.qx32.numbers["BackupUtility\\BUFontSizeS"] = 12;
  EXPECT_EQ(app::ReadAppearanceSettings(application), app::kDone);
  EXPECT_EQ(host.toolkit.font, "Tahoma 12") << "dialogs are laid out by the larger font";
  std::vector<std::string> names;
  for (const fakes::Call& call : host.calls.Calls()) names.push_back(call.detail);
  EXPECT_EQ(names.size(), 16u);
  EXPECT_EQ(names.back(), "BackupUtility\\ColorTextR");
  for (std::size_t i = 0; i < names.size(); ++i) {
    host.calls.Reset();
    host.calls.FailCall(i + 1);
    EXPECT_EQ(app::ReadAppearanceSettings(application), app::kFailed) << names[i];
    EXPECT_EQ(host.calls.Count(), i + 1) << "reading goes on after " << names[i];
  }
}

TEST_F(AppTest, TheHostApplicationIsAnExecutable) {
  for (const auto& [given, kept] : {std::pair("Tarsus", "Tarsus.exe"),
                                    {"Tarsus.exe", "Tarsus.exe"},
                                    {"Tarsus.EXE", "Tarsus.EXE"},
                                    {"exe", "exe.exe"}}) {
    host.qx32.texts["ApplicationName"] = given;
    EXPECT_EQ(app::ReadAppearanceSettings(application), app::kDone);
    EXPECT_EQ(application.appearance.ApplicationName, kept);
  }
}

TEST_F(AppTest, LookOfEachKind) {
  app::AppearanceSettings& settings = application.appearance;
  settings.Font = "Tahoma";
  settings.FontSizeSS = 9;
  settings.FontSizeS = 11;
  settings.ColorBack = 0xB0;
  settings.ColorBtn = 0xB1;
  settings.ColorStr = 0xF0;
  settings.ColorCtrl = 0xC0;
  Sample form(host.toolkit);
  form.error.SetLook({"", 0, 0, 0x0000FF});
  app::ApplyControlAppearance(application, form);
  const auto expectLook = [](const forms::Appearance& look, const std::vector<std::uint32_t>& sizeBackFore) {
    EXPECT_EQ(look.fontName, "Tahoma");
    EXPECT_EQ((std::vector<std::uint32_t>{look.fontSize, look.background, look.foreground}), sizeBackFore);
  };
  expectLook(form.Look(), {9, 0xB0, 0xF0});
  for (const forms::Control* control :
       std::initializer_list<const forms::Control*>{&form.label, &form.frame, &form.check, &form.option})
    expectLook(control->Look(), {9, 0xB0, 0xF0});
  expectLook(form.error.Look(), {9, 0xB0, 0xFF});
  expectLook(form.button.Look(), {9, 0xB1, 0xF0});
  expectLook(form.text.Look(), {11, 0xC0, 0xF0});
}

// The screen has 15360 by 11520 twips, the form 6000 by 4000; centred it stands at 4680, 3760.
TEST_F(AppTest, Places) {
  const struct {
    std::optional<int> left, top;
    int newLeft, newTop;
  } rows[] = {
      {{}, {}, 4680, 3760},         {100, {}, 100, 3760},   {{}, 100, 4680, 100},
      {15360, 11520, 15360, 11520},  // just off the screen still counts as on it
      {15361, 0, 4680, 3760},       {0, 11521, 4680, 3760}, {-6000, -4000, -6000, -4000},
      {-6001, 0, 4680, 3760},       {0, -4001, 4680, 3760}, {INT32_MAX, 0, 4680, 3760},
      {INT32_MIN, 0, 4680, 3760},
  };
  const std::string left = "BackupUtility\\dlgSampleLeft";
  const std::string top = "BackupUtility\\dlgSampleTop";
  for (const auto& row : rows) {
    auto& saved = host.qx32.numbers;
    saved.erase(left);
    saved.erase(top);
    if (row.left) saved[left] = static_cast<std::uint32_t>(*row.left);
    if (row.top) saved[top] = static_cast<std::uint32_t>(*row.top);
    Sample form(host.toolkit);
    form.Load();
    app::RestoreDialogPosition(application, "Sample", form);
    EXPECT_EQ(std::pair(form.Left(), form.Top()), std::pair(row.newLeft, row.newTop));
    EXPECT_EQ(saved[left], static_cast<std::uint32_t>(row.newLeft)) << "the place is saved at once";
    EXPECT_EQ(saved[top], static_cast<std::uint32_t>(row.newTop));
    form.MoveTo(-5, 7);
    app::SaveDialogPosition(application, "Sample", form);
    EXPECT_EQ(saved[left], 0xFFFFFFFBu);
    EXPECT_EQ(saved[top], 7u);
  }
}

/// Captions of a form that has the controls of `expected`, in the same notation: "name=caption",
/// the title without a name.
std::string Captions(app::Application& application, int dialog, const std::string& expected) {
  forms::Form form(application.toolkit, "form");
  std::deque<forms::Label> labels;
  std::istringstream words(expected);
  for (std::string word; words >> word;) {
    if (!word.starts_with('=')) labels.emplace_back(form, word.substr(0, word.find('=')));
  }
  app::SetDialogCaptions(application, static_cast<app::DialogNumber>(dialog), form);
  std::string found = "=" + form.Title();
  for (const forms::Label& label : labels) found += " " + label.Name() + "=" + label.Caption();
  return found;
}

TEST_F(CatalogueTest, EveryDialogGetsItsTexts) {
  for (auto& [id, text] : host.catalogue.rows) text = std::to_string(id);
  const std::pair<int, const char*> rows[] = {
      {1, "=66010 lblLabel1=66011 lblLabel2=66012 cmdOK=66001 cmdCancel=66002"},
      {2, "=66020 cmdMenu0=66021 cmdMenu1=66022 cmdMenu2=66023 cmdEnd=66003"},
      {3,
       "=66030 fraBackup=66035 chkPatientData=66031 chkSystemData=66032 chkLogData=66033 chkDeleteLog=66034 "
       "chkReportData=66036 cmdStart=66004 cmdCancel=66002"},
      {5,
       "=66100 lblLabel1=66101 lblLabel2=66106 lblLabel3=66107 lblLabel4=66108 cmdStart=66004 cmdCancel=66002 "
       "Frame1=66102 Option1=66103 Option2=66104 lblLabel5=66115 Frame2=66117 Option3=66118 Option4=66119 "
       "lblLabel7=66120"},
      {6, "=66040 lblLabel1=66041 lblLabel2=66042 cmdRefer=66005 cmdOK=66001 cmdCancel=66002"},
  };
  for (const auto& [dialog, captions] : rows) EXPECT_EQ(Captions(application, dialog, captions), captions);
  EXPECT_EQ(Captions(application, 4, "lblLabel1="), "= lblLabel1=");
}

TEST_F(CatalogueTest, AMissingTextDoesNotEndTheLoading) {
  host.catalogue.rows.erase(66011);
  EXPECT_EQ(Captions(application, 1, "lblLabel1= cmdCancel="),
            "=text 66010 lblLabel1=Not Defined! cmdCancel=text 66002");
}

}  // namespace
