// The program's own forms on their templates, with the demo workstation's captions in each language:
// what an operator with or without a mouse, good eyes and a large font needs of the layout.
#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <memory>
#include <set>

#include "WindowTest.h"
#include "access/frmJobs.h"
#include "access/frmMainMenu.h"
#include "access/frmUserAuthentication.h"
#include "backup/frmBackup.h"
#include "backupset/Descriptor.h"
#include "fakes/FakeHost.h"
#include "maintenance/frmMaintenance.h"
#include "media/frmSelectFolder.h"
#include "restore/frmRestore.h"
#include "windows/adapters/Text.h"
#include "windows/toolkit/DialogTemplate.h"
#include "windows/toolkit/Window.h"
// After Win32.h, on which it rests.
#include <commctrl.h>

namespace windows_tests {

namespace {

/// Lines of number, kind, icon and text, with tabs between.
auto ReadCatalogue(const std::string& path) {
  std::map<base::MessageId, std::optional<std::string>> rows;
  std::ifstream file(path);
  for (std::string line; std::getline(file, line);) {
    rows[base::MessageId{std::atoi(line.c_str())}] = line.substr(line.rfind('\t') + 1);
  }
  return rows;
}

/// What a selection dialog needs, and nothing that is ever chosen.
class NoSelection : public media::SelectionOperation {
  std::string ProposeFolder() override { return "D:\\"; }
  std::optional<std::uint64_t> SpaceNeeded() const override { return 1; }
  base::Outcome Run() override { return {}; }
  void Unloaded() override {}
};

/// A language of the catalogue and a form.
using Case = std::tuple<const char*, const char*>;

}  // namespace

class ProgramFormsTest : public WindowTest, public testing::WithParamInterface<Case> {
 protected:
  ProgramFormsTest() {
    fakes::FillDemoWorkstation(host_);
    host_.catalogue.rows =
        ReadCatalogue(std::string("reference-host/demo/catalogue/") + std::get<0>(GetParam()) + ".tsv");
    application_.appearance.ApplicationName = "Tarsus.exe";
    app::State& state = application_.state;
    state.SystemFolder = fakes::kSystemFolder;
    state.SoftwareVersion = "3.05";
    state.UserRight = app::Right::Privileged;
    EXPECT_EQ(application_.messages.OpenMessageCatalogue("any", host_.catalogue.tableName), base::Result::Done);
    // A set of which one category does not fit and the others are missing.
    state.SelectedFolder = "D:\\";
    const std::string application = backupset::IdentityOf(state, application_.appearance).applicationType;
    host_.WriteLines("D:\\BackupInfo.ini",
                     {"AppType=" + application, "AppVersion=3.01", "Date=2012/03/15 09:30:12", "PatientData=other"});
    Open("Tahoma", 9);
  }

  std::unique_ptr<forms::Form> Make(const std::string& name) {
    if (name == "frmUserAuthentication") return std::make_unique<qx::access::frmUserAuthentication>(application_);
    if (name == "frmJobs") return std::make_unique<qx::access::frmJobs>(application_);
    if (name == "frmMainMenu") {
      return std::make_unique<qx::access::frmMainMenu>(application_, definitions_, drives_);
    }
    if (name == "frmBackup") return std::make_unique<backup::frmBackup>(application_, definitions_, drives_);
    if (name == "frmSelectFolder") return std::make_unique<media::frmSelectFolder>(application_, drives_, selection_);
    if (name == "frmMaintenance") return std::make_unique<maintenance::frmMaintenance>(application_);
    return std::make_unique<restore::frmRestore>(application_, definitions_, drives_);
  }

  void Open(const std::string& face, std::uint32_t points) {
    form_.reset();
    application_.appearance.Font = face;
    application_.appearance.FontSizeSS = application_.appearance.FontSizeS = points;
    toolkit_.SetFont(face, points);
    form_ = Make(std::get<1>(GetParam()));
    form_->Load();
  }

  static bool IsField(const forms::Control& control) { return windows::IsInput(control.Kind()); }

  /// The dialog's controls from the first to the last that the Tab key reaches.
  std::vector<HWND> Children() const {
    std::vector<HWND> children;
    HWND child = GetWindow(WindowOf(*form_), GW_CHILD);
    for (; child != nullptr; child = GetWindow(child, GW_HWNDNEXT)) children.push_back(child);
    return children;
  }

