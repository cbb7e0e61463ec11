// What dialogs are drawn with: fonts and brushes, made once, and the look of a command button.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <tuple>
#include <type_traits>

#include "windows/adapters/Win32.h"

namespace windows {

/// Fonts and brushes of all dialogs, freed with the toolkit.
class GdiCache {
 public:
  /// Owned by the cache. `name` is UTF-8; `points` is the size at `dpi` dots per inch.
  HFONT Font(const std::string& name, std::uint32_t points, int dpi);
  /// Owned by the cache.
  HBRUSH Brush(COLORREF colour);

 private:
  struct Deleter {
    void operator()(void* object) const { DeleteObject(object); }
  };
  template <typename Object>
  using Owner = std::unique_ptr<std::remove_pointer_t<Object>, Deleter>;

  std::map<std::tuple<std::string, std::uint32_t, int>, Owner<HFONT>> fonts_;
  std::map<COLORREF, Owner<HBRUSH>> brushes_;
};

/// Makes an object current in a device context for its own life.
class SelectScope {
 public:
  SelectScope(HDC context, HGDIOBJ object) : context_(context), before_(SelectObject(context, object)) {}
  ~SelectScope() { SelectObject(context_, before_); }
  SelectScope(const SelectScope&) = delete;
  SelectScope& operator=(const SelectScope&) = delete;

 private:
  HDC context_;
  HGDIOBJ before_;
};

/// Whether the user has asked Windows for a high-contrast scheme, which goes before configured colours.
bool IsHighContrast();

struct ButtonColours {
  COLORREF face;
  COLORREF text;
  /// An edge in the text's colour in place of a raised one, whose light and shadow cannot be told from the face
  /// where that is black.
  bool plain = false;
};

/// Draws the button that `item` describes, in the state it names. `isDefault`: it stands behind Enter
/// and gets a frame.
void PaintButton(const DRAWITEMSTRUCT& item, const ButtonColours& colours, bool isDefault, GdiCache& gdi);

}  // namespace windows
