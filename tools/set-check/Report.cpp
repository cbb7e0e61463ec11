// What a check has found out about a set, in words.
#include "set-check/Report.h"

#include <algorithm>

#include "cabinet/Names.h"

namespace setcheck {
namespace {

/// So many files that are lost are named; --json has all.
constexpr std::size_t kNamed = 100;

constexpr std::size_t kNameWidth = 17;
constexpr std::size_t kStateWidth = 10;

std::string Padded(std::string text, std::size_t width) {
  text.resize(std::max(width, text.size() + 1), ' ');
  return text;
}

/// "1,234,567".
std::string Grouped(std::uint64_t number) {
  std::string digits = std::to_string(number);
  for (std::size_t at = digits.size(); at > 3;) digits.insert(at -= 3, 1, ',');
  return digits;
}

const char* Word(State state) {
  switch (state) {
    case State::Whole:
      return "whole";
    case State::Damaged:
      return "damaged";
    case State::Missing:
      return "missing";
    case State::Foreign:
      return "foreign";
    case State::OtherVersion:
      return "other";
    case State::NotRestored:
      return "unusable";
    case State::NotOffered:
      return "hidden";
  }
  return "";
}

std::string Answer(const SetReport& report) {
  const bool bundle = report.kind == Kind::Bundle;
  const std::string kinds =
      std::to_string(report.Whole()) + " of " + std::to_string(report.Promised()) + " kinds of data";
  switch (report.Verdict()) {
    case Restorable::Wholly:
      return bundle ? "YES: the maintenance log is whole (it is not made to be restored)"
                    : "YES: all of it can be restored, " + kinds;
    case Restorable::InPart:
      return bundle ? "IN PART: the maintenance log is damaged" : "IN PART: " + kinds + " can be restored";
    case Restorable::NotAtAll:
      if (bundle) return "NO: nothing in the maintenance log is whole";
      break;
  }
  return "NO: it cannot be restored" + (report.refusal.empty() ? "" : ", " + report.refusal);
}

std::string Indented(const std::string& text) {
  return std::string(2 + kNameWidth + kStateWidth, ' ') + cabinet::Printable(text) + "\n";
}

void TellLosses(const ArchiveState& found, std::string& words) {
  for (std::size_t i = 1; i < found.damage.size(); ++i) words += Indented(found.damage[i]);
  if (found.lost.empty() && found.whole == 0) return;
  words += Indented(Grouped(found.whole) + " of " + Grouped(found.whole + found.lost.size()) + " files are whole" +
                    (found.lost.empty() ? "" : ", but not:"));
  for (std::size_t i = 0; i < std::min(found.lost.size(), kNamed); ++i) words += Indented(cabarc::Told(found.lost[i]));
  if (found.lost.size() > kNamed)
    words += Indented("and " + Grouped(found.lost.size() - kNamed) + " more; --json names all");
}

void Tell(const ArchiveReport& archive, std::string& words) {
  const std::string name = archive.category ? CategoryName(*archive.category) : archive.name;
  const std::string sizes = Grouped(archive.found.files) + " files, " + Grouped(archive.found.bytes) + " bytes";
  words += "  " + Padded(name, kNameWidth) + Padded(Word(archive.state), kStateWidth) +
           cabinet::Printable(archive.why.empty() ? sizes : archive.why) + "\n";
  if (archive.state == State::Damaged) TellLosses(archive.found, words);
  for (const ItemFinding& item : archive.items) {
    if (item.files == 0) words += Indented("nothing in it for " + item.item);
  }
  for (const cabinet::Member& member : archive.members) {
    words += Indented(Grouped(member.size) + " " + member.name);
  }
}

}  // namespace

std::size_t SetReport::Promised() const {
  return static_cast<std::size_t>(std::ranges::count_if(archives, [](const ArchiveReport& archive) {
    return !archive.version.empty() || archive.state == State::NotOffered;
  }));
}

std::size_t SetReport::Whole() const {
  return static_cast<std::size_t>(std::ranges::count_if(archives, [](const ArchiveReport& archive) {
    return !archive.version.empty() && archive.state == State::Whole;
  }));
}

Restorable SetReport::Verdict() const {
  if (!refusal.empty()) return Restorable::NotAtAll;
  if (kind == Kind::Bundle) {
    const ArchiveReport& log = archives.front();
    if (log.state == State::Whole) return Restorable::Wholly;
    return log.found.whole > 0 ? Restorable::InPart : Restorable::NotAtAll;
  }
  const std::size_t whole = Whole();
  if (whole == 0) return Restorable::NotAtAll;
  return whole == Promised() ? Restorable::Wholly : Restorable::InPart;
}

std::string CategoryName(backupset::Category category) {
  return backupset::RowOf(category).versionKey;
}

std::string InWords(const SetReport& report) {
  std::string words = cabinet::Printable(Answer(report) + ": " + report.path) + "\n";
  if (!report.application.empty()) {
    words += cabinet::Printable("  made by " + report.application + " " + report.version + ", " + report.date) + "\n";
  }
  for (const ArchiveReport& archive : report.archives) Tell(archive, words);
  for (const std::string& note : report.notes) words += cabinet::Printable("  note: " + note) + "\n";
  return words;
}

}  // namespace setcheck