  const forms::Control* MemberOf(HWND window) const {
    const auto found = std::ranges::find_if(
        form_->Controls(), [&](const forms::Control* control) { return ItemOf(*form_, *control) == window; });
    return found == form_->Controls().end() ? nullptr : *found;
  }

  RECT AreaOf(HWND window) const {
    RECT area = {};
    GetWindowRect(window, &area);
    MapWindowPoints(nullptr, WindowOf(*form_), reinterpret_cast<POINT*>(&area), 2);
    return area;
  }

  static SIZE Measure(HWND window, HFONT font, const std::wstring& text, int width, UINT format) {
    HDC context = GetDC(window);
    RECT needed = {0, 0, width, 0};
    SelectObject(context, font);
    DrawTextW(context, text.c_str(), -1, &needed, DT_CALCRECT | format);
    ReleaseDC(window, context);
    return {needed.right, needed.bottom};
  }

  void ExpectTitleFits() const {
    NONCLIENTMETRICSW metrics = {};
    metrics.cbSize = sizeof metrics;
    SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, metrics.cbSize, &metrics, 0);
    HFONT font = CreateFontIndirectW(&metrics.lfCaptionFont);
    HWND window = WindowOf(*form_);
    const LONG width = Measure(window, font, windows::Utf16(form_->Title()), 0, DT_SINGLELINE).cx;
    DeleteObject(font);
    const RECT area = AreaOf(window);
    EXPECT_LE(width + 2 * metrics.iCaptionWidth, area.right - area.left) << "the title, its icon and close box";
  }

  void ExpectTextFits(const forms::Control& control) const {
    if (control.Kind() == forms::ControlKind::ProgressBar) return;  // has a name that is never drawn
    HWND window = ItemOf(*form_, control);
    const auto font = reinterpret_cast<HFONT>(SendMessageW(window, WM_GETFONT, 0, 0));
    const LONG line = Measure(window, font, L"X", 0, DT_SINGLELINE).cy;
    const bool isLabel = control.Kind() == forms::ControlKind::Label;
    RECT area = {};
    GetClientRect(window, &area);
    if (control.Kind() == forms::ControlKind::CommandButton) InflateRect(&area, -4, -4);  // its edge
    // A tick or option mark with its gap, or where a frame's text begins.
    if (!isLabel && !IsField(control) && control.Kind() != forms::ControlKind::CommandButton) area.left += 18;
    const std::wstring text = IsField(control) ? windows::WideTextOf(window) : windows::Utf16(control.Caption());
    const SIZE needed = Measure(window, font, text, area.right - area.left, isLabel ? DT_WORDBREAK : DT_SINGLELINE);
    EXPECT_LE(needed.cx, area.right - area.left) << control.Name();
    EXPECT_LE(std::max(needed.cy, line), area.bottom - area.top) << control.Name();
  }

  void ExpectControlsApart() const {
    RECT inside = {};
    GetClientRect(WindowOf(*form_), &inside);
    const std::vector<HWND> children = Children();
    for (auto one = children.begin(); one != children.end(); ++one) {
      const RECT area = AreaOf(*one);
      RECT common = {};
      IntersectRect(&common, &area, &inside);
      EXPECT_TRUE(EqualRect(&common, &area)) << GetDlgCtrlID(*one) << " leaves the dialog";
      for (auto other = std::next(one); other != children.end(); ++other) {
        const RECT next = AreaOf(*other);
        if (IntersectRect(&common, &area, &next) == FALSE) continue;
        // Only a frame may hold others, and then the whole of them.
        const forms::Control* frame = MemberOf(*one);
        EXPECT_TRUE(frame != nullptr && frame->Kind() == forms::ControlKind::Frame && EqualRect(&common, &next))
            << GetDlgCtrlID(*one) << " and " << GetDlgCtrlID(*other) << " overlap";
      }
    }
  }

  fakes::FakeHost host_;
  app::Application application_{host_.Contracts(), toolkit_};
  jobs::JobDefinitions definitions_;
  media::MediaDrives drives_{application_.host, application_.paths, application_.messages, application_.failures};
  NoSelection selection_;
  std::unique_ptr<forms::Form> form_;
};

