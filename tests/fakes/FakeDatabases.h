// The message catalogue's table, and the database compactor.
#pragma once

#include <cstdio>
#include <map>
#include <optional>
#include <vector>

#include "fakes/CallCounter.h"
#include "fakes/Disk.h"
#include "host/Databases.h"

namespace fakes {

class FakeCatalogue : public host::CatalogueTable {
 public:
  enum class State { Never, Open, Closed, Abandoned };

  explicit FakeCatalogue(CallCounter& calls) : calls_(calls, "CatalogueTable") {}
  /// A row without text holds a null.
  std::map<base::MessageId, std::optional<std::string>> rows;
  std::string tableName = "T_MESSAGE";  ///< the only table there is
  std::string connection;               ///< as the program gave it
  State state = State::Never;

  base::Outcome Open(const std::string& newConnection, const std::string& newTableName) override {
    connection = newConnection;
    const auto open = [&] {
      if (newTableName == tableName) state = State::Open;
      return newTableName == tableName;
    };
    return calls_.Do(__func__, newTableName, open, "no such table");
  }
  base::Outcome SetFilter(const std::string& criterion) override {
    const auto filter = [&] {
      if (state != State::Open) return false;
      wanted_.reset();
      int id = 0;
      if (std::sscanf(criterion.c_str(), "ID = %d", &id) == 1) wanted_ = base::MessageId{id};
      return criterion.empty() || criterion == "ID = " + std::to_string(id);
    };
    return calls_.Do(__func__, criterion, filter);
  }
  bool AtEnd() override { return Fails(__func__) || (wanted_ ? !rows.contains(*wanted_) : rows.empty()); }
  std::optional<std::string> StringField() override {
    if (Fails(__func__) || rows.empty()) return std::nullopt;
    return wanted_ ? rows.at(*wanted_) : rows.begin()->second;
  }
  void Close() override { state = State::Closed; }
  void Abandon() override { state = State::Abandoned; }

 private:
  bool Fails(const char* method) { return calls_.Fails(method) || state != State::Open; }

  ContractCalls calls_;
  std::optional<base::MessageId> wanted_;
};

/// Compacting drops the kSlack at the end of a database.
class FakeCompactor : public host::DatabaseCompactor {
 public:
  static constexpr const char* kSlack = "[slack]";

  FakeCompactor(Disk& disk, CallCounter& calls) : disk_(disk), calls_(calls, "DatabaseCompactor") {}
  std::vector<std::string> locales;

  base::Outcome Compact(const std::string& source, const std::string& target, const std::string& locale) override {
    locales.push_back(locale);
    const auto compact = [&] {
      const auto database = disk_.Find(source);
      if (!disk_.IsFile(source) || InUse(*database) || disk_.Find(target)) return false;
      return disk_.Write(target, database->bytes.substr(0, database->bytes.find(kSlack)));
    };
    return calls_.Do(__func__, source, compact);
  }

 private:
  Disk& disk_;
  ContractCalls calls_;
};

}  // namespace fakes
