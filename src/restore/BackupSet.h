// What a backup set says of itself, and whether this system may restore it.
#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "app/Application.h"
#include "restore/Categories.h"

namespace restore {

enum class Offer {
  Missing,       ///< the set does not hold the category
  OtherVersion,  ///< it holds the category in a version that is not this system's
  Fits,
};

struct BackupSet {
  std::string appVersion;
  std::string date;
  std::array<Offer, kCategories> offers{};
};

/// Reads the descriptor in `SelectedFolder`. Returns 0 when this system may restore the set, else the
/// ID of the message that says why not: 60426 no descriptor, 60427 an incomplete one, 60429 another
/// host application, 60430 another major version. Minor versions may differ.
std::int32_t InspectBackupSet(app::Application& application, BackupSet& set);

}  // namespace restore
