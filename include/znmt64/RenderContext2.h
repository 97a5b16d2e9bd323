// RenderContext2: a record the suite's drawing modules hand each other through this library's
// interfaces. The library itself never reads it.
#pragma once
#include <znmt64/Config.h>

#include <cstdint>

class ZNMT64_API RenderContext2 {
 public:
  // Every member -1: "not set" to the modules that read the record.
  RenderContext2();
  ~RenderContext2();
  RenderContext2(const RenderContext2&) = default;
  RenderContext2& operator=(const RenderContext2& o);

  std::int16_t s1;
  std::int16_t s2;
  double d1;
  double d2;
  double d3;
};
