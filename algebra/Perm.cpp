#include <znmt64/Perm.h>

#include <znbl64/ZMath.h>

#include <algorithm>
#include <cmath>
#include <numeric>

static_assert(sizeof(N3) == sizeof(ZnN3_), "N3 overlays the plain triple");

Perm::Perm(short n) {
  // Only positive lengths allocate; a negative one names no permutation.
  if (n > 0) {
    SetLength(n);
    Reset();
  }
}

Perm::Perm(short n, const short* src) {
  if (n > 0) {
    SetLength(n);
    Copy(src);
  }
}

Perm::~Perm() { delete[] m_pData; }

void Perm::SetLength(short n) {
  if (n < 1) return;
  // A shrink keeps the block but forgets its capacity, so growing back later reallocates and
  // loses the entries; callers refill after growing.
  if (m_nLen < n) {
    delete[] m_pData;
    m_pData = new short[n]();
  }
  m_nLen = n;
}

void Perm::Reset() { std::iota(m_pData, m_pData + m_nLen, short{0}); }

void Perm::Empty() { std::fill_n(m_pData, m_nLen, short{-1}); }

short Perm::GetFirstEmpty(short from) const {
  // −1 reads as the start; any other negative start is read the same way, as there is no entry
  // before the first to search.
  const short start = std::max<short>(from, 0);
  if (start >= m_nLen) return -1;
  const short* end = m_pData + m_nLen;
  const short* p = std::find(static_cast<const short*>(m_pData) + start, end, short{-1});
  return p == end ? short{-1} : static_cast<short>(p - m_pData);
}

void Perm::Copy(const short* src) { std::copy_n(src, m_nLen, m_pData); }

void Perm::Copy(const Perm& p) {
  if (&p == this) return;
  SetLength(p.m_nLen);
  std::copy_n(p.m_pData, p.m_nLen, m_pData);
}

void Perm::GetInverse(Perm& inv) {
  inv.SetLength(m_nLen);
  // An empty place (−1) has no image to invert: inv keeps whatever it held there.
  for (short i = 0; i < m_nLen; ++i) {
    const short j = m_pData[i];
    if (j >= 0 && j < inv.m_nLen) inv.m_pData[j] = i;
  }
}

void Perm::Prod(const Perm& a, const Perm& b) {
  // An entry whose image is not in b (an empty place of a, or a shorter b) keeps its value, as
  // does every entry past the end of a.
  const short n = std::min(m_nLen, a.m_nLen);
  for (short i = 0; i < n; ++i) {
    const short j = a.m_pData[i];
    if (j >= 0 && j < b.m_nLen) m_pData[i] = b.m_pData[j];
  }
}

void Perm::operator*=(const Perm& b) {
  // Through a temporary: b may be this permutation itself.
  Perm t(m_nLen);
  t.Prod(*this, b);
  Copy(t);
}

void Perm::MultBySwap(short i, short j) {
  // Negative indices are refused as well: they name no entry.
  if (i < 0 || j < 0 || i >= m_nLen || j >= m_nLen || i == j) return;
  std::swap(m_pData[i], m_pData[j]);
}

void Perm::SetMove(short from, short to, short count) {
  // Places outside the permutation are not written.
  for (int k = 0; k < count; ++k) {
    const int a = from + k, b = to + k;
    if (a >= 0 && a < m_nLen) m_pData[a] = static_cast<short>(b);
    if (b >= 0 && b < m_nLen) m_pData[b] = static_cast<short>(a);
  }
}

void Perm::ShiftCyclic(short k) {
  const int s = CZGroup::Factorize(m_nLen, k);
  if (s == 0) return;
  const short first = m_pData[0];
  // Entry i takes entry i − s in increasing order, so it reads entries already moved, and the
  // loop stops before the last entry; then entry s takes the old first one. Callers rely on these
  // steps as they are. For i < s the source would lie before the first entry: those entries keep
  // their values instead. So entry s and every entry below the last end up with old entry i mod s.
  for (int i = s; i <= m_nLen - 2; ++i) m_pData[i] = m_pData[i - s];
  m_pData[s] = first;
}

void Perm::Spread(short n) {
  if (m_nLen == 0 || n == 0 || n >= m_nLen) return;
  // Single precision with truncation, so that the places stay those callers have always had.
  const int step = static_cast<int>(static_cast<float>(m_nLen) / static_cast<float>(n));
  const int offset = static_cast<int>(std::ceil(static_cast<float>(step) / 2.0f));
  // Every old entry is overwritten, so the result is built in place.
  Empty();
  for (int i = 0; i < n; ++i) m_pData[i * step + offset] = static_cast<short>(i);
  short pos = 0;
  for (int v = n; v < m_nLen; ++v) {
    pos = GetFirstEmpty(pos);
    if (pos < 0) break;  // only a negative n asks for more values than there are places
    m_pData[pos] = static_cast<short>(v);
  }
}
