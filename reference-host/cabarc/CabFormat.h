// The records that open a cabinet, as the archiver writes them. The format itself stands in cabinet/Format.h.
#pragma once

#include <cstdint>
#include <vector>

#include "cabinet/Structure.h"

namespace cabarc {

using namespace cabinet;

/// The bytes of all records, CRC included.
std::vector<std::uint8_t> WriteRecords(const Structure& structure);

}  // namespace cabarc
