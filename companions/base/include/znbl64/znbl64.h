// Everything the base module exports.
#pragma once
#include <znmt64/Config.h>
#include <znbl64/DynaModule.h>
#include <znbl64/PCExBase.h>
#include <znbl64/Range.h>
#include <znbl64/ZMath.h>
