// How far a job is, from the bytes that it has dealt with to the bar in the dialog that has started it.
//
// A job plans its parts as soon as it knows them. What works on a part says so (Progress::Part) and tells the bytes
// that it has dealt with; nobody else need know of bars. The bar moves with work that was done, never with time alone,
// and never goes back: where a part turns out larger than it was planned, it only moves more slowly.
#pragma once

#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <map>
#include <optional>
#include <string>
#include <utility>

#include "forms/Controls.h"
#include "host/Desktop.h"

namespace app {

/// What is done to data. Each kind has a pace of its own, which is learned while a job runs.
enum class Work { Exporting, Gathering, Packing, Checking, Copying, Comparing, Floppy, Unpacking, PuttingBack };
inline constexpr std::size_t kWorks = 9;

class Progress {
 public:
  explicit Progress(host::Clock& clock) : clock_(clock) {}
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;

  /// A job for the time of the object's life. The bar and the label beside it appear with the first part that is
  /// planned, and go with the object. Of a job within another one the inner is shown; the outer takes no part in it.
  class Job {
   public:
    Job(Progress& progress, forms::ProgressBar& bar, forms::Label& numbers);
    ~Job();
    Job(const Job&) = delete;
    Job& operator=(const Job&) = delete;

   private:
    Progress& progress_;
  };

  /// Work on a planned part for the time of the object's life; then it counts as done. One that was not planned moves
  /// nothing. Parts may nest: what is told goes to the inner one.
  class Part {
   public:
    Part(Progress& progress, Work work, const std::string& name);
    ~Part();
    Part(const Part&) = delete;
    Part& operator=(const Part&) = delete;

   private:
    friend class Progress;
    Progress& progress_;
    Part* outer_;
    Work work_;
    std::string name_;
    std::uint64_t told_ = 0;  ///< bytes
  };

  /// Whether a job is there that can be shown: what costs time only to be shown can be left out otherwise.
  bool IsShown() const { return job_.bar != nullptr; }

  /// A part of the job, or what is known of it by now: `bytes` of the job's data pass through it. `told`: what will be
  /// told while it is at work, where that is something else; 0 otherwise.
  void Plan(Work work, const std::string& name, std::uint64_t bytes, std::uint64_t told = 0);

  /// The part at work has dealt with so many bytes more.
  void Advance(std::uint64_t bytes);
  /// It has dealt with at least so many bytes since it began.
  void Reach(std::uint64_t bytes);
  /// It is through with so many of its pieces, which are taken for equal.
  void ReachPiece(std::uint64_t piece, std::uint64_t pieces);
  /// What it has dealt with.
  std::uint64_t Reached() const { return part_ == nullptr ? 0 : part_->told_; }

  /// What is told now may be far from the truth: of the time that is left nothing is said for a while.
  void Doubt() { job_.expectations.clear(); }

  /// The job's data were dealt with: the bar is at its end.
  void Complete();
  /// Something has gone wrong, and the job ends: the bar stays where it is, and says so.
  void Fail();

  /// Bytes of the archives that this job has packed, for each byte that was gathered; nothing before the first one.
  std::optional<double> PackedShare() const;
  void NotePacked(std::uint64_t gathered, std::uint64_t archived);

 private:
  using Moment = std::chrono::milliseconds;

  struct Planned {
    double bytes = 0;
    double told = 0;
    double done = 0;  ///< from 0 to 1
  };
  /// How long a kind of work has taken of late.
  struct Pace {
    double seconds = 0;
    double bytes = 0;
  };
  /// When the job was expected to end, at some moment.
  struct Expectation {
    double at = 0;   ///< seconds
    double end = 0;  ///< seconds
  };
  /// What is known of one job.
  struct Shown {
    forms::ProgressBar* bar = nullptr;
    forms::Label* numbers = nullptr;
    std::map<std::pair<Work, std::string>, Planned> plan;
    std::array<Pace, kWorks> paces;
    std::deque<Expectation> expectations;
    double gathered = 0;
    double archived = 0;
    int value = 0;
    Moment shownAt{};
  };

  void Begin(Part& part);
  void End(const Part& part);
  /// Takes what the part at work has told into account, or that so much of it is done, with the time that has passed
  /// since the last time.
  void Account();
  void Account(double done);
  void Show();
  void Show(int value);
  void Hide();
  double Size() const;
  double Fraction() const;
  std::optional<double> SecondsLeft() const;
  std::optional<double> ReliableSecondsLeft();

  host::Clock& clock_;
  Shown job_;
  std::deque<std::pair<Shown, Part*>> outer_;  ///< jobs that wait for this one, with their parts at work
  Part* part_ = nullptr;
  Moment accountedAt_{};
};

/// What stands beside the bar, such as "42 % - 1.2 / 2.9 GB - 3 min": `value` of 1000, that share of `bytes`, and the
/// minutes, rounded up, where `secondsLeft` is known. Needs no words.
std::string ProgressNumbers(int value, double bytes, std::optional<double> secondsLeft);

}  // namespace app
