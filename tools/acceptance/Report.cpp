#include "acceptance/Report.h"

#include <fstream>
#include <iostream>
#include <map>

namespace acceptance {
namespace {

const char* WordOf(Verdict verdict) {
  static const std::map<Verdict, const char*> kWords = {{Verdict::Right, "right"},
                                                        {Verdict::Wrong, "wrong"},
                                                        {Verdict::NotAnswered, "not answered"},
                                                        {Verdict::Fact, "fact"}};
  return kWords.at(verdict);
}

std::string Escaped(const std::string& text) {
  static const std::map<char, const char*> kEntities = {{'&', "&amp;"}, {'<', "&lt;"}, {'>', "&gt;"}, {'"', "&quot;"}};
  std::string escaped;
  for (const char c : text) {
    const auto entity = kEntities.find(c);
    entity == kEntities.end() ? escaped += c : escaped += entity->second;
  }
  return escaped;
}

constexpr char kHead[] = R"(<!doctype html>
<html lang="en"><meta charset="utf-8"><title>QXBackupUtility: acceptance</title>
<style>
body { font: 15px/1.4 "Segoe UI", sans-serif; margin: 2em auto; max-width: 75em; padding: 0 1em; color: #222 }
table { border-collapse: collapse; width: 100% }
td { border-top: 1px solid #ddd; padding: .3em .6em; vertical-align: top }
td:nth-child(2) { white-space: nowrap; font-weight: 600 }
pre { margin: 0; white-space: pre-wrap; font: 13px/1.35 Consolas, monospace }
.right { color: #1a7f37 } .wrong { color: #b3261e } .not-answered { color: #8a6100 } .fact { color: #555 }
</style>
)";

std::string ClassOf(Verdict verdict) {
  return verdict == Verdict::NotAnswered ? "not-answered" : WordOf(verdict);
}

void WriteRow(std::ostream& page, const Finding& finding) {
  page << "<tr><td>" << Escaped(finding.what) << "<td class=\"" << ClassOf(finding.verdict) << "\">"
       << WordOf(finding.verdict) << "<td><pre>" << Escaped(finding.words) << "</pre>\n";
}

}  // namespace

void Report::Begin(const std::string& heading) {
  std::cout << "== " << heading << std::endl;
  sections_.push_back({heading, {}});
}

void Report::Add(Finding finding) {
  if (finding.verdict == Verdict::Wrong) std::cout << "!! " << finding.what << ": " << finding.words << std::endl;
  sections_.back().findings.push_back(std::move(finding));
}

std::size_t Report::Count(Verdict verdict) const {
  std::size_t count = 0;
  for (const Section& section : sections_) {
    for (const Finding& finding : section.findings) count += finding.verdict == verdict ? 1 : 0;
  }
  return count;
}

bool Report::Write(const std::filesystem::path& file) const {
  std::ofstream page(file, std::ios::binary);
  page << kHead << "<h1>QXBackupUtility on this Windows</h1>\n<p>";
  for (const Verdict verdict : {Verdict::Wrong, Verdict::NotAnswered, Verdict::Right, Verdict::Fact}) {
    page << "<span class=\"" << ClassOf(verdict) << "\">" << Count(verdict) << " " << WordOf(verdict) << "</span> ";
  }
  page << "\n<h2>What is wrong</h2>\n<table>\n";
  for (const Section& section : sections_) {
    for (const Finding& finding : section.findings) {
      if (finding.verdict == Verdict::Wrong) WriteRow(page, finding);
    }
  }
  page << "</table>\n";
  for (const Section& section : sections_) {
    page << "<h2>" << Escaped(section.heading) << "</h2>\n<table>\n";
    for (const Finding& finding : section.findings) WriteRow(page, finding);
    page << "</table>\n";
  }
  page.close();
  return page.good();
}

}  // namespace acceptance
