// Dialog templates: the table of their controls, and the layout of their bytes.
#include "windows/toolkit/DialogTemplate.h"

#include <algorithm>
#include <cwchar>

#include "resource.h"

namespace windows {

namespace {

// In the order of the templates: the controls of a form stand together.
constexpr ControlId kControls[] = {
#include "ControlTable.inc"
};

// Of the extended template: up to the position and size of the dialog, and what stands between
// the size of its font and the font's name (weight, slant and character set).
constexpr std::size_t kFixedHead = 26;
constexpr std::size_t kFontStyle = 4;

std::span<const std::byte> FindTemplate(const std::wstring& name) {
  HMODULE module = GetModuleHandleW(nullptr);
  HRSRC place = FindResourceW(module, name.c_str(), reinterpret_cast<LPCWSTR>(RT_DIALOG));
  HGLOBAL handle = place == nullptr ? nullptr : LoadResource(module, place);
  const void* bytes = handle == nullptr ? nullptr : LockResource(handle);
  return {static_cast<const std::byte*>(bytes), bytes == nullptr ? 0 : SizeofResource(module, place)};
}

/// Where the text that starts at `at` ends; a text is followed by its NUL.
std::size_t AfterText(std::span<const std::byte> bytes, std::size_t at) {
  return at + (std::wcslen(reinterpret_cast<const wchar_t*>(bytes.data() + at)) + 1) * sizeof(wchar_t);
}

/// Controls stand at multiples of four bytes.
std::size_t Aligned(std::size_t at) {
  return (at + 3) / 4 * 4;
}

void Append(std::vector<std::byte>& target, const void* bytes, std::size_t size) {
  const auto* first = static_cast<const std::byte*>(bytes);
  target.insert(target.end(), first, first + size);
}

}  // namespace

std::span<const ControlId> ControlIdsOf(std::string_view formName) {
  const auto* first = std::ranges::find(kControls, formName, &ControlId::form);
  const auto* last =
      std::find_if(first, std::end(kControls), [&](const ControlId& each) { return each.form != formName; });
  return {first, last};
}

const ControlId* FindControlId(std::string_view formName, std::string_view controlName) {
  const auto controls = ControlIdsOf(formName);
  const auto found = std::ranges::find(controls, controlName, &ControlId::control);
  return found == controls.end() ? nullptr : &*found;
}

std::vector<std::byte> TemplateWith(const std::wstring& name, const LayoutFont& font) {
  const auto own = FindTemplate(name);
  if (own.empty() || font.name.empty()) return {own.begin(), own.end()};
  std::size_t at = kFixedHead;
  for (int text = 0; text < 3; ++text) at = AfterText(own, at);  // menu, class, title
  const std::size_t style = at + sizeof font.points;
  const std::size_t controls = Aligned(AfterText(own, style + kFontStyle));

  std::vector<std::byte> result(own.begin(), own.begin() + static_cast<std::ptrdiff_t>(at));
  Append(result, &font.points, sizeof font.points);
  Append(result, own.data() + style, kFontStyle);
  Append(result, font.name.c_str(), (font.name.size() + 1) * sizeof(wchar_t));
  result.resize(Aligned(result.size()));
  Append(result, own.data() + controls, own.size() - controls);
  return result;
}

}  // namespace windows