TEST_P(ProgramFormsTest, MembersAndControlsBelongTogether) {
  constexpr const wchar_t* kClasses[] = {L"Static", L"Button",   L"Button",  L"Button",      L"Button",
                                         L"Edit",   L"ComboBox", L"ListBox", PROGRESS_CLASSW};
  std::set<HWND> windows;
  for (const forms::Control* control : form_->Controls()) {
    HWND window = ItemOf(*form_, *control);
    EXPECT_TRUE(windows.insert(window).second) << control->Name();
    wchar_t type[32] = {};
    GetClassNameW(window, type, 32);
    EXPECT_STREQ(type, kClasses[static_cast<int>(control->Kind())]) << control->Name();
  }
  EXPECT_EQ(windows.size(), windows::ControlIdsOf(form_->Name()).size());
  for (HWND child : Children()) {
    EXPECT_TRUE(windows.contains(child) || static_cast<short>(GetDlgCtrlID(child)) == -1) << GetDlgCtrlID(child);
  }
}

TEST_P(ProgramFormsTest, AccessKeysAreUnique) {
  std::set<wchar_t> taken;
  for (const forms::Control* control : form_->Controls()) {
    const std::wstring caption = windows::Utf16(control->Caption());
    const std::size_t mark = caption.find(L'&');
    if (mark == std::wstring::npos || mark + 1 == caption.size() || caption[mark + 1] == L'&') continue;
    EXPECT_TRUE(taken.insert(towlower(caption[mark + 1])).second) << control->Caption();
  }
  EXPECT_FALSE(taken.empty());
}

/// What stands directly before a field is the name that a screen reader gives it.
TEST_P(ProgramFormsTest, TheTabKeyGoesAsOneReadsAndFieldsFollowTheirLabels) {
  RECT before = {};
  const forms::Control* last = nullptr;
  for (HWND child : Children()) {
    const forms::Control* label = std::exchange(last, MemberOf(child));
    if (last == nullptr || last->Kind() <= forms::ControlKind::Frame) continue;  // a text
    if (last->Kind() == forms::ControlKind::ProgressBar) continue;               // no place for the focus
    const RECT area = AreaOf(child);
    const bool sameLine = area.top < before.bottom && before.top < area.bottom;
    EXPECT_TRUE(sameLine ? area.left >= before.right : area.top >= before.bottom) << last->Name();
    before = area;
    if (!IsField(*last)) continue;
    ASSERT_NE(label, nullptr) << last->Name();
    EXPECT_EQ(label->Kind(), forms::ControlKind::Label) << last->Name();
    EXPECT_FALSE(label->Caption().empty()) << last->Name();
  }
}

// A point at 144 dots per inch is one and a half at 96: the largest size stands for 14 points there.
TEST_P(ProgramFormsTest, NothingIsCutOrCoveredInAnyFont) {
  for (const char* face : {"Tahoma", "DejaVu Sans"}) {
    for (const std::uint32_t points : {8U, 9U, 11U, 14U, 21U}) {
      const testing::ScopedTrace trace(__FILE__, __LINE__, face + (" " + std::to_string(points)));
      Open(face, points);
      ExpectTitleFits();
      for (const forms::Control* control : form_->Controls()) ExpectTextFits(*control);
      ExpectControlsApart();
    }
  }
}

// Other languages take more room than the templates have; the dialog widens when it is shown.
TEST_P(ProgramFormsTest, CaptionsHalfAsLongAgainAreNotCut) {
  for (forms::Control* const control : form_->Controls()) {
    const std::wstring caption = windows::Utf16(control->Caption());
    if (control->CaptionId() == forms::kNoCaption || caption.empty()) continue;
    control->SetCaption(windows::Utf8(caption + L" " + caption.substr(0, caption.size() / 2)));
  }
  Show(*form_, [&] {
    for (const forms::Control* control : form_->Controls()) ExpectTextFits(*control);
    ExpectControlsApart();
  });
}

INSTANTIATE_TEST_SUITE_P(
    Languages, ProgramFormsTest,
    testing::Combine(testing::Values("english", "german"),
                     testing::Values("frmUserAuthentication", "frmMainMenu", "frmBackup", "frmSelectFolder",
                                     "frmRestore", "frmMaintenance", "frmJobs")),
    [](const auto& each) { return std::string(std::get<0>(each.param)) + "_" + std::get<1>(each.param); });

}  // namespace windows_tests
