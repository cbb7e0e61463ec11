// Reads what stands before the data of a cabinet, believing nothing of it.
#pragma once

#include "cabarc/BufferedInput.h"
#include "cabarc/CabFormat.h"
#include "cabarc/Status.h"

namespace cabinet {

/// Fills `records` from `input`, which stands at the start of a file of `fileSize` bytes. On success all sizes and
/// offsets are consistent: every folder's data lie in the file in the order of the folders, and the members of a
/// folder lie within what its blocks can hold, without overlap. Names are decoded but may be unsafe, and methods may
/// be unsupported. Refuses parts of a set, and cabinets that do not begin and end with the file.
Status ReadRecords(BufferedInput& input, std::uint64_t fileSize, CabinetRecords& records);

}  // namespace cabinet
