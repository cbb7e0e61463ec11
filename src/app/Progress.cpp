// How far a job is.
#include "app/Progress.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <tuple>

namespace app {
namespace {

constexpr int kEnd = forms::ProgressBar::kEnd;
constexpr std::chrono::milliseconds kShowEvery{250};  // a picture costs more than what it shows

/// What a byte costs until its pace is known, in the order of Work. Only their relations count: a disk is written some
/// hundred times as slowly as a file is copied.
constexpr std::array<double, kWorks> kCosts = {1, 2, 6, 1, 3, 2, 500, 4, 2};

double CostOf(Work work) {
  return kCosts.at(static_cast<std::size_t>(work));
}

/// The share of a part that is done when `told` of an expected `whole` were: near its end it only comes closer, so that
/// what is larger than expected still moves.
double ShareOf(double told, double whole) {
  constexpr double kBend = 0.95;
  const double straight = whole > 0 ? told / whole : 0;
  if (straight <= kBend) return straight;
  return kBend + (1 - kBend) * (1 - std::exp((kBend - straight) / (1 - kBend)));
}

double Seconds(std::chrono::milliseconds time) {
  return std::chrono::duration<double>(time).count();
}

}  // namespace

Progress::Job::Job(Progress& progress, forms::ProgressBar& bar, forms::Label& numbers) : progress_(progress) {
  progress.outer_.emplace_back(std::exchange(progress.job_, {}), std::exchange(progress.part_, nullptr));
  progress.job_.bar = &bar;
  progress.job_.numbers = &numbers;
}

Progress::Job::~Job() {
  progress_.Hide();
  std::tie(progress_.job_, progress_.part_) = std::move(progress_.outer_.back());
  progress_.outer_.pop_back();
}

Progress::Part::Part(Progress& progress, Work work, const std::string& name)
    : progress_(progress), outer_(progress.part_), work_(work), name_(name) {
  progress_.Begin(*this);
}

Progress::Part::~Part() {
  progress_.End(*this);
}

void Progress::Plan(Work work, const std::string& name, std::uint64_t bytes, std::uint64_t told) {
  if (!IsShown()) return;
  Planned& planned = job_.plan[{work, name}];
  planned.bytes = static_cast<double>(bytes);
  planned.told = static_cast<double>(told != 0 ? told : bytes);
  Show(job_.value);
}

void Progress::Begin(Part& part) {
  if (part_ != nullptr) Account();
  part_ = &part;
  accountedAt_ = clock_.Running();
}

/// Shows nothing: where the part has failed, the bar is to stay where it was.
void Progress::End(const Part& part) {
  Account(1);
  part_ = part.outer_;
}

void Progress::Account() {
  const auto found = job_.plan.find({part_->work_, part_->name_});
  if (found != job_.plan.end()) Account(ShareOf(static_cast<double>(part_->told_), found->second.told));
}

void Progress::Account(double done) {
  const Moment now = clock_.Running();
  const double passed = Seconds(now - std::exchange(accountedAt_, now));
  const auto found = job_.plan.find({part_->work_, part_->name_});
  if (found == job_.plan.end()) return;
  Planned& planned = found->second;
  const double before = std::exchange(planned.done, std::max(planned.done, done));
  Pace& pace = job_.paces.at(static_cast<std::size_t>(part_->work_));
  pace.seconds += passed;
  pace.bytes += (planned.done - before) * planned.bytes;
  constexpr double kRemembered = 60;  // seconds: a medium may become slower while it is written
  if (pace.seconds <= kRemembered) return;
  pace.bytes *= kRemembered / pace.seconds;
  pace.seconds = kRemembered;
}

void Progress::Advance(std::uint64_t bytes) {
  if (part_ != nullptr) Reach(part_->told_ + bytes);
}

void Progress::Reach(std::uint64_t bytes) {
  if (part_ == nullptr || !IsShown()) return;
  part_->told_ = std::max(part_->told_, bytes);
  if (clock_.Running() - job_.shownAt < kShowEvery) return;
  Account();
  Show();
}

void Progress::ReachPiece(std::uint64_t piece, std::uint64_t pieces) {
  if (part_ == nullptr) return;
  const auto found = job_.plan.find({part_->work_, part_->name_});
  if (found != job_.plan.end()) Reach(static_cast<std::uint64_t>(found->second.told) * piece / pieces);
}

void Progress::Complete() {
  if (IsShown() && !job_.plan.empty()) Show(kEnd);
}

void Progress::Fail() {
  if (IsShown()) job_.bar->SetFailed(true);
}

std::optional<double> Progress::PackedShare() const {
  return job_.archived > 0 ? std::optional(job_.archived / job_.gathered) : std::nullopt;
}

void Progress::NotePacked(std::uint64_t gathered, std::uint64_t archived) {
  job_.gathered += static_cast<double>(gathered);
  job_.archived += static_cast<double>(archived);
}

/// Only a job that is over is at its end.
void Progress::Show() {
  Show(std::clamp(static_cast<int>(Fraction() * kEnd), job_.value, kEnd - 1));
}

void Progress::Show(int value) {
  job_.value = value;
  job_.shownAt = clock_.Running();
  job_.numbers->SetCaption(ProgressNumbers(value, Size(), value == kEnd ? std::nullopt : ReliableSecondsLeft()));
  job_.bar->SetValue(value);
  job_.bar->SetVisible(true);
}

void Progress::Hide() {
  job_.bar->SetVisible(false);
  job_.numbers->SetCaption({});
  job_.bar->SetValue(0);
  job_.bar->SetFailed(false);
}

/// All data pass through some kinds of work, and part of them through the others.
double Progress::Size() const {
  std::array<double, kWorks> sums{};
  for (const auto& [part, planned] : job_.plan) sums.at(static_cast<std::size_t>(part.first)) += planned.bytes;
  return *std::ranges::max_element(sums);
}

double Progress::Fraction() const {
  double done = 0;
  double all = 0;
  for (const auto& [part, planned] : job_.plan) {
    const double cost = planned.bytes * CostOf(part.first);
    all += cost;
    done += cost * planned.done;
  }
  return all > 0 ? done / all : 0;
}

/// By the pace of each kind. One that has not been seen at work is reckoned by the others, which may be wrong by much:
/// nothing, when more than a quarter of the time hangs on that.
std::optional<double> Progress::SecondsLeft() const {
  constexpr double kSeen = 2;  // seconds
  double seconds = 0;
  double cost = 0;
  for (std::size_t i = 0; i < kWorks; ++i) {
    seconds += job_.paces.at(i).seconds;
    cost += job_.paces.at(i).bytes * kCosts.at(i);
  }
  double known = 0;
  double reckoned = 0;
  for (const auto& [part, planned] : job_.plan) {
    const double left = planned.bytes * (1 - planned.done);
    const Pace& pace = job_.paces.at(static_cast<std::size_t>(part.first));
    if (pace.seconds >= kSeen && pace.bytes > 0) {
      known += left * pace.seconds / pace.bytes;
    } else if (left > 0) {
      reckoned += cost > 0 ? left * CostOf(part.first) * seconds / cost : HUGE_VAL;
    }
  }
  return reckoned * 4 <= known + reckoned ? std::optional(known + reckoned) : std::nullopt;
}

/// What is left, when it was expected alike for some seconds: the latest of the expected ends is no more than a third
/// later, from now on, than the earliest.
std::optional<double> Progress::ReliableSecondsLeft() {
  constexpr double kEvery = 1;  // seconds
  constexpr std::size_t kAlike = 10;
  constexpr double kApart = 4.0 / 3;
  const double now = Seconds(clock_.Running());
  const std::optional<double> left = SecondsLeft();
  auto& expected = job_.expectations;
  if (!left) {
    expected.clear();
    return std::nullopt;
  }
  if (expected.empty() || now - expected.back().at >= kEvery) expected.push_back({now, now + *left});
  if (expected.size() > kAlike) expected.pop_front();
  if (expected.size() < kAlike) return std::nullopt;
  const auto [first, last] = std::ranges::minmax(expected, {}, &Expectation::end);
  return last.end - now <= (first.end - now) * kApart ? left : std::nullopt;
}

std::string ProgressNumbers(int value, double bytes, std::optional<double> secondsLeft) {
  struct Unit {
    double bytes;
    const char* name;
    int decimals;
  };
  constexpr double kKilo = 1024;
  constexpr std::array<Unit, 3> kUnits = {
      {{kKilo * kKilo * kKilo, "GB", 1}, {kKilo * kKilo, "MB", 0}, {kKilo, "KB", 0}}};
  const auto* const fits = std::ranges::find_if(kUnits, [&](const Unit& unit) { return bytes >= unit.bytes; });
  const Unit& unit = fits == kUnits.end() ? kUnits.back() : *fits;
  const double all = bytes / unit.bytes;
  std::array<char, 80> text{};
  std::snprintf(text.data(), text.size(), "%d %% - %.*f / %.*f %s", value * 100 / kEnd, unit.decimals,
                all * value / kEnd, unit.decimals, all, unit.name);
  std::string numbers = text.data();
  constexpr double kMinute = 60;
  if (secondsLeft) {
    numbers += " - " + std::to_string(static_cast<long>(std::max(1.0, std::ceil(*secondsLeft / kMinute)))) + " min";
  }
  return numbers;
}

}  // namespace app
