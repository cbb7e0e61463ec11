// The small platform services: clock, message loop, database compactor, catalogue.
#pragma once

#include <array>
#include <cstdio>
#include <optional>

#include "fakes/CallCounter.h"
#include "fakes/Disk.h"
#include "host/CatalogueTable.h"
#include "host/Clock.h"
#include "host/DatabaseCompactor.h"
#include "host/MessageLoop.h"

namespace fakes {

class FakeClock : public host::Clock {
 public:
  host::LocalTime now{2012, 3, 15, 9, 30, 12};

  host::LocalTime Now() override { return now; }
  std::string ShortDate(const host::LocalTime& t) override { return Joined("%04d/%02d/%02d", t.year, t.month, t.day); }
  std::string LongTime(const host::LocalTime& t) override {
    return Joined("%02d:%02d:%02d", t.hour, t.minute, t.second);
  }

 private:
  static std::string Joined(const char* format, int first, int second, int third) {
    std::array<char, 40> text{};
    std::snprintf(text.data(), text.size(), format, first, second, third);
    return text.data();
  }
};

class FakeMessageLoop : public host::MessageLoop {
 public:
  int yields = 0;
  /// What happens on the screen meanwhile, such as a device that comes or goes.
  std::function<void()> onYield;

  void Yield() override {
    ++yields;
    if (onYield) onYield();
  }
};

/// Compacting drops the kSlack at the end of a database.
class FakeCompactor : public host::DatabaseCompactor {
 public:
  static constexpr const char* kSlack = "[slack]";

  FakeCompactor(Disk& disk, CallCounter& calls) : disk_(disk), calls_(calls) {}
  std::vector<std::string> locales;

  std::int32_t Compact(const std::string& source, const std::string& target, const std::string& locale) override {
    locales.push_back(locale);
    const bool fails = calls_.Fails("DatabaseCompactor", __func__, source);
    const auto database = disk_.Find(source);
    if (fails || !disk_.IsFile(source) || InUse(*database) || disk_.Find(target)) return -1;
    return disk_.Write(target, database->bytes.substr(0, database->bytes.find(kSlack))) ? 0 : -1;
  }

 private:
  Disk& disk_;
  CallCounter& calls_;
};

class FakeCatalogue : public host::CatalogueTable {
 public:
  enum class State { Never, Open, Closed, Abandoned };

  explicit FakeCatalogue(CallCounter& calls) : calls_(calls) {}
  /// Number and text; a row without text holds a null.
  std::map<int, std::optional<std::string>> rows;
  std::string tableName = "T_MESSAGE";  ///< the only table there is
  std::string connection;               ///< as the program gave it
  State state = State::Never;

  std::int32_t Open(const std::string& newConnection, const std::string& newTableName) override {
    connection = newConnection;
    if (calls_.Fails("CatalogueTable", __func__, newTableName) || newTableName != tableName) return -1;
    state = State::Open;
    return 0;
  }
  std::int32_t SetFilter(const std::string& criterion) override {
    if (Fails(__func__, criterion)) return -1;
    wanted_.reset();
    int id = 0;
    if (std::sscanf(criterion.c_str(), "ID = %d", &id) == 1) wanted_ = id;
    return criterion.empty() || criterion == "ID = " + std::to_string(id) ? 0 : -1;
  }
  bool AtEnd() override { return Fails(__func__) || (wanted_ ? !rows.contains(*wanted_) : rows.empty()); }
  std::optional<std::string> StringField() override {
    if (Fails(__func__) || rows.empty()) return std::nullopt;
    return wanted_ ? rows.at(*wanted_) : rows.begin()->second;
  }
  void Close() override { state = State::Closed; }
  void Abandon() override { state = State::Abandoned; }

 private:
  bool Fails(const char* method, const std::string& detail = {}) {
    return calls_.Fails("CatalogueTable", method, detail) || state != State::Open;
  }

  CallCounter& calls_;
  std::optional<int> wanted_;
};

}  // namespace fakes
