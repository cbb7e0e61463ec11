// <windows.h> without the macros that would rewrite our own names. Every file
// of src/windows includes this one instead.
#pragma once

#include <windows.h>

// Methods of our contracts have these names.
#undef SetVolumeLabel
#undef Yield
