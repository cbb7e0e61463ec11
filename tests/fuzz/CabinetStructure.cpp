// Any bytes as a cabinet whose structure is read and whose blocks are walked, as the archiver and the program do it.
// The first byte of the input chooses how many bytes come at once.
#include <cstring>

#include "FuzzTarget.h"
#include "cabinet/Blocks.h"
#include "cabinet/Rescue.h"
#include "cabinet/Structure.h"

namespace {

class Bytes : public cabinet::Source {
 public:
  Bytes(const std::uint8_t* data, std::size_t size, std::size_t pieces) : data_(data), size_(size), pieces_(pieces) {}

  std::int64_t ReadAt(std::uint64_t offset, void* data, std::size_t count) override {
    if (offset >= size_) return 0;
    const std::size_t size = std::min({count, pieces_, size_ - static_cast<std::size_t>(offset)});
    std::memcpy(data, data_ + offset, size);
    return static_cast<std::int64_t>(size);
  }
  std::uint64_t Size() override { return size_; }

 private:
  const std::uint8_t* const data_;
  const std::size_t size_;
  const std::size_t pieces_;
};

// Holds what the walk says against the structure that it walks.
class Judge : public cabinet::WalkObserver {
 public:
  Judge(const cabinet::Structure& structure, std::size_t size) : structure_(structure), size_(size) {}

  bool Sound(const cabinet::Block& block) override {
    fuzz::Require(block.at + block.size <= size_, "a block lies in the file");
    fuzz::Require(block.at >= structure_.recordsEnd, "a block lies behind the records");
    fuzz::Require(block.header.unpackedSize <= cabinet::kBlockSize, "a block has a size that a block can have");
    read_ += block.size;
    fuzz::Require(read_ <= size_, "no byte is read as part of two blocks");
    return true;
  }
  bool Damaged(const cabinet::Damage& damage) override {
    fuzz::Require(damage.folder < structure_.folders.size() && damage.from <= damage.to, "a damage lies in a folder");
    fuzz::Require(!damage.words.empty(), "a damage has words");
    ++damages;
    return true;
  }

  int damages = 0;

 private:
  const cabinet::Structure& structure_;
  const std::size_t size_;
  std::size_t read_ = 0;
};

// What is rescued, of whatever, can be extracted without another look.
void RequireRescue(cabinet::Source& source) {
  cabinet::RescuedStructure rescued;
  const base::Outcome read = cabinet::RescueStructure(source, rescued);
  fuzz::Require(read.IsDone() == read.cause.empty(), "a refusal, and only that, has words");
  if (!read.IsDone()) return;
  cabinet::Structure structure;
  const bool whole = cabinet::ReadStructure(source, structure).IsDone();
  fuzz::Require(whole || !rescued.flaws.empty(), "what is refused has a flaw");
  const std::vector<cabinet::RescuedFolder> folders = cabinet::RescueBlocks(source, rescued);
  std::vector<std::uint64_t> ends(folders.size());
  for (const cabinet::Member& member : rescued.structure.members) {
    fuzz::Require(member.folder < folders.size(), "a member lies in a folder");
    if (!whole) fuzz::Require(member.at >= ends[member.folder], "no two members overlap");
    ends[member.folder] = std::uint64_t{member.at} + member.size;
    fuzz::Require(cabinet::IsUtf8(member.name), "a name is UTF-8");
  }
  for (const cabinet::RescuedFolder& folder : folders) {
    std::uint64_t at = 0, offset = 0;
    for (const cabinet::FoundBlock& block : folder.blocks) {
      fuzz::Require(block.at >= at && block.offset >= offset, "blocks do not overlap");
      at = block.at + block.header.packedSize;
      offset = block.offset + block.header.unpackedSize;
      fuzz::Require(at <= source.Size() && block.header.IsPossible(), "a block lies in the file");
      fuzz::Require(block.wrong.at < block.header.packedSize + cabinet::kBlockHeaderSize + 255, "as does its mend");
    }
    for (const cabinet::Damage& damage : folder.damages) {
      fuzz::Require(damage.from <= damage.to && !damage.words.empty(), "a damage has a place and words");
    }
  }
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  Bytes source(data + 1, size - 1, data[0] == 0 ? SIZE_MAX : data[0]);
  cabinet::Structure structure;
  RequireRescue(source);
  const base::Outcome read = cabinet::ReadStructure(source, structure);
  fuzz::Require(read.IsDone() == read.cause.empty(), "a refusal, and only that, has words");
  if (!read.IsDone()) return 0;

  const std::vector<std::uint64_t> extents = structure.Extents();
  for (std::size_t i = 0; i < extents.size(); ++i) {
    fuzz::Require(extents[i] <= structure.folders[i].blocks * std::uint64_t{cabinet::kBlockSize},
                  "members lie within what the blocks of their folder can hold");
    fuzz::Require(structure.EndOfFolder(i) <= size - 1, "a folder ends within the file");
  }
  for (const cabinet::Member& member : structure.members) {
    fuzz::Require(cabinet::IsUtf8(member.name), "a name is UTF-8");
    fuzz::Require(cabinet::IsUtf8(cabinet::Printable(member.name)), "and so is what is shown of it");
  }
  Judge judge(structure, size - 1);
  const bool sound = cabinet::WalkBlocks(source, structure, judge).IsDone();
  fuzz::Require(sound == (judge.damages == 0), "a failure has a damage");
  fuzz::Require(sound == cabinet::WalkBlocks(source, structure).IsDone(), "the first damage is enough for a failure");
  return 0;
}
