// How far a job is: the promises of the bar and of the numbers beside it, by a clock of the test's own.
#include "app/Progress.h"

#include <cmath>

#include "backupset/Archiver.h"
#include "unit/Station.h"
#include "work/Sights.h"

namespace {

using app::Work;
using std::chrono::milliseconds;
using std::chrono::seconds;

constexpr std::uint64_t kMegabyte = 1 << 20;

class Dialog : public forms::Form {
 public:
  explicit Dialog(forms::Toolkit& toolkit, const char* name = "frmTest")
      : Form(toolkit, name, app::MessageId::BackupTitle) {
    Load();
  }
  ~Dialog() override { Unload(); }
  forms::ProgressBar bar{*this, "bar", app::MessageId::BackupTitle};
  forms::Label numbers{*this, "numbers", forms::kNoCaption};
};

class Progress : public AppTest {
 public:
  /// Works on a part at an even pace until it has told all of it; calls `each` second.
  void Work(app::Work work, const std::string& name, std::uint64_t perSecond, std::uint64_t bytes,
            const std::function<void(std::uint64_t left)>& each = {}) {
    const app::Progress::Part part(progress, work, name);
    for (std::uint64_t done = 0; done < bytes;) {
      host.clock.running += seconds(1);
      const std::uint64_t step = std::min(perSecond, bytes - done);
      progress.Advance(step);
      done += step;
      if (each) each(bytes - done);
    }
  }
  /// The minutes that are shown; nothing where none are.
  std::optional<double> Minutes() const {
    const std::string& text = dialog.numbers.Caption();
    const std::size_t end = text.rfind(" min");
    if (end == std::string::npos) return std::nullopt;
    return std::stod(text.substr(text.rfind(' ', end - 1)));
  }

