// The library's process-wide objects. They are defined in this one file so that they are built
// in the order callers rely on at load, and destroyed in the reverse order at unload.
#include <znmt64/DynaModuleMatr.h>
#include <znmt64/StateMatr.h>
#include <znmt64/Triangle3D.h>

StateMatr theMatrState;
DynaModule dynaModuleMatr(&DMID_MATR, DynaModule::eConfigClient);
Triangle2D Triangle3D::m_tri2D(true);
