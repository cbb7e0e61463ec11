// <windows.h> as every file of src/windows includes it, and owners of what Windows hands out.
//
// The macros that would rewrite our own names are gone. Each owner gives its one thing back exactly once.
#pragma once

#include <windows.h>

// Methods of our contracts have these names.
#undef SetVolumeLabel
#undef Yield

#include <memory>
#include <utility>

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

/// What the system allocates and expects back through LocalFree.
struct LocalFreer {
  void operator()(void* memory) const { LocalFree(memory); }
};
template <typename T>
using LocalMemory = std::unique_ptr<T, LocalFreer>;

}  // namespace windows
