// The font and colours of all dialogs, and where each dialog stands.
#include "app/Appearance.h"

#include <algorithm>
#include <string_view>

#include "app/Application.h"
#include "app/External.h"
#include "app/WindowsPath.h"

namespace app {
namespace {

constexpr std::string_view kExecutable = ".exe";

bool ReadText(host::QX32& registry, const std::string& name, std::string& value) {
  if (registry.RegGetKeySZ(name, value) == kFailed) return false;
  value = CutAtNul(value);
  return true;
}

bool ReadTexts(host::QX32& registry, AppearanceSettings& settings) {
  return ReadText(registry, "ApplicationName", settings.ApplicationName) &&
         ReadText(registry, "Application", settings.Application) && ReadText(registry, "PathAppl", settings.PathAppl) &&
         ReadText(registry, "Font", settings.Font);
}

bool ReadNumbers(host::QX32& registry, AppearanceSettings& settings) {
  const struct {
    const char* name;
    std::uint32_t& value;
  } numbers[] = {
      {"BUFontSizeSS", settings.FontSizeSS}, {"BUFontSizeS", settings.FontSizeS},   {"BUFontSizeM", settings.FontSizeM},
      {"BUFontSizeL", settings.FontSizeL},   {"BUFontSizeLL", settings.FontSizeLL}, {"ColorBack", settings.ColorBack},
      {"ColorBtn", settings.ColorBtn},       {"ColorStr", settings.ColorStr},       {"ColorCtrl", settings.ColorCtrl},
      {"ColorText", settings.ColorText},     {"ColorCtrlR", settings.ColorCtrlR},   {"ColorTextR", settings.ColorTextR},
  };
  for (const auto& number : numbers) {
    if (registry.RegGetKeyDWORD(std::string("BackupUtility\\") + number.name, number.value) == kFailed) return false;
  }
  return true;
}

/// Windows does not care for the case of an extension, so ".EXE" will do.
bool NamesExecutable(const std::string& name) {
  return name.size() >= kExecutable.size() && SameName(name.substr(name.size() - kExecutable.size()), kExecutable);
}

forms::Appearance LookOf(const AppearanceSettings& settings, const forms::Control& control) {
  forms::Appearance look{settings.Font, settings.FontSizeSS, settings.ColorBack, settings.ColorStr};
  switch (control.Kind()) {
    case forms::ControlKind::TextBox:
      look.fontSize = settings.FontSizeS;
      look.background = settings.ColorCtrl;
      break;
    case forms::ControlKind::ComboBox:  // stands among text boxes, on the dialog's own background
      look.fontSize = settings.FontSizeS;
      break;
    case forms::ControlKind::CommandButton:
      look.background = settings.ColorBtn;
      break;
    case forms::ControlKind::Label:
      if (control.Name().starts_with("lblError")) look.foreground = control.Look().foreground;
      break;
    case forms::ControlKind::Frame:
    case forms::ControlKind::CheckBox:
    case forms::ControlKind::OptionButton:
      break;
  }
  return look;
}

std::string PlaceName(const std::string& dialogKey, const char* edge) {
  return "BackupUtility\\dlg" + dialogKey + edge;
}

/// One edge of a dialog: what it is called in the registry, and the lengths it depends on.
struct Edge {
  std::string name;
  int screen;
  int extent;
  std::int32_t place = 0;
};

/// The registry keeps places to the left of and above the screen as large numbers.
void WritePlace(host::QX32& registry, const std::string& name, std::int32_t place) {
  registry.RegSetKeyDWORD(name, static_cast<std::uint32_t>(place));
}

void Centre(host::QX32& registry, Edge& edge) {
  edge.place = (edge.screen - edge.extent) / 2;
  WritePlace(registry, edge.name, edge.place);
}

void ReadPlace(host::QX32& registry, Edge& edge) {
  std::uint32_t saved = 0;
  if (registry.RegGetKeyDWORD(edge.name, saved) == kFailed) {
    Centre(registry, edge);
  } else {
    edge.place = static_cast<std::int32_t>(saved);
  }
}

/// A place that equals the screen's own length still counts as on it.
bool IsOffScreen(const Edge& edge) {
  return edge.screen < edge.place || std::int64_t{edge.place} + edge.extent < 0;
}

}  // namespace

ResultCode ReadAppearanceSettings(Application& application) {
  AppearanceSettings& settings = application.appearance;
  if (!ReadTexts(application.host.qx32, settings)) return kFailed;
  if (!NamesExecutable(settings.ApplicationName)) settings.ApplicationName += kExecutable;
  if (!ReadNumbers(application.host.qx32, settings)) return kFailed;
  application.toolkit.SetFont(settings.Font, std::max(settings.FontSizeSS, settings.FontSizeS));
  return kDone;
}

void ApplyControlAppearance(Application& application, forms::Form& form) {
  const AppearanceSettings& settings = application.appearance;
  form.SetLook({settings.Font, settings.FontSizeSS, settings.ColorBack, settings.ColorStr});
  for (forms::Control* control : form.Controls()) control->SetLook(LookOf(settings, *control));
}

void RestoreDialogPosition(Application& application, const std::string& dialogKey, forms::Form& form) {
  host::QX32& registry = application.host.qx32;
  Edge left{PlaceName(dialogKey, "Left"), application.toolkit.ScreenWidth(), form.Width()};
  Edge top{PlaceName(dialogKey, "Top"), application.toolkit.ScreenHeight(), form.Height()};
  ReadPlace(registry, left);
  ReadPlace(registry, top);
  if (IsOffScreen(left) || IsOffScreen(top)) {
    Centre(registry, left);
    Centre(registry, top);
  }
  form.MoveTo(left.place, top.place);
}

void SaveDialogPosition(Application& application, const std::string& dialogKey, const forms::Form& form) {
  host::QX32& registry = application.host.qx32;
  WritePlace(registry, PlaceName(dialogKey, "Left"), form.Left());
  WritePlace(registry, PlaceName(dialogKey, "Top"), form.Top());
}

}  // namespace app
