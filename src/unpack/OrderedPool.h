// Threads that work on jobs side by side while one caller fills and empties them strictly in order.
#pragma once

#include <algorithm>
#include <condition_variable>
#include <cstddef>
#include <mutex>
#include <system_error>
#include <thread>
#include <vector>

namespace unpack {

/// A ring of jobs. The caller takes a free one, fills it and submits it; takes the oldest back when it is done, uses
/// its result and releases it. The caller's own thread works too whenever it would have to wait, so one thread needs
/// no other, and the number of jobs (hence the memory) depends on the number of threads alone.
/// `Worker` is what one thread works with: default constructible, with `void Run(Job&)` that throws nothing.
template <class Job, class Worker>
class OrderedPool {
 public:
  /// `threads`: how many work, the caller's own included; at least 1.
  explicit OrderedPool(unsigned threads)
      : ring_(threads == 1 ? 1 : kJobsPerThread * threads), workers_(std::max(threads, 1u)) {
    threads_.reserve(threads);
    try {
      for (std::size_t i = 1; i < workers_.size(); ++i) threads_.emplace_back([this, i] { Serve(workers_[i]); });
    } catch (const std::system_error&) {
      // Fewer threads than asked for take longer and do the same.
    }
  }

  OrderedPool(const OrderedPool&) = delete;
  OrderedPool& operator=(const OrderedPool&) = delete;

  /// Drops the jobs that nobody has begun.
  ~OrderedPool() {
    {
      const std::lock_guard lock(mutex_);
      ending_ = true;
    }
    submittedOne_.notify_all();
    for (std::thread& thread : threads_) thread.join();
  }

  /// The next job to fill, as its last use left it; null while all are submitted.
  Job* Free() { return submitted_ - released_ == ring_.size() ? nullptr : &SlotOf(submitted_).job; }

  /// Hands over the job that Free() returned.
  void Submit() {
    {
      const std::lock_guard lock(mutex_);
      SlotOf(submitted_++).done = false;
    }
    submittedOne_.notify_one();
  }

  /// The oldest submitted job, finished; null when there is none.
  Job* Oldest() {
    if (released_ == submitted_) return nullptr;
    Slot& oldest = SlotOf(released_);
    std::unique_lock lock(mutex_);
    while (!oldest.done) {
      if (begun_ < submitted_) {
        RunNext(lock, workers_[0]);
      } else {
        finishedOne_.wait(lock);
      }
    }
    return &oldest.job;
  }

  /// Gives back the job that Oldest() returned.
  void Release() { ++released_; }

 private:
  static constexpr unsigned kJobsPerThread = 4;

  struct Slot {
    Job job;
    bool done = false;
  };

  Slot& SlotOf(std::size_t number) { return ring_[number % ring_.size()]; }

  void Serve(Worker& worker) {
    std::unique_lock lock(mutex_);
    for (;;) {
      submittedOne_.wait(lock, [this] { return ending_ || begun_ < submitted_; });
      if (ending_) return;
      RunNext(lock, worker);
    }
  }

  void RunNext(std::unique_lock<std::mutex>& lock, Worker& worker) {
    Slot& slot = SlotOf(begun_++);
    lock.unlock();
    worker.Run(slot.job);
    lock.lock();
    slot.done = true;
    finishedOne_.notify_one();
  }

  std::vector<Slot> ring_;
  std::vector<Worker> workers_;
  std::mutex mutex_;
  std::condition_variable submittedOne_;
  std::condition_variable finishedOne_;
  // Numbers of jobs since the start. The caller alone changes submitted_ (under the lock) and released_.
  std::size_t submitted_ = 0;
  std::size_t begun_ = 0;
  std::size_t released_ = 0;
  bool ending_ = false;
  std::vector<std::thread> threads_;
};

}  // namespace unpack
