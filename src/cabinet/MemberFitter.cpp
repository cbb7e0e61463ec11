// Tells what a damaged file record must have said from its neighbours.
#include "cabinet/MemberFitter.h"

#include <algorithm>
#include <utility>

namespace cabinet {
namespace {

/// Tells a damaged place or size from the members before and behind it.
class MemberFitter {
 public:
  explicit MemberFitter(RescuedStructure& rescued) : rescued_(rescued), members_(rescued.structure.members) {}

  void Fit() {
    for (std::size_t i = 0; i < members_.size(); ++i) FitFolder(i);
    if (AllInFolders()) FitExtents();
    DropOverlapping();
  }

 private:
  static std::uint64_t EndOf(const Member& member) { return std::uint64_t{member.at} + member.size; }

  void Note(const Member& member, const std::string& words) { rescued_.flaws.push_back(member.name + ": " + words); }

  const Member* Next(std::size_t i) const {
    return i + 1 < members_.size() && members_[i + 1].folder == members_[i].folder ? &members_[i + 1] : nullptr;
  }

  void FitFolder(std::size_t i) {
    Member& member = members_[i];
    const std::uint16_t before = i > 0 ? members_[i - 1].folder : std::uint16_t{0};
    const std::uint16_t behind = i + 1 < members_.size() ? members_[i + 1].folder : before;
    const bool between = before == behind && member.folder != before;
    if (member.folder < rescued_.structure.folders.size() && !between) return;
    if (member.folder >= rescued_.structure.folders.size() || (i > 0 && member.at == EndOf(members_[i - 1]))) {
      member.folder = before;
      Note(member, "its folder is damaged; it was taken from the file before");
    }
  }

  /// Where the member before ends; the start of the folder for the first one.
  std::uint64_t Expected(std::size_t i) const {
    return i > 0 && members_[i - 1].folder == members_[i].folder ? EndOf(members_[i - 1]) : 0;
  }

  /// Whether the member ends where the next one begins, or the last one within the folder's last block.
  bool EndsRight(std::size_t i) const {
    if (const Member* const next = Next(i)) return EndOf(members_[i]) == next->at;
    const std::uint64_t most = rescued_.structure.folders[members_[i].folder].blocks * std::uint64_t{kBlockSize};
    return EndOf(members_[i]) <= most && EndOf(members_[i]) + kBlockSize > most;
  }

  /// A place that fits the member before or the one behind is right. Another one is where the member before ends; and
  /// a member that does not end at a right place has the wrong size.
  void FitExtents() {
    std::vector<bool> right(members_.size());
    for (std::size_t i = 0; i < members_.size(); ++i) right[i] = members_[i].at == Expected(i) || EndsRight(i);
    for (std::size_t i = 0; i < members_.size(); ++i) {
      Member& member = members_[i];
      if (!right[i] && member.at != Expected(i) && Expected(i) <= kMaxFolderSize) {
        member.at = static_cast<std::uint32_t>(Expected(i));
        Note(member, "its place is damaged; it follows the file before");
      }
      const Member* const next = Next(i);
      if (next && right[i + 1] && EndOf(member) != next->at && next->at >= member.at) {
        member.size = next->at - member.at;
        Note(member, "its size is damaged; it ends where the next file begins");
      }
      if (!next && EndOf(member) > kMaxFolderSize && member.at < kMaxFolderSize) {
        member.size = static_cast<std::uint32_t>(kMaxFolderSize - member.at);  // its data will tell
      }
    }
  }

  bool AllInFolders() const {
    return std::all_of(members_.begin(), members_.end(),
                       [this](const Member& member) { return member.folder < rescued_.structure.folders.size(); });
  }

  void DropOverlapping() {
    std::vector<std::uint64_t> ends(rescued_.structure.folders.size());
    std::vector<Member> kept;
    for (Member& member : members_) {
      if (member.folder >= ends.size() || member.at < ends[member.folder] || EndOf(member) > kMaxFolderSize) {
        Note(member, "its place is damaged; it is lost");
        continue;
      }
      ends[member.folder] = EndOf(member);
      kept.push_back(std::move(member));
    }
    members_ = std::move(kept);
  }

  RescuedStructure& rescued_;
  std::vector<Member>& members_;
};

}  // namespace

void FitMembers(RescuedStructure& rescued) {
  MemberFitter(rescued).Fit();
}

}  // namespace cabinet
