// Drawing objects for the classes' debug displays (Dp, Dump, CreateDump), made through the 2D
// module's generator and shown by its debugger. Internal to the library: not installed, not exported.
#pragma once
#include <znmt64/Config.h>
#include <znmt64/platform/Types.h>

class SMat;
struct ISection;

// The caption the suite's debug displays use: the class name and the low 32 bits of the object's
// address, as in "CLineal %08x".
void FormatDebugCaption(char (&buf)[64], const char* format, const void* object);

// A section of the 2D module's generator (kind 9) holding the nPts points and the nIdx index
// entries (none: the points are drawn in order), captioned caption. Null when any step of the
// generator fails; the caller owns the returned reference.
ISection* MakeDebugSection(const SMat* pts, int nPts, const LONG* idx, int nIdx, const char* caption);

// Shows sec in a 3D stream of the 2D module's debugger, then releases it; a null sec shows nothing.
void ShowDebugSection(ISection* sec);
