// dynaModuleMatr: this library's entry in the suite's module registry (znbl64/DynaModule.h).
#pragma once
#include <znmt64/Config.h>
#include <znbl64/DynaModule.h>

// Registered under DMID_MATR as a client (configuration 2): other modules see the library loaded,
// and the library sends its requests to them through it (the frame and circle objects ask the
// geometry and quadric modules for interfaces they answer for them). It answers no request
// itself. Built at load between theMatrState and the triangles' scratch 2D triangle, destroyed
// at unload, when it leaves the registry.
ZNMT64_API extern DynaModule dynaModuleMatr;
