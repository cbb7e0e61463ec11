// Text as Windows treats it: names without regard to case, the code page 1252,
// wildcards and command lines.
#pragma once

#include <string>
#include <vector>

namespace fakes {

/// A name in the form in which Windows compares and sorts it: code points in upper case.
std::u32string Fold(const std::string& utf8);
bool SameFold(const std::string& left, const std::string& right);

/// Code page 1252 and back. What the code page lacks becomes "?".
std::string ToCodePage(const std::string& utf8);
std::string FromCodePage(const std::string& bytes);

/// "*" and "?" without regard to case; "*.*" fits every name.
bool FitsWildcard(const std::string& name, const std::string& pattern);

/// The words of a command line; double quotes hold a word together and are dropped.
std::vector<std::string> SplitCommandLine(const std::string& commandLine);

}  // namespace fakes
