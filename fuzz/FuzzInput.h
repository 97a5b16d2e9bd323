// Shared by the fuzz targets: typed values read from the fuzzer's bytes, and a scratch file for the
// targets whose input path is a file.
//
// Doubles are drawn mostly from the values that break geometry rather than from raw bit patterns:
// NaN, infinities, the 1e306 validity bound and the 1e307 sentinel, denormals, the library's 1e-10
// zero and the values either side of it, and small integers (exact coincidences, collinear and
// coplanar points). Raw bits and moderate values with a fraction fill the rest.
#pragma once
#include <fuzzer/FuzzedDataProvider.h>

#include <znmt64/SMat.h>

#include <bit>
#include <cfloat>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <string>
#include <unistd.h>
#include <vector>

namespace fuzz {

inline constexpr double kSpecialDoubles[] = {
    0.0, -0.0, 1.0, -1.0, 0.5, 2.0, 3.0,
    1e-10, -1e-10, 1.5e-10, 0.99e-10, 1.01e-10, 1e-11, 1e-21, 1e-30,
    1e-7, 1e-6, 1e-5, 1e-4, 1e-3,
    1.0 + 1e-10, 1.0 - 1e-10, 1.0 + DBL_EPSILON, 1.0 - DBL_EPSILON / 2,
    1e100, 1e154, 1e-160, 1e300, -1e300,
    1e306, -1e306, 1e307, -1e307, 1.0000000000000002e306,
    DBL_MAX, -DBL_MAX, DBL_MIN, -DBL_MIN,
    std::numeric_limits<double>::denorm_min(), -std::numeric_limits<double>::denorm_min(), 2.2250738585072009e-308,
    std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity(),
    std::numeric_limits<double>::quiet_NaN(), -std::numeric_limits<double>::quiet_NaN(),
    3.14159265358979, 3.141592653589793, 1.5707963267948966, 6.283185307179586, -3.14159265358979,
};
inline constexpr unsigned kSpecialCount = sizeof(kSpecialDoubles) / sizeof(kSpecialDoubles[0]);

class Input {
 public:
  Input(const std::uint8_t* data, std::size_t size) : m_fdp(data, size) {}

  bool Empty() { return m_fdp.remaining_bytes() == 0; }
  std::size_t Remaining() { return m_fdp.remaining_bytes(); }

  double Double() {
    const unsigned sel = m_fdp.ConsumeIntegral<std::uint8_t>();
    if (sel < kSpecialCount) return kSpecialDoubles[sel];
    if (sel < 120) return static_cast<double>(static_cast<int>(sel) - static_cast<int>(kSpecialCount) - 16);
    if (sel < 190) return std::bit_cast<double>(m_fdp.ConsumeIntegral<std::uint64_t>());
    return m_fdp.ConsumeIntegral<std::int32_t>() / 65536.0;
  }
  SMat Point() {
    const double x = Double();
    const double y = Double();
    const double z = Double();
    return SMat(x, y, z);
  }
  void Doubles(double* out, int n) {
    for (int i = 0; i < n; ++i) out[i] = Double();
  }
  int Int(int lo, int hi) { return m_fdp.ConsumeIntegralInRange<int>(lo, hi); }
  template <class T>
  T Integral() {
    return m_fdp.ConsumeIntegral<T>();
  }
  bool Bool() { return m_fdp.ConsumeBool(); }
  std::vector<std::uint8_t> Bytes(std::size_t n) { return m_fdp.ConsumeBytes<std::uint8_t>(n); }
  std::vector<std::uint8_t> RestBytes() { return m_fdp.ConsumeRemainingBytes<std::uint8_t>(); }
  std::string RestString() { return m_fdp.ConsumeRemainingBytesAsString(); }

 private:
  FuzzedDataProvider m_fdp;
};

// Bitwise equality, so that NaN results compare equal to themselves and -0 differs from 0.
template <class T>
bool SameBits(const T& a, const T& b) {
  return std::memcmp(&a, &b, sizeof(T)) == 0;
}
inline bool SameBits(const SMat& a, const SMat& b) {
  return SameBits(a.x, b.x) && SameBits(a.y, b.y) && SameBits(a.z, b.z);
}

// Aborts with a message, so that libFuzzer records the input as a finding.
[[noreturn]] inline void Fail(const char* what) {
  std::fprintf(stderr, "fuzz check failed: %s\n", what);
  std::abort();
}
inline void Check(bool ok, const char* what) {
  if (!ok) Fail(what);
}

// One scratch file per process, rewritten for every input and removed at exit.
class ScratchFile {
 public:
  ScratchFile() {
    const char* dir = std::getenv("TMPDIR");
    m_path = std::string(dir != nullptr && *dir != '\0' ? dir : "/tmp") + "/znmt64-fuzz-XXXXXX";
    const int fd = ::mkstemp(m_path.data());
    if (fd < 0) Fail("cannot create a scratch file");
    ::close(fd);
  }
  ~ScratchFile() { ::unlink(m_path.c_str()); }
  ScratchFile(const ScratchFile&) = delete;
  ScratchFile& operator=(const ScratchFile&) = delete;

  const char* Path() const { return m_path.c_str(); }
  void Write(const std::uint8_t* data, std::size_t size) const {
    std::FILE* f = std::fopen(m_path.c_str(), "wb");
    if (f == nullptr) Fail("cannot write the scratch file");
    if (size > 0 && std::fwrite(data, 1, size, f) != size) Fail("short write to the scratch file");
    std::fclose(f);
  }
  std::vector<std::uint8_t> Read() const {
    std::vector<std::uint8_t> out;
    std::FILE* f = std::fopen(m_path.c_str(), "rb");
    if (f == nullptr) Fail("cannot read the scratch file");
    std::uint8_t buf[4096];
    std::size_t n;
    while ((n = std::fread(buf, 1, sizeof buf, f)) > 0) out.insert(out.end(), buf, buf + n);
    std::fclose(f);
    return out;
  }

 private:
  std::string m_path;
};

}  // namespace fuzz
