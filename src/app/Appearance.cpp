// How every dialog comes to look.
#include "app/Appearance.h"

#include <algorithm>
#include <string_view>

#include "app/Application.h"
#include "base/Path.h"
#include "base/Text.h"

namespace app {
namespace {

constexpr std::string_view kExecutable = ".exe";

base::Outcome ReadTexts(host::QX32& registry, AppearanceSettings& settings) {
  const struct {
    const char* name;
    std::string& value;
  } texts[] = {{"ApplicationName", settings.ApplicationName},
               {"Application", settings.Application},
               {"PathAppl", settings.PathAppl},
               {"Font", settings.Font}};
  for (const auto& text : texts) {
    if (base::Outcome read = registry.RegGetKeySZ(text.name, text.value); !read.IsDone()) return read;
    text.value = base::CutAtNul(text.value);
  }
  return base::Result::Done;
}

base::Outcome ReadNumbers(host::QX32& registry, AppearanceSettings& settings) {
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
    base::Outcome read = registry.RegGetKeyDWORD(std::string("BackupUtility\\") + number.name, number.value);
    if (!read.IsDone()) return read;
  }
  return base::Result::Done;
}

/// Windows does not care for the case of an extension, so ".EXE" will do.
bool NamesExecutable(const std::string& name) {
  return name.size() >= kExecutable.size() &&
         base::SameName(name.substr(name.size() - kExecutable.size()), kExecutable);
}

forms::Appearance LookOf(const AppearanceSettings& settings, const forms::Control& control) {
  forms::Appearance look{settings.Font, settings.FontSizeSS, settings.ColorBack, settings.ColorStr};
  switch (control.Kind()) {
    case forms::ControlKind::TextBox:
    case forms::ControlKind::ListBox:
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
    case forms::ControlKind::ProgressBar:
      break;
  }
  return look;
}

/// Dialogs are known in the registry by their names without "frm".
std::string PlaceName(const forms::Form& form, const char* edge) {
  constexpr std::size_t kPrefixLength = 3;
  return "BackupUtility\\dlg" + form.Name().substr(kPrefixLength) + edge;
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
  static_cast<void>(registry.RegSetKeyDWORD(name, static_cast<std::uint32_t>(place)));
}

void Centre(host::QX32& registry, Edge& edge) {
  edge.place = (edge.screen - edge.extent) / 2;
  WritePlace(registry, edge.name, edge.place);
}

void ReadPlace(host::QX32& registry, Edge& edge) {
  std::uint32_t saved = 0;
  if (registry.RegGetKeyDWORD(edge.name, saved).IsDone()) {
    edge.place = static_cast<std::int32_t>(saved);
  } else {
    Centre(registry, edge);
  }
}

/// A place that equals the screen's own length still counts as on it.
bool IsOffScreen(const Edge& edge) {
  return edge.screen < edge.place || std::int64_t{edge.place} + edge.extent < 0;
}

}  // namespace

base::Outcome ReadAppearanceSettings(host::QX32& registry, forms::Toolkit& toolkit, AppearanceSettings& settings) {
  if (base::Outcome read = ReadTexts(registry, settings); !read.IsDone()) return read;
  if (!NamesExecutable(settings.ApplicationName)) settings.ApplicationName += kExecutable;
  if (base::Outcome read = ReadNumbers(registry, settings); !read.IsDone()) return read;
  toolkit.SetFont(settings.Font, std::max(settings.FontSizeSS, settings.FontSizeS));
  return base::Result::Done;
}

void SetDialogCaptions(Messages& messages, forms::Form& form) {
  form.SetTitle(messages.GetMessageText(form.TitleId()));
  for (forms::Control* control : form.Controls()) {
    if (control->CaptionId() != forms::kNoCaption) control->SetCaption(messages.GetMessageText(control->CaptionId()));
  }
}

void ApplyControlAppearance(const AppearanceSettings& settings, forms::Form& form) {
  form.SetLook({settings.Font, settings.FontSizeSS, settings.ColorBack, settings.ColorStr});
  for (forms::Control* control : form.Controls()) control->SetLook(LookOf(settings, *control));
}

void RestoreDialogPosition(host::QX32& registry, forms::Toolkit& toolkit, forms::Form& form) {
  Edge left{PlaceName(form, "Left"), toolkit.ScreenWidth(), form.Width()};
  Edge top{PlaceName(form, "Top"), toolkit.ScreenHeight(), form.Height()};
  ReadPlace(registry, left);
  ReadPlace(registry, top);
  if (IsOffScreen(left) || IsOffScreen(top)) {
    Centre(registry, left);
    Centre(registry, top);
  }
  form.MoveTo(left.place, top.place);
}

void SaveDialogPosition(host::QX32& registry, const forms::Form& form) {
  WritePlace(registry, PlaceName(form, "Left"), form.Left());
  WritePlace(registry, PlaceName(form, "Top"), form.Top());
}

void PrepareDialog(Application& application, forms::Form& form) {
  RestoreDialogPosition(application.host.qx32, application.toolkit, form);
  SetDialogCaptions(application.messages, form);
  ApplyControlAppearance(application.appearance, form);
}

}  // namespace app
