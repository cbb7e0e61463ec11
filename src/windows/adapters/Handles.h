// Owners of what Windows hands out: each gives its one thing back exactly once.
#pragma once

#include <memory>
#include <utility>

#include "windows/adapters/Win32.h"

namespace windows {

/// A kernel handle, closed at the end. Both of the system's "no handle" values count as none.
class Handle {
 public:
  Handle() = default;
  explicit Handle(HANDLE handle) : handle_(handle == INVALID_HANDLE_VALUE ? nullptr : handle) {}
  ~Handle() { Close(); }
  Handle(Handle&& other) noexcept : handle_(std::exchange(other.handle_, nullptr)) {}
  Handle& operator=(Handle&& other) noexcept {
    std::swap(handle_, other.handle_);
    return *this;
  }

  explicit operator bool() const { return handle_ != nullptr; }
  HANDLE Get() const { return handle_; }
  /// Closes now; TRUE also where there was nothing to close.
  BOOL Close() { return handle_ == nullptr ? TRUE : CloseHandle(std::exchange(handle_, nullptr)); }

 private:
  HANDLE handle_ = nullptr;
};

struct FindCloser {
  using pointer = HANDLE;
  void operator()(HANDLE handle) const { FindClose(handle); }
};
/// A folder search; build it from a valid handle only.
using FindHandle = std::unique_ptr<void, FindCloser>;

struct LibraryFreer {
  using pointer = HMODULE;
  void operator()(HMODULE library) const { FreeLibrary(library); }
};
using Library = std::unique_ptr<HMODULE, LibraryFreer>;

}  // namespace windows
