// Appearance and places of dialogs.
#include "app/Appearance.h"

#include <array>

#include "unit/Station.h"

namespace {

using base::Result;

class AppearanceTest : public AppTest {
 public:
  base::Outcome Read() { return app::ReadAppearanceSettings(host.qx32, host.toolkit, settings); }

  app::AppearanceSettings settings;
};

TEST_F(AppearanceTest, EveryValueIsRequired) {
  host.qx32.numbers["BackupUtility\\BUFontSizeS"] = 12;
  EXPECT_EQ(Read(), Result::Done);
  EXPECT_EQ(host.toolkit.font, "Tahoma 12") << "dialogs are laid out by the larger font";
  EXPECT_EQ(host.calls.Count(), 16u);
  EXPECT_EQ(host.calls.Calls().back().detail, "BackupUtility\\ColorTextR");
  for (std::size_t n = 1; n <= 16; ++n) {
    host.calls.Reset();
    host.calls.FailCall(n);
    EXPECT_EQ(Read(), Result::Failed) << n;
    EXPECT_EQ(host.calls.Count(), n) << "reading goes on";
  }
}

TEST_F(AppearanceTest, TheHostApplicationIsAnExecutable) {
  for (const auto& [given, kept] :
       {std::pair("Tarsus", "Tarsus.exe"), {"Tarsus.EXE", "Tarsus.EXE"}, {"exe", "exe.exe"}}) {
    host.qx32.texts["ApplicationName"] = given;
    EXPECT_EQ(Read(), Result::Done);
    EXPECT_EQ(settings.ApplicationName, kept);
  }
}

/// One control of each kind, and a label for errors.
struct Sample : forms::Form {
  explicit Sample(forms::Toolkit& toolkit) : Form(toolkit, "frmSample", base::kNoMessage) {
    error.SetLook({"", 0, 0, 0x0000FF});
  }
  forms::Label label{*this, "lblLabel1", forms::kNoCaption};
  forms::Frame frame{*this, "fraFrame", forms::kNoCaption};
  forms::CheckBox check{*this, "chkBox", forms::kNoCaption};
  forms::OptionButton option{*this, "Option1", forms::kNoCaption};
  forms::Label error{*this, "lblError2", forms::kNoCaption};
  forms::CommandButton button{*this, "cmdOK", forms::kNoCaption};
  forms::TextBox text{*this, "txtText"};
  forms::ComboBox combo{*this, "cmbText"};
};

TEST_F(AppearanceTest, LookOfEachKind) {
  host.qx32.numbers["BackupUtility\\BUFontSizeS"] = 12;
  EXPECT_EQ(Read(), Result::Done);
  Sample form(host.toolkit);
  app::ApplyControlAppearance(settings, form);
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
    app::RestoreDialogPosition(host.qx32, host.toolkit, form);
    EXPECT_EQ(std::pair(form.Left(), form.Top()), std::pair(newLeft, newTop));
    EXPECT_EQ(saved[leftName], static_cast<std::uint32_t>(newLeft)) << "the place is saved at once";
    EXPECT_EQ(saved[topName], static_cast<std::uint32_t>(newTop));
    form.MoveTo(-5, 7);
    app::SaveDialogPosition(host.qx32, form);
    EXPECT_EQ(saved[leftName], 0xFFFFFFFBu);
    EXPECT_EQ(saved[topName], 7u);
  }
}

}  // namespace
