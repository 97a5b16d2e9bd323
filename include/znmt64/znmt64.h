// Every exported class of znmt64, with the companion and framework types of their signatures.
#pragma once
#include <znmt64/Config.h>
#include <znmt64/platform/Afx.h>

#include <znmt64/Mat.h>
#include <znmt64/StateMatr.h>
