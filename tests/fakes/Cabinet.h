// The imaginary cabinets that the imaginary cabarc makes. The format is the
// fakes' own behind a real cabinet's header; a cabinet that was cut, padded or joined wrongly is not read.
#pragma once

#include <map>
#include <optional>
#include <string>

namespace fakes {

/// Stored path, with "\", and contents.
using CabinetContents = std::map<std::string, std::string>;

std::string MakeCabinet(const CabinetContents& contents);
/// Nothing when `bytes` is not a whole cabinet.
std::optional<CabinetContents> ReadCabinet(const std::string& bytes);

}  // namespace fakes
