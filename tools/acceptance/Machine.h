// The Windows that the kit runs on: whether it may, what it is like, and whether all is as before afterwards.
#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "acceptance/Report.h"

namespace acceptance {

/// Whether this is no Windows at all but Wine, where the kit is only tried out. The one place that asks.
bool IsWine();

/// Why the kit must not run here; empty when it may. It may not beside a real host system, beside the product, without
/// administrator's rights, or where its drives are taken.
std::string WhyRefused();

/// Version, bitness, code pages, locale, screen, rights, data access, scanner.
void AddFacts(Report& report);

/// Names with what they stand for: keys and values of the registry, files with size and time, as far as programs that
/// are installed leave something there.
using Snapshot = std::map<std::string, std::string>;
Snapshot TakeSnapshot();

/// What differs, a finding each. Whoever else works on the machine meanwhile is seen, too.
void Compare(const Snapshot& before, const Snapshot& after, Report& report);

/// Marks this machine as one for tests, which the test programs demand (operator/TestMachine.h), and these folders.
void MarkForTests(const std::vector<std::filesystem::path>& folders);

}  // namespace acceptance
