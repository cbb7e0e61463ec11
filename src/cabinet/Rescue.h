// What can still be read of a cabinet that is damaged: its records where they contradict themselves, and its blocks
// beyond those that are lost.
//
// The records of all known writers are redundant: members lie end to end in their folder, in the order of their
// records; the folder records end where the file records begin; the first folder's data begin where those end. So
// a number that does not fit can be told from its neighbours, and often what it was. A guarded cabinet's CRC even tells
// which byte of the records is wrong, when it is one.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "base/Outcome.h"
#include "cabinet/Blocks.h"
#include "cabinet/Source.h"
#include "cabinet/Structure.h"

namespace cabinet {

struct RescuedStructure {
  Structure structure;             ///< consistent as far as members go: they lie in folders and do not overlap
  bool trusted = true;             ///< the records are those that were written, or nothing in them contradicts it
  std::vector<std::string> flaws;  ///< what was wrong and what was made of it, in words about "it", the cabinet
};

/// Reads the structure as ReadStructure does, and goes on where that refuses. Fails where not even a list of files can
/// be found.
base::Outcome RescueStructure(Source& source, RescuedStructure& rescued, const ReadingRules& rules = {});

/// Where a sound block stands.
struct FoundBlock {
  std::uint64_t at = 0;      ///< offset of its header in the cabinet
  std::uint64_t offset = 0;  ///< of its data in the folder's unpacked stream
  BlockHeader header;        ///< with its sizes put right where they were damaged
  WrongBytes wrong;          ///< to be put right among its bytes; the mask is 0 where there are none
};

/// Puts right in a block's bytes what was found to be wrong.
void Mend(const FoundBlock& found, std::uint8_t* block);

struct RescuedFolder {
  Method method = Method::None;    ///< as the blocks themselves show it, where the record is damaged
  std::vector<FoundBlock> blocks;  ///< the sound ones, in their order
  std::vector<Damage> damages;     ///< what lies between them
};

/// Finds the sound blocks of every folder: where the folder records say, or else where the data before end, and behind
/// a damaged block wherever the next ones are found. What is found behind one counts only when its place in the stream
/// is certain. Without a checksum a block is taken for sound only where its header leads to another one.
/// In a folder of a guarded cabinet up to four wrong bytes in a row are found by its CRC and cost nothing.
/// May shorten the last member of a folder whose record claims more than the folder ever held.
std::vector<RescuedFolder> RescueBlocks(Source& source, RescuedStructure& rescued);

}  // namespace cabinet
