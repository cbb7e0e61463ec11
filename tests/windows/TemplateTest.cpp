// The templates: every control that the table names is there, once, and of the right kind.
#include <algorithm>
#include <map>
#include <optional>

#include "WindowTest.h"
#include "windows/adapters/Text.h"
#include "windows/toolkit/ControlIds.h"

namespace windows_tests {

namespace {

struct Template {
  const char* form;
  const char* firstFocus;
};

void PrintTo(const Template& dialog, std::ostream* out) {
  *out << dialog.form;
}

INT_PTR CALLBACK NoHandler(HWND, UINT, WPARAM, LPARAM) {
  return FALSE;
}

BOOL CALLBACK CountId(HWND control, LPARAM counts) {
  ++(*reinterpret_cast<std::map<int, int>*>(counts))[GetDlgCtrlID(control)];
  return TRUE;
}

/// The window class that a control's name promises by its prefix.
std::wstring ClassFor(const std::string& name) {
  for (const char* prefix : {"lbl", "Lbl"}) {
    if (name.starts_with(prefix)) return L"Static";
  }
  if (name.starts_with("txt")) return L"Edit";
  if (name.starts_with("cmb")) return L"ComboBox";
  return L"Button";
}

}  // namespace

class TemplateTest : public WindowTest, public testing::WithParamInterface<Template> {
 protected:
  TemplateTest()
      : dialog_(CreateDialogParamW(GetModuleHandleW(nullptr), windows::Utf16(GetParam().form).c_str(), nullptr,
                                   NoHandler, 0)) {}
  ~TemplateTest() override { DestroyWindow(dialog_); }

  HWND dialog_;
};

TEST_P(TemplateTest, HoldsTheTablesControlsOnceAndNoOthers) {
  ASSERT_NE(dialog_, nullptr);
  std::map<int, int> counts;
  // Descendants: the field of a combo box counts with an ID of its own.
  for (HWND child = GetWindow(dialog_, GW_CHILD); child != nullptr; child = GetWindow(child, GW_HWNDNEXT)) {
    CountId(child, reinterpret_cast<LPARAM>(&counts));
  }
  counts.erase(-1);
  counts.erase(0xFFFF);
  const auto table = windows::ControlIdsOf(GetParam().form);
  ASSERT_FALSE(table.empty());
  EXPECT_EQ(counts.size(), table.size());
  for (const windows::ControlId& entry : table) {
    EXPECT_EQ(counts[entry.id], 1) << entry.name;
    wchar_t type[32] = {};
    GetClassNameW(GetDlgItem(dialog_, entry.id), type, 32);
    EXPECT_EQ(type, ClassFor(entry.name)) << entry.name;
  }
}

TEST_P(TemplateTest, IsADialogThatDriversFindAndOperatorsCanEnter) {
  wchar_t type[32] = {};
  GetClassNameW(dialog_, type, 32);
  EXPECT_STREQ(type, L"QXDialog");
  EXPECT_FALSE(IsWindowVisible(dialog_)) << "it shows when the form is ready";
  const windows::ControlId* first = windows::FindControlId(GetParam().form, GetParam().firstFocus);
  ASSERT_NE(first, nullptr);
  EXPECT_EQ(GetNextDlgTabItem(dialog_, nullptr, FALSE), GetDlgItem(dialog_, first->id));
}

TEST_P(TemplateTest, ControlsStayInsideAndApart) {
  RECT inside = {};
  GetClientRect(dialog_, &inside);
  std::vector<std::pair<std::string, RECT>> taken;
  for (const windows::ControlId& entry : windows::ControlIdsOf(GetParam().form)) {
    RECT area = {};
    HWND control = GetDlgItem(dialog_, entry.id);
    GetWindowRect(control, &area);
    MapWindowPoints(nullptr, dialog_, reinterpret_cast<POINT*>(&area), 2);
    RECT common = {};
    IntersectRect(&common, &area, &inside);
    EXPECT_TRUE(EqualRect(&common, &area)) << entry.name << " leaves the dialog";
    const bool frame =
        (GetWindowLongW(control, GWL_STYLE) & BS_TYPEMASK) == BS_GROUPBOX && ClassFor(entry.name) == L"Button";
    if (frame) continue;
    for (const auto& [name, other] : taken) {
      EXPECT_FALSE(IntersectRect(&common, &area, &other)) << entry.name << " covers " << name;
    }
    taken.emplace_back(entry.name, area);
  }
}

INSTANTIATE_TEST_SUITE_P(All, TemplateTest,
                         testing::Values(Template{"frmUserAuthentication", "cmbUserName"},
                                         Template{"frmMainMenu", "cmdMenu0"}, Template{"frmBackup", "chkPatientData"},
                                         Template{"frmSelectFolder", "txtFolder"},
                                         Template{"frmRestore", "chkPatientData"},
                                         Template{"frmMaintenance", "Option1"}),
                         [](const auto& each) { return std::string(each.param.form); });

}  // namespace windows_tests
