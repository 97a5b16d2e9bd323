// The library's process-wide objects. They are defined in this one file so that they are built
// in the order callers rely on at load, and destroyed in the reverse order at unload.
#include <znmt64/StateMatr.h>

StateMatr theMatrState;
