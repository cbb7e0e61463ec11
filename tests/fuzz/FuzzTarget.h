// What a fuzz target is: a function that takes any bytes and ends the process when a rule does not hold for them.
//
// Built with libFuzzer it is called with inputs that try to reach every branch; built with Replay.cpp, with the files
// of seeds/ and found/.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>
#include <utility>

/// The name by which libFuzzer finds a target. Always 0.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace fuzz {

/// Ends the process, which makes the input a finding, unless `holds`.
inline void Require(bool holds, std::string_view rule) {
  if (holds) return;
  std::fprintf(stderr, "RULE BROKEN: %.*s\n", static_cast<int>(rule.size()), rule.data());
  std::abort();
}

/// An input, as text.
inline std::string Text(const std::uint8_t* data, std::size_t size) {
  return {data, data + size};
}

/// What stands before and behind the first `separator`; without one, everything stands before it.
inline std::pair<std::string, std::string> SplitAt(const std::string& text, char separator) {
  const std::size_t at = text.find(separator);
  if (at == std::string::npos) return {text, {}};
  return {text.substr(0, at), text.substr(at + 1)};
}

}  // namespace fuzz
