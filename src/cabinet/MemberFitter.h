// Tells what a damaged file record must have said from the records before and behind it.
#pragma once

#include "cabinet/Rescue.h"

namespace cabinet {

/// Puts folders, places and sizes right that do not fit the members before and behind; drops those that still overlap
/// others. What was wrong is added to the flaws.
void FitMembers(RescuedStructure& rescued);

}  // namespace cabinet
