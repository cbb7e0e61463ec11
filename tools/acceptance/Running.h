// Programs that the kit starts: none outlives it, and none keeps it waiting for ever.
#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "acceptance/Report.h"

namespace acceptance {

struct Ran {
  std::optional<std::uint32_t> code;  ///< nothing when it did not start, or was ended because it took too long
  std::string output;                 ///< both streams, in UTF-8
};

/// Runs a command without a window and without input, in a folder; ends it with all that it has started when it takes
/// longer than `patience`. `log` gets its output.
Ran Run(const std::wstring& command, const std::filesystem::path& folder, const std::filesystem::path& log,
        std::chrono::milliseconds patience);

/// One test case, as a test program tells of it.
struct Case {
  std::string name;
  enum Result { Passed, Failed, Skipped, Broken } result = Broken;  ///< Broken: it began and never ended
  std::string words;                                                ///< what it printed
};

/// The cases in what a GoogleTest program prints.
std::vector<Case> CasesIn(const std::string& output);

}  // namespace acceptance
