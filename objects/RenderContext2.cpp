#include <znmt64/RenderContext2.h>

// Out of line: the modules built against the library call these exported members.
RenderContext2::RenderContext2() : s1(-1), s2(-1), d1(-1.0), d2(-1.0), d3(-1.0) {}

RenderContext2::~RenderContext2() = default;

RenderContext2& RenderContext2::operator=(const RenderContext2& o) = default;
