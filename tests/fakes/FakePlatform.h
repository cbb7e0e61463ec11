// The small platform services: clock, message loop, database compactor, catalogue.
#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

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
  std::string ShortDate(const host::LocalTime& time) override;  ///< yyyy/mm/dd
  std::string LongTime(const host::LocalTime& time) override;   ///< hh:mm:ss
};

class FakeMessageLoop : public host::MessageLoop {
 public:
  int yields = 0;
  /// What happens on the screen meanwhile, such as a device that comes or goes.
  std::function<void()> onYield;
  void Yield() override;
};

/// Compacting drops every kSlack from a database.
class FakeCompactor : public host::DatabaseCompactor {
 public:
  static constexpr const char* kSlack = "[slack]";

  FakeCompactor(Disk& disk, CallCounter& calls) : disk_(disk), calls_(calls) {}
  std::vector<std::string> locales;
  std::int32_t Compact(const std::string& source, const std::string& target, const std::string& locale) override;

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

  std::int32_t Open(const std::string& connection, const std::string& tableName) override;
  std::int32_t SetFilter(const std::string& criterion) override;
  bool AtEnd() override;
  std::optional<std::string> StringField() override;
  void Close() override { state = State::Closed; }
  void Abandon() override { state = State::Abandoned; }

 private:
  CallCounter& calls_;
  std::optional<int> wanted_;
};

}  // namespace fakes