  Dialog dialog{host.toolkit};
  fakes::BarWatch& watch = host.toolkit.bars["frmTest"];
  app::Progress& progress = application.progress;
};

TEST_F(Progress, IsShownWhileAJobRunsAndEndsWithIt) {
  progress.Advance(1);  // nobody has planned it
  {
    const app::Progress::Job job(progress, dialog.bar, dialog.numbers);
    EXPECT_FALSE(dialog.bar.Visible()) << "nothing is planned yet";
    progress.Complete();
    EXPECT_FALSE(dialog.bar.Visible()) << "and nothing was done";
    progress.Plan(Work::Copying, "a", 10 * kMegabyte);
    progress.Plan(Work::Copying, "b", 30 * kMegabyte);
    EXPECT_EQ(dialog.numbers.Caption(), "0 % - 0 / 40 MB");
    Work(Work::Copying, "a", kMegabyte, 10 * kMegabyte);
    int half = 0;
    Work(Work::Copying, "b", kMegabyte, 10 * kMegabyte, [&](auto) { half = dialog.bar.Value(); });
    EXPECT_EQ(half, 500);
    Work(Work::Copying, "nobody's", kMegabyte, 10 * kMegabyte);
    EXPECT_LT(dialog.bar.Value(), forms::ProgressBar::kEnd) << "only a job that is over is at its end";
    progress.Complete();
    EXPECT_EQ(dialog.numbers.Caption(), "100 % - 40 / 40 MB");
    EXPECT_GE(watch.values.size(), 20u);
    EXPECT_EQ(watch.values.back(), forms::ProgressBar::kEnd);
  }
  EXPECT_FALSE(dialog.bar.Visible());
  EXPECT_EQ(dialog.numbers.Caption(), "");
}

// A part may bring more than was planned, less, or turn out larger while it is at work; the watch holds the bar.
TEST_F(Progress, NeverGoesBackWhateverThePartsTurnOutToBe) {
  const app::Progress::Job job(progress, dialog.bar, dialog.numbers);
  progress.Plan(Work::Gathering, "a", 10 * kMegabyte);
  progress.Plan(Work::Packing, "a", 10 * kMegabyte);
  Work(Work::Gathering, "a", kMegabyte, 40 * kMegabyte);
  const int gathered = dialog.bar.Value();
  EXPECT_LE(gathered, 250) << "the packing is still to come";
  progress.Plan(Work::Packing, "a", 40 * kMegabyte, 80 * kMegabyte);
  Work(Work::Packing, "a", kMegabyte, 20 * kMegabyte);
  EXPECT_GT(dialog.bar.Value(), gathered);
  std::set<int> last;
  Work(Work::Packing, "a", kMegabyte, 90 * kMegabyte, [&](auto) { last.insert(dialog.bar.Value()); });
  EXPECT_LT(*last.rbegin(), forms::ProgressBar::kEnd);
}

TEST_F(Progress, StaysWhereItWasWhenSomethingFails) {
  {
    const app::Progress::Job job(progress, dialog.bar, dialog.numbers);
    progress.Plan(Work::Copying, "a", 10 * kMegabyte);
    Work(Work::Copying, "a", kMegabyte, 3 * kMegabyte);
    progress.Fail();
    EXPECT_TRUE(dialog.bar.HasFailed() && dialog.bar.Visible());
    EXPECT_EQ(dialog.bar.Value(), 300);
  }
  EXPECT_FALSE(dialog.bar.HasFailed()) << "the next job";
}

// The restore dialog runs its job while the selection dialog's, which opened it, waits.
TEST_F(Progress, OfAJobWithinAnotherTheInnerIsShown) {
  Dialog inner(host.toolkit, "frmInner");
  const app::Progress::Job job(progress, dialog.bar, dialog.numbers);
  {
    const app::Progress::Job within(progress, inner.bar, inner.numbers);
    progress.Plan(Work::Copying, "a", kMegabyte);
    EXPECT_TRUE(inner.bar.Visible() && !dialog.bar.Visible());
  }
  progress.Plan(Work::Copying, "a", kMegabyte);
  EXPECT_TRUE(!inner.bar.Visible() && dialog.bar.Visible());
}

// Also where a kind of work has not been seen yet and is slower than it is reckoned, and where a medium becomes slow:
// what is shown is true within a third, or nothing is shown.
TEST_F(Progress, SaysWhatIsLeftOnceThatIsKnownWithinAThird) {
  const app::Progress::Job job(progress, dialog.bar, dialog.numbers);
  constexpr std::uint64_t kAll = 1200 * kMegabyte;
  progress.Plan(Work::Copying, "a", kAll);
  progress.Plan(Work::Comparing, "a", kAll);
  int shown = 0;
  const auto expectTrue = [&](double secondsLeft) {
    const auto minutes = Minutes();
    if (!minutes) return;
    ++shown;
    EXPECT_LE(std::abs(*minutes - secondsLeft / 60), std::max(1.0, secondsLeft / 60 / 3)) << secondsLeft;
  };
  Work(Work::Copying, "a", 2 * kMegabyte, kAll,
       [&](auto left) { EXPECT_TRUE(left < kAll / 3 || !Minutes()) << "nobody knows how long the other half takes"; });
  Work(Work::Comparing, "a", kMegabyte, kAll, [&](auto left) { expectTrue(static_cast<double>(left / kMegabyte)); });
  EXPECT_GT(shown, 1000);
}

TEST_F(Progress, SaysNothingOfTheTimeWhileThatIsUncertain) {
  const app::Progress::Job job(progress, dialog.bar, dialog.numbers);
  progress.Plan(Work::Copying, "a", 4000 * kMegabyte);
  const app::Progress::Part part(progress, Work::Copying, "a");
  const auto copy = [&](int many, std::uint64_t perSecond) {
    for (int i = 0; i < many; ++i) host.clock.running += seconds(1), progress.Advance(perSecond);
  };
  copy(9, kMegabyte);
  EXPECT_FALSE(Minutes()) << "too early";
  copy(51, kMegabyte);
  EXPECT_EQ(Minutes(), 66);
  copy(10, 20 * kMegabyte);
  EXPECT_FALSE(Minutes()) << "it was expected to take some times as long a moment ago";
  copy(120, 20 * kMegabyte);
  EXPECT_EQ(Minutes(), 2);
  progress.Doubt();
  copy(1, 20 * kMegabyte);
  EXPECT_FALSE(Minutes());
}

TEST_F(Progress, NumbersNeedNoWords) {
  EXPECT_EQ(app::ProgressNumbers(427, 2.9 * 1024 * kMegabyte, 123.0), "42 % - 1.2 / 2.9 GB - 3 min");
  EXPECT_EQ(app::ProgressNumbers(999, 1023.4 * kMegabyte, {}), "99 % - 1022 / 1023 MB");
  EXPECT_EQ(app::ProgressNumbers(1000, 700, 0.0), "100 % - 1 / 1 KB - 1 min");
}

// A large file that grows for an hour: the bar moves at least each minute, and looking takes next to nothing.
TEST_F(Progress, MovesEachMinuteOfALongProgramThatGrowsItsTarget) {
  const app::Progress::Job job(progress, dialog.bar, dialog.numbers);
  struct Case {
    milliseconds perLook;  ///< that a look takes
    double most;           ///< share of the time
  };
  for (const Case& each : {Case{milliseconds(0), 0.01}, {milliseconds(40), 0.011}, {milliseconds(900), 0.021}}) {
    SCOPED_TRACE(each.perLook.count());
    const std::string name = std::to_string(each.perLook.count());
    progress.Plan(Work::Copying, name, 3600 * kMegabyte);
    const app::Progress::Part part(progress, Work::Copying, name);
    const auto begun = host.clock.running;
    milliseconds looking{0};
    const work::Sight sight = [&] {
      host.clock.running += each.perLook;
      looking += each.perLook;
      return static_cast<std::uint64_t>((host.clock.running - begun).count()) * kMegabyte / 1000;
    };
    work::Observation observation(host.clock, progress, sight);
    auto movedAt = begun;
    std::uint64_t reached = 0;
    while (host.clock.running - begun < std::chrono::hours(1)) {
      host.clock.running += observation.Look();
      if (std::exchange(reached, progress.Reached()) != progress.Reached()) movedAt = host.clock.running;
      EXPECT_LE(host.clock.running - movedAt, std::chrono::minutes(1) + each.perLook);
    }
    EXPECT_LE(looking, (host.clock.running - begun) * each.most);
  }
}

// Of thousands of folders few are listed again; what is written anew from its beginning counts, too.
TEST_F(JobTest, SeesATreeGrowWithoutListingAllOfIt) {
  const work::Sight sight = work::SizeOfTree(host.files, host.messageLoop, "C:\\Tree");
  std::uint64_t bytes = 0;
  std::size_t listed = 0;
  for (int folder = 0; folder < 50; ++folder) {
    for (int file = 0; file < 3; ++file) {
      host.disk.Write("C:\\Tree\\" + std::to_string(folder) + "\\deep\\" + std::to_string(file), "four");
      const int before = host.messageLoop.yields;
      EXPECT_EQ(sight(), bytes += 4);
      listed = std::max(listed, static_cast<std::size_t>(host.messageLoop.yields - before));
    }
  }
  EXPECT_LE(listed, 6u) << "folders at once";
}

// It is asked by a file that is no part of what is packed, and is gone afterwards.
TEST_F(JobTest, PackingIsSeenByTheArchiversWordOrElseByTheArchivesSize) {
  Dialog dialog(host.toolkit);
  const app::Progress::Job shown(application.progress, dialog.bar, dialog.numbers);
  const std::string archive = kStaging + std::string("X.cab");
  const auto seenOf = [&](const std::function<void(std::uint64_t)>& work) {
    host.disk.Write(kStaging + std::string("file"), std::string(20'000, 'x'));
    std::uint64_t seen = 0;
    Program(kArchiver, [&](auto&, const auto& words) {
      EXPECT_EQ(words.back(), "file");
      for (const std::uint64_t bytes : {0u, 1000u, 4000u, 8000u}) work(bytes), host.processes.meanwhile();
      seen = application.progress.Reached();
      return 0u;
    })(host);
    backupset::Archive made;
    static_cast<void>(
        backupset::Archiver(tools, packed.workFolder).PackCategory("X", backupset::Incomplete::Fails, made));
    EXPECT_FALSE(host.disk.IsFile(archive + ".progress"));
    return seen;
  };
  EXPECT_EQ(seenOf([&](auto bytes) { host.disk.Write(archive + ".progress", std::to_string(bytes) + "   "); }), 7000u)
      << "from the second look on, which found what was there";
  EXPECT_EQ(seenOf([&](auto bytes) { host.disk.Write(archive, std::string(bytes, 'x')); }), 10'000u)
      << "as images can be packed, while nothing better is known";
}

}  // namespace
