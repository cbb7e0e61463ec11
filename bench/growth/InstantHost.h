// A workstation whose files and catalogue answer at once, so that the program's own work is what takes time.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "fakes/FakeHost.h"

namespace bench {

/// Holds one list of entries, which every folder seems to have; takes every order and forgets it.
class InstantFiles : public fakes::FakeFileSystem {
 public:
  using FakeFileSystem::FakeFileSystem;

  std::vector<host::FolderEntry> entries;

  base::Outcome List(const std::string& /*folder*/, const std::string& /*pattern*/,
                     std::vector<host::FolderEntry>& listed) override {
    listed = entries;
    return base::Result::Done;
  }
  bool FolderExists(const std::string& /*path*/) override { return true; }
  base::Outcome RemoveFile(const std::string& /*path*/) override { return base::Result::Done; }
  base::Outcome RemoveFolder(const std::string& /*path*/) override { return base::Result::Done; }
  base::Outcome CopyTo(const std::string& /*source*/, const std::string& /*target*/) override {
    return base::Result::Done;
  }
};

/// Has a text for every number.
class InstantCatalogue : public fakes::FakeCatalogue {
 public:
  using FakeCatalogue::FakeCatalogue;

  base::Outcome SetFilter(const std::string& /*criterion*/) override { return base::Result::Done; }
  bool AtEnd() override { return false; }
  std::optional<std::string> StringField() override { return "text"; }
};

/// The database of the studies with `rows` images, 64 in a folder.
class InstantComponents : public fakes::FakeComponents {
 public:
  using FakeComponents::FakeComponents;

  int rows = 0;

  std::unique_ptr<host::StudyDatabaseQuery> CreateStudyDatabaseQuery() override {
    return std::make_unique<Query>(rows);
  }

 private:
  class Query : public host::StudyDatabaseQuery {
   public:
    explicit Query(int rows) : rows_(rows) {}
    base::Outcome OpenQuery(const std::string& /*statement*/) override { return base::Result::Done; }
    base::Outcome RecordCount(std::int32_t& count) override {
      count = rows_;
      return base::Result::Done;
    }
    base::Outcome FieldValue(std::int32_t row, std::int32_t /*column*/, std::string& value) override {
      value = "C:\\Image\\" + std::to_string(row / 64) + "\\" + std::to_string(row) + ".ddo";
      return base::Result::Done;
    }

   private:
    int rows_;
  };
};

/// A workstation of these; everything else is the tests' imaginary one.
struct InstantHost {
  fakes::FakeHost rest;
  InstantFiles files{rest.disk, rest.calls};
  InstantCatalogue catalogue{rest.calls};
  InstantComponents components{rest.disk, rest.calls, rest.person};

  host::Host Contracts() {
    const host::Host all = rest.Contracts();
    return {all.qx32, all.qx32lib, all.qxNetDB,   components, catalogue, all.compactor,
            files,    all.drives,  all.processes, all.shell,  all.clock, all.messageLoop};
  }
};

}  // namespace bench
