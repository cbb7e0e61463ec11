// The power goes while the host's databases are compacted at the sign-in: each is the old one or the compacted one.
#include <iostream>
#include <set>

#include "fakes/PowerCut.h"
#include "unit/Session.h"

namespace {

constexpr const char* kHostFolder = "C:\\Tarsus\\";
constexpr const char* kDatabases[] = {"Config\\Station.mdb", "Param\\Protocol.mdb"};

std::string Compacted(const std::string& database) {
  return database.substr(0, database.find(fakes::FakeCompactor::kSlack));
}

constexpr std::pair<fakes::Loss, const char*> kLosses[] = {{fakes::Loss::None, "in order"},
                                                           {fakes::Loss::Unflushed, "unflushed lost"},
                                                           {fakes::Loss::AllButOne, "one change alone"}};

/// What of the host's databases can be there after a power cut at any moment of a session without a job: each once.
std::map<fakes::Loss, std::set<MediumFiles>> Moments() {
  std::map<fakes::Loss, std::set<MediumFiles>> moments;
  Session session;
  fakes::PowerCut cut(session.disk, kHostFolder);
  session.disk.afterChange = [&] {
    for (const fakes::Remains& remains : cut.Now()) {
      MediumFiles databases;
      for (const char* path : kDatabases)
        if (const auto found = remains.files.find(path); found != remains.files.end()) databases.insert(*found);
      moments[remains.loss].insert(databases);
    }
  };
  session.SignIn();
  session.EndAfter({});
  for (const char* path : kDatabases) EXPECT_EQ(cut.Flushed().at(path), Compacted(cut.Flushed().at(path)));
  return moments;
}

TEST(CrashAtSignIn, LeavesEachDatabaseWhole) {
  MediumFiles before;
  {
    Session session;
    for (const char* path : kDatabases) before[path] = session.disk.Read(std::string(kHostFolder) + path);
  }
  int broken = 0;
  const auto moments = Moments();
  for (const auto& [loss, states] : moments) {
    for (const MediumFiles& state : states) {
      for (const auto& [path, old] : before) {
        const auto found = state.find(path);
        broken += found == state.end() || (found->second != old && found->second != Compacted(old)) ? 1 : 0;
      }
    }
  }
  for (const auto& [loss, name] : kLosses)
    std::cout << "databases, " << name << ": " << (moments.contains(loss) ? moments.at(loss).size() : 0) << " states\n";
  EXPECT_EQ(broken, 0) << "databases that are neither";
  EXPECT_GT(moments.at(fakes::Loss::None).size(), 2u);
}

}  // namespace
