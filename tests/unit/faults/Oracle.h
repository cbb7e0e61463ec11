// What every run is held against that something has hit: success is reported over a complete result alone, or behind a
// warning on the screen; what stands in the log alone excuses nothing; and nothing is lost.
#pragma once

#include <string>

#include "unit/faults/Route.h"

namespace faults {

/// The run of a route that nothing hits, on a workstation that is arranged so.
struct Flawless {
  explicit Flawless(const Route& route, const Arrangement& arrange = Nothing);

  Course course;
  MediumFiles after;  ///< files of the host
  MediumFiles destination;
};

/// How much of the program's voice is left to it.
enum class Voice { Whole, CannotShowMessages, CallsFailForGood };

/// What is not as it should be after a run; empty when all is well.
std::string Judge(Course& course, const Flawless& flawless, Voice voice = Voice::Whole);

/// Whether the operator saw, before the success, that something was left out.
bool WasWarned(const Course& course);

/// Every file of a set, and in place of an archive all that is in it, each below the archive's name.
MediumFiles Unpacked(const MediumFiles& set);

}  // namespace faults
