// State of the 2D analytic geometry module and its start-up.
#pragma once
#include <znmt64/Config.h>

// Starts the module once; later calls do nothing.
ZNAG64_API void InitAnGeoDll();
// How many times the module really started (0 or 1); lets callers check the once-only start.
ZNAG64_API int AnGeoStartCount();
