#include "fakes/FakePlatform.h"

#include <array>
#include <charconv>
#include <cstdio>

namespace fakes {
namespace {

std::string Joined(const char* format, int first, int second, int third) {
  std::array<char, 40> text{};
  std::snprintf(text.data(), text.size(), format, first, second, third);
  return text.data();
}

}  // namespace

std::string FakeClock::ShortDate(const host::LocalTime& time) {
  return Joined("%04d/%02d/%02d", time.year, time.month, time.day);
}

std::string FakeClock::LongTime(const host::LocalTime& time) {
  return Joined("%02d:%02d:%02d", time.hour, time.minute, time.second);
}

void FakeMessageLoop::Yield() {
  ++yields;
  if (onYield) onYield();
}

std::int32_t FakeCompactor::Compact(const std::string& source, const std::string& target, const std::string& locale) {
  locales.push_back(locale);
  const auto database = disk_.Find(source);
  if (calls_.Fails("DatabaseCompactor", "Compact", source)) return -1;
  if (!database || database->isFolder || database->readers + database->writers > 0 || disk_.Find(target)) return -1;
  std::string bytes = database->bytes;
  const std::string slack = kSlack;
  for (std::size_t at = bytes.find(slack); at != std::string::npos; at = bytes.find(slack))
    bytes.erase(at, slack.size());
  return disk_.Write(target, bytes) ? 0 : -1;
}

std::int32_t FakeCatalogue::Open(const std::string& newConnection, const std::string& newTableName) {
  connection = newConnection;
  if (calls_.Fails("CatalogueTable", "Open", newTableName) || newTableName != tableName) return -1;
  state = State::Open;
  return 0;
}

std::int32_t FakeCatalogue::SetFilter(const std::string& criterion) {
  if (calls_.Fails("CatalogueTable", "SetFilter", criterion) || state != State::Open) return -1;
  const std::string head = "ID = ";
  int id = 0;
  wanted_.reset();
  if (criterion.empty()) return 0;
  const auto [end, error] = std::from_chars(criterion.data() + head.size(), criterion.data() + criterion.size(), id);
  if (!criterion.starts_with(head) || error != std::errc() || end != criterion.data() + criterion.size()) return -1;
  wanted_ = id;
  return 0;
}

bool FakeCatalogue::AtEnd() {
  return calls_.Fails("CatalogueTable", "AtEnd") || state != State::Open ||
         (wanted_ ? !rows.contains(*wanted_) : rows.empty());
}

std::optional<std::string> FakeCatalogue::StringField() {
  if (calls_.Fails("CatalogueTable", "StringField") || state != State::Open || rows.empty()) return std::nullopt;
  return wanted_ ? rows.at(*wanted_) : rows.begin()->second;
}

}  // namespace fakes
