// Fonts and brushes of all dialogs: made once, freed with the toolkit.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <tuple>
#include <type_traits>

#include "windows/adapters/Win32.h"

namespace windows {

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

}  // namespace windows
