// Any damage to a set: it is called sound only where every archive has the bytes that were packed and the descriptor
// offers them; and whatever is taken out of it stays in its folder.
//
// Each four bytes of the input are one change: to which file and how (one byte), where (two), and how much.
#include "FuzzTarget.h"
#include "base/Text.h"
#include "set-check/MemorySet.h"
#include "set-check/SetCheck.h"
#include "set-check/TakeOut.h"

namespace {

constexpr std::size_t kMostChanges = 8;

void Change(Files& set, const std::uint8_t* change, std::size_t number) {
  if (set.empty()) return;
  const auto file = std::next(set.begin(), static_cast<std::ptrdiff_t>(change[0] / 8u % set.size()));
  std::string& bytes = file->second;
  const std::size_t at = bytes.empty() ? 0 : (change[1] + change[2] * 256u) % bytes.size();
  const std::size_t amount = change[3] + 1u;
  switch (change[0] % 8) {
    case 0:
      set.erase(file);
      break;
    case 1:
      std::swap(bytes, set.begin()->second);
      break;
    case 2:
      bytes.erase(at, amount);
      break;
    case 3:
      bytes.insert(at, amount, 'x');
      break;
    case 4:
      bytes.replace(at, std::min(amount, bytes.size() - at), amount, '\0');
      break;
    default:
      if (!bytes.empty()) bytes[at] = static_cast<char>(bytes[at] ^ (amount == 1 ? 1 << number : change[3]));
  }
}

std::string Value(const std::string& descriptor, const std::string& key) {
  for (const std::string& line : base::Split(descriptor, '\n')) {
    if (line.starts_with(key + "=")) return base::Trim(base::Replaced(line.substr(key.size() + 1), "\r", ""));
  }
  return {};
}

// What the set offers has the bytes that were packed.
bool IsRight(const Files& set, const Files& original) {
  const auto descriptor = set.find(kDescriptor);
  if (descriptor == set.end()) return false;
  return std::ranges::all_of(kKinds, [&](const std::string& kind) {
    const auto archive = set.find(kind + ".cab");
    const bool offered = !Value(descriptor->second, kind).empty();
    return !offered || (archive != set.end() && archive->second == original.at(kind + ".cab"));
  });
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const fuzz::Scratch scratch;
  static const Files original = MakeSet(1);
  static MemoryFolder system(MakeSystem());
  static setcheck::NoHost noHost;
  static setcheck::Workstation workstation(noHost);
  static setcheck::SetCheck check(noHost, &workstation, {{"Tarsus", "3.00"}, true}, [](std::uint64_t) {});
  fuzz::Require(workstation.Open(system).IsDone(), "the workstation is known");
  Files set = original;
  for (std::size_t i = 0; i < kMostChanges && 4 * i + 4 <= size; ++i) Change(set, data + 4 * i, i);
  MemoryFolder folder(set);
  const setcheck::SetReport report = check.Check(folder);
  if (report.Verdict() == setcheck::Restorable::Wholly) {
    fuzz::Require(IsRight(set, original), "what is called sound is what was packed");
  }
  if (set == original) fuzz::Require(report.Verdict() == setcheck::Restorable::Wholly, "a sound set is called sound");
  setcheck::InWords(report);
  setcheck::AsJson(report);
  setcheck::UnpackSet(folder, "out");
  fuzz::Scratch::RequireNothingAbove();
  fs::remove_all("out");
  fuzz::Require(fs::is_empty("."), "nothing is left beside the target");
  return 0;
}
