#include "fakes/PowerCut.h"

#include <algorithm>
#include <utility>

namespace fakes {
namespace {

std::string Zeros(std::size_t count) {
  return std::string(count, '\0');
}

void AddDistinct(std::vector<Remains>& all, Loss loss, PowerCut::Files files) {
  const bool known = std::ranges::any_of(all, [&](const Remains& each) { return each.files == files; });
  if (!known) all.push_back({loss, std::move(files)});
}

}  // namespace

PowerCut::PowerCut(Disk& disk, std::string folder) : disk_(disk), folder_(std::move(folder)) {
  flushed_ = disk_.Tree(folder_);
  for (const auto& [path, bytes] : flushed_) disk_.Find(folder_ + path)->flushed = true;
  disk_.afterFlush = [this](const std::string& path) { Settle(path); };
}

void PowerCut::Settle(const std::string& path) {
  std::erase_if(flushed_, [&](const auto& file) { return IsAtOrBelow(folder_ + file.first, path); });
  for (const auto& [name, bytes] : disk_.Tree(folder_)) {
    if (!IsAtOrBelow(folder_ + name, path)) continue;
    flushed_[name] = disk_.Find(folder_ + name)->flushed ? bytes : Zeros(bytes.size());
  }
}

std::vector<std::string> PowerCut::Pending(const Files& now) const {
  std::vector<std::string> pending;
  for (const auto& [path, bytes] : flushed_)
    if (!now.contains(path)) pending.push_back(path);
  for (const auto& [path, bytes] : now) {
    const auto known = flushed_.find(path);
    const bool settled = known != flushed_.end() && known->second == bytes && disk_.Find(folder_ + path)->flushed;
    if (!settled) pending.push_back(path);
  }
  return pending;
}

void PowerCut::Lose(Files& files, const std::string& path, Lost how) const {
  const auto before = flushed_.find(path);
  const auto written = files.find(path);
  if (how != Lost::Writing && written != files.end()) {
    written->second = how == Lost::Bytes ? "" : Zeros(written->second.size());
  } else if (before != flushed_.end()) {
    files[path] = before->second;
  } else {
    files.erase(path);
  }
}

std::vector<Remains> PowerCut::Now() const {
  const Files now = disk_.Tree(folder_);
  const std::vector<std::string> pending = Pending(now);
  std::vector<Remains> all = {{Loss::None, now}};
  for (const Lost how : kEveryLost) {
    Files nothing = now;    // came through
    Files deletions = now;  // alone came through
    for (const std::string& path : pending) {
      Lose(nothing, path, how);
      if (now.contains(path)) Lose(deletions, path, how);
    }
    AddDistinct(all, Loss::Unflushed, std::move(nothing));
    AddDistinct(all, Loss::Unflushed, std::move(deletions));
    for (const std::string& kept : pending) {
      Files files = now;
      for (const std::string& path : pending)
        if (path != kept) Lose(files, path, how);
      AddDistinct(all, Loss::AllButOne, std::move(files));
    }
  }
  return all;
}

}  // namespace fakes
