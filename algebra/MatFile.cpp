// The raw matrix file: 8 bytes per element, IEEE double, little-endian, column-major, no header.
// The reader shapes the matrix before loading.
#include <znmt64/Mat.h>
#include <znmt64/platform/CFile.h>
#include <znmt64/platform/CString.h>

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstdio>
#include <vector>

namespace {

// The path buffer callers have always been held to: dir, "/" and name must fit in 56 characters
// with the terminating zero.
constexpr std::size_t kPathBuffer = 56;

// A file holds little-endian doubles whatever the host.
std::uint64_t ToFileOrder(std::uint64_t u) {
  if constexpr (std::endian::native == std::endian::big) {
    std::uint64_t r = 0;
    for (int b = 0; b < 8; ++b) r |= ((u >> (8 * b)) & 0xFF) << (8 * (7 - b));
    return r;
  }
  return u;
}

}  // namespace

int Mat::Send2F(const char* dir, const char* name, std::size_t count) {
  // count is the caller's statement of its buffer size; a path that does not fit in it, or in the
  // 56 characters, is refused rather than cut or overrun.
  char path[kPathBuffer];
  const std::size_t room = std::min(count, kPathBuffer);
  if (dir == nullptr || name == nullptr || room == 0) return 0;
  const int len = std::snprintf(path, room, "%s/%s", dir, name);
  if (len < 0 || static_cast<std::size_t>(len) >= room) return 0;

  CFile file;
  if (!file.Open(path, CFile::modeCreate | CFile::modeWrite | CFile::shareDenyWrite | CFile::typeBinary)) {
    CString msg;
    msg.Format("Mat::Send2F(): could not open the file %s", path);
    Error(msg);
    return 0;
  }
  // Elements the block does not hold are written as 0, as the arithmetic reads them.
  const int held = HeldSize();
  std::vector<std::uint64_t> scratch;
  scratch.reserve(static_cast<std::size_t>(std::max(m_nRows, 0)) * std::max(m_nCols, 0));
  int visited = 0;
  for (int c = 0; c < m_nCols; ++c)
    for (int r = 0; r < m_nRows; ++r, ++visited) {
      const long k = static_cast<long>(r) * m_nCols + c;
      scratch.push_back(ToFileOrder(std::bit_cast<std::uint64_t>(k < held ? m_pData[k] : 0.0)));
    }
  try {
    file.Write(scratch.data(), static_cast<UINT>(scratch.size() * sizeof(std::uint64_t)));
    file.Close();
  } catch (CFileException* e) {
    e->Delete();
    Error("Mat::Send2F(): file.Write() failed");
    return 0;
  }
  return visited;
}

int Mat::Load(const char* path) {
  CFile file;
  if (path == nullptr || !file.Open(path, CFile::modeRead | CFile::shareDenyWrite | CFile::typeBinary)) {
    CString msg;
    msg.Format("Mat::Load(): Could not open file %s", path != nullptr ? path : "");
    Error(msg);
    return 0;
  }
  // Straight into the block: a short file replaces only the leading bytes, and the rest of the
  // block goes through the reordering below as it was. Callers rely on that, not on an error.
  const std::size_t bytes = static_cast<std::size_t>(HeldSize()) * sizeof(double);
  auto* block = reinterpret_cast<unsigned char*>(m_pData);
  try {
    std::size_t got = 0;
    while (got < bytes) {
      const UINT n = file.Read(block + got, static_cast<UINT>(std::min<std::size_t>(bytes - got, 1u << 30)));
      if (n == 0) break;
      got += n;
    }
    file.Close();
  } catch (CFileException* e) {
    e->Delete();
    file.Abort();
    Error("Mat::Load(): Read() failed");
    return -1;
  }
  if constexpr (std::endian::native == std::endian::big)
    for (int k = 0; k < HeldSize(); ++k)
      m_pData[k] = std::bit_cast<double>(ToFileOrder(std::bit_cast<std::uint64_t>(m_pData[k])));

  // Column-major to row-major, within the elements the block holds. A shape with one negative
  // dimension (nothing checks them) has nothing to reorder.
  const long n = std::clamp<long>(static_cast<long>(m_nRows) * m_nCols, 0, HeldSize());
  std::vector<double> scratch(m_pData, m_pData + n);
  for (int i = 0; i < m_nRows; ++i)
    for (int j = 0; j < m_nCols; ++j) {
      const long to = static_cast<long>(i) * m_nCols + j, from = static_cast<long>(j) * m_nRows + i;
      if (to < n && from < n) m_pData[to] = scratch[from];
    }
  return 1;
}
