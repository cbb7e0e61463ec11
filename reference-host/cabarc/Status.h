// How routines of the archiver report success and failure.
#pragma once

#include <string>
#include <utility>

namespace cabarc {

/// What the process answers; each value is part of the command's interface (see --help).
enum class ExitCode : int {
  Ok = 0,
  Usage = 1,       ///< the command line is wrong
  Files = 2,       ///< a file cannot be read or written, or does not fit into a cabinet
  Broken = 3,      ///< the cabinet is damaged, or of a kind that is not supported
  UnsafeName = 4,  ///< a name must not be stored or extracted
};

/// Success, or an exit code with the text to show.
struct [[nodiscard]] Status {
  ExitCode code = ExitCode::Ok;
  std::string text;  ///< UTF-8, without line end; empty on success

  bool Failed() const { return code != ExitCode::Ok; }
};

inline Status FileError(std::string text) {
  return {ExitCode::Files, std::move(text)};
}
inline Status BrokenCabinet(std::string text) {
  return {ExitCode::Broken, std::move(text)};
}
inline Status UnsafeName(std::string text) {
  return {ExitCode::UnsafeName, std::move(text)};
}

}  // namespace cabarc
