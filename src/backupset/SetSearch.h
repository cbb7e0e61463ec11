// Finds the set that an operator most likely wants: the newest one on a medium.
#pragma once

#include <string>

#include "backupset/Descriptor.h"

namespace backupset {

/// The folder of the newest set, by the time of its descriptor, in `folder` or below it, of those that this system may
/// restore something of; ends in "\". Empty where none is found. Looks a few levels deep, at some thousand folders at
/// most and for some seconds, nearer folders first; follows no links. Serves the message loop meanwhile.
std::string FindNewestSet(const work::Tools& tools, const HostIdentity& host, const std::string& folder);

}  // namespace backupset
