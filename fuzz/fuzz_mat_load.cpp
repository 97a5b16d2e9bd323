// Mat::Load on arbitrary file bytes, into matrices of every shape a caller can give them: with
// their own block, with a block kept from a larger shape, over attached storage, or without any.
//
// The oracle is the file format itself: the leading 8·m_nSize bytes of the file replace the block's
// leading bytes, the rest of the block keeps its values, and the whole is then read column-major.
#include "FuzzInput.h"

#include <znmt64/Mat.h>

#include <algorithm>
#include <memory>
#include <vector>

namespace {

const fuzz::ScratchFile& File() {
  static const fuzz::ScratchFile file;
  return file;
}

// The block the load must leave: old block with the file's bytes over its start, reordered.
std::vector<double> Expected(const std::vector<double>& before, const std::vector<std::uint8_t>& bytes, int rows,
                             int cols) {
  std::vector<double> raw = before;
  const std::size_t n = std::min(bytes.size(), raw.size() * sizeof(double));
  if (n > 0) std::memcpy(raw.data(), bytes.data(), n);
  std::vector<double> out = raw;
  const long held = static_cast<long>(raw.size());
  for (int i = 0; i < rows; ++i)
    for (int j = 0; j < cols; ++j) {
      const long to = static_cast<long>(i) * cols + j, from = static_cast<long>(j) * rows + i;
      if (to < held && from < held) out[to] = raw[from];
    }
  return out;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::Input in(data, size);
  // Negative dimensions too: nothing checks them, and two negatives make a positive size.
  const int rows = in.Int(-3, 48);
  const int cols = in.Int(-3, 48);
  const int kind = in.Int(0, 4);
  const double fill = in.Double();
  const std::vector<std::uint8_t> bytes = in.RestBytes();
  File().Write(bytes.data(), bytes.size());

  std::vector<double> foreign;
  std::unique_ptr<Mat> owner;
  switch (kind) {
    case 1:  // a block kept from a larger shape
      owner = std::make_unique<Mat>(rows + 3, cols + 2);
      owner->SetDimensions(rows, cols);
      break;
    case 2:  // attached storage of exactly its size
      owner = std::make_unique<Mat>(rows, cols, false);
      foreign.assign(static_cast<std::size_t>(std::max(rows * cols, 0)), 0.0);
      owner->AttachStorage(foreign.empty() ? nullptr : foreign.data());
      break;
    case 3:  // shaped but without a block: nothing is read
      owner = std::make_unique<Mat>(rows, cols, false);
      break;
    default:  // its own block (kind 4 then loads from no file at all)
      owner = std::make_unique<Mat>(rows, cols);
      break;
  }
  Mat& m = *owner;
  const int held = m.HeldSize();
  for (int k = 0; k < held; ++k) m.m_pData[k] = fill + k;
  const std::vector<double> before(m.m_pData, m.m_pData + held);

  if (kind == 4) {
    const std::string missing = std::string(File().Path()) + ".missing/none";
    fuzz::Check(m.Load(missing.c_str()) == 0, "Load of a missing file is not 0");
    fuzz::Check(m.Load(nullptr) == 0, "Load of a null path is not 0");
    fuzz::Check(std::equal(before.begin(), before.end(), m.m_pData,
                           [](double a, double b) { return fuzz::SameBits(a, b); }),
                "a failed Load changed the matrix");
    return 0;
  }

  fuzz::Check(m.Load(File().Path()) == 1, "Load of a readable file is not 1");
  fuzz::Check(m.NRows() == rows && m.NCols() == cols && m.HeldSize() == held, "Load changed the shape");
  const std::vector<double> want = Expected(before, bytes, rows, cols);
  for (int k = 0; k < held; ++k)
    if (!fuzz::SameBits(want[k], m.m_pData[k])) fuzz::Fail("loaded element differs from the file");
  return 0;
}
