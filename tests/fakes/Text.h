// Text as Windows treats it: names without regard to case, the code page, wildcards and command lines.
#pragma once

#include <string>
#include <vector>

namespace fakes {

/// A name in the form in which Windows compares and sorts it: code points in upper case, of Latin-1.
std::u32string Fold(const std::string& utf8);
bool SameFold(const std::string& left, const std::string& right);

/// The code page and back: Latin-1, as code page 1252 is for letters. What it lacks becomes "?".
std::string ToCodePage(const std::string& utf8);
std::string FromCodePage(const std::string& bytes);

/// "*" and "?" without regard to case; "*.*" fits every name.
bool FitsWildcard(const std::string& name, const std::string& pattern);

/// The words of a command line; double quotes around a word hold it together and are dropped.
std::vector<std::string> SplitCommandLine(const std::string& commandLine);

}  // namespace fakes
