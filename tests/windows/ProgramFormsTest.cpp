// The program's own forms on their templates, with the demo workstation's captions in each language.
#include <charconv>
#include <fstream>
#include <memory>
#include <set>

#include "WindowTest.h"
#include "access/frmMainMenu.h"
#include "access/frmUserAuthentication.h"
#include "app/Messages.h"
#include "backup/Descriptor.h"
#include "backup/frmBackup.h"
#include "fakes/FakeHost.h"
#include "maintenance/Collectors.h"
#include "maintenance/frmMaintenance.h"
#include "media/frmSelectFolder.h"
#include "restore/frmRestore.h"
#include "windows/adapters/Text.h"
#include "windows/toolkit/ControlIds.h"
#include "windows/toolkit/GdiCache.h"

namespace windows_tests {

namespace {

/// A destination whose space is shown.
class AnyOperation : public media::SelectionOperation {
 public:
  std::string ProposeFolder() override { return "D:\\20120315093012\\"; }
  bool ShowsSpace() const override { return true; }
  app::ResultCode Run() override { return app::kStopped; }
  media::FailureMessages DefaultMessages() const override { return {}; }
  void Unloaded() override {}
};

struct Case {
  const char* language;
  const char* form;
};

void PrintTo(const Case& each, std::ostream* out) {
  *out << each.form << " in " << each.language;
}

/// Lines of number, kind, icon and text, with tabs between.
std::map<int, std::optional<std::string>> ReadCatalogue(const std::string& path) {
  std::map<int, std::optional<std::string>> rows;
  std::ifstream file(path);
  for (std::string line; std::getline(file, line);) {
    if (line.ends_with('\r')) line.pop_back();
    int id = 0;
    std::from_chars(line.data(), line.data() + line.size(), id);
    rows[id] = line.substr(line.rfind('\t') + 1);
  }
  return rows;
}

}  // namespace

class ProgramFormsTest : public WindowTest, public testing::WithParamInterface<Case> {
 protected:
  ProgramFormsTest() {
    fakes::FillDemoWorkstation(host_);
    host_.catalogue.rows = ReadCatalogue(std::string(QX_CATALOGUES) + GetParam().language + ".tsv");
    application_.appearance.ApplicationName = "Tarsus.exe";
    application_.appearance.Font = "Tahoma";
    application_.appearance.FontSizeSS = application_.appearance.FontSizeS = 9;
    app::State& state = application_.state;
    state.MsgTableName = host_.catalogue.tableName;
    state.SystemFolder = fakes::kSystemFolder;
    state.SoftwareVersion = "3.05";
    state.UserRight = app::Right::Privileged;
    app::OpenMessageCatalogue(application_, "any");
    WriteSetWithNotes();
    form_ = Make(GetParam().form);
    form_->Load();
  }

  /// A set of which one category does not fit and the others are missing.
  void WriteSetWithNotes() {
    application_.state.SelectedFolder = "D:\\";
    host_.WriteLines("D:\\BackupInfo.ini", {"AppType=" + backup::HostApplicationType(application_), "AppVersion=3.01",
                                            "Date=2012/03/15 09:30:12", "PatientData=other"});
  }

  std::unique_ptr<forms::Form> Make(const std::string& name) {
    if (name == "frmUserAuthentication") return std::make_unique<operator_access::frmUserAuthentication>(application_);
    if (name == "frmMainMenu") return std::make_unique<operator_access::frmMainMenu>(job_);
    if (name == "frmBackup") return std::make_unique<backup::frmBackup>(job_);
    if (name == "frmSelectFolder") return std::make_unique<media::frmSelectFolder>(application_, operation_);
    if (name == "frmMaintenance") return std::make_unique<maintenance::frmMaintenance>(application_);
    return std::make_unique<restore::frmRestore>(application_, definitions_);
  }

  fakes::FakeHost host_;
  app::Application application_{host_.Contracts(), toolkit_};
  backup::JobDefinitions definitions_;
  maintenance::Collectors collectors_{application_, definitions_};
  backup::JobContext job_{application_, definitions_, collectors_};
  AnyOperation operation_;
  std::unique_ptr<forms::Form> form_;
};

TEST_P(ProgramFormsTest, EveryMemberHasItsControlAndEveryControlItsMember) {
  std::set<std::string> members;
  for (const forms::Control* control : form_->Controls()) {
    members.insert(control->Name());
    EXPECT_NE(ItemOf(*form_, *control), nullptr) << control->Name();
  }
  for (const windows::ControlId& entry : windows::ControlIdsOf(form_->Name())) {
    EXPECT_TRUE(members.contains(entry.name)) << entry.name;
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

TEST_P(ProgramFormsTest, CaptionsFit) {
  constexpr int kTickWidth = 18;  // of a check box or option button, with its gap
  constexpr int kButtonEdge = 8;
  for (const forms::Control* control : form_->Controls()) {
    if (control->Caption().empty()) continue;
    HWND window = ItemOf(*form_, *control);
    RECT area = {};
    GetClientRect(window, &area);
    if (control->Kind() == forms::ControlKind::CommandButton) area.right -= kButtonEdge;
    const bool isLabel = control->Kind() == forms::ControlKind::Label;
    if (!isLabel && control->Kind() != forms::ControlKind::CommandButton) area.right -= kTickWidth;

    HDC context = GetDC(window);
    RECT needed = {0, 0, area.right, 0};
    {
      const windows::SelectScope font(context, reinterpret_cast<HGDIOBJ>(SendMessageW(window, WM_GETFONT, 0, 0)));
      DrawTextW(context, windows::Utf16(control->Caption()).c_str(), -1, &needed,
                DT_CALCRECT | (isLabel ? DT_WORDBREAK : DT_SINGLELINE));
    }
    ReleaseDC(window, context);
    EXPECT_LE(needed.right, area.right) << control->Caption();
    EXPECT_LE(needed.bottom, area.bottom) << control->Caption();
  }
}

std::vector<Case> AllCases() {
  std::vector<Case> cases;
  for (const char* language : {"english", "german"}) {
    for (const char* form :
         {"frmUserAuthentication", "frmMainMenu", "frmBackup", "frmSelectFolder", "frmRestore", "frmMaintenance"}) {
      cases.push_back({language, form});
    }
  }
  return cases;
}

INSTANTIATE_TEST_SUITE_P(Languages, ProgramFormsTest, testing::ValuesIn(AllCases()),
                         [](const auto& each) { return std::string(each.param.language) + "_" + each.param.form; });

}  // namespace windows_tests
