// Perm and Tensor3 driven by a sequence of operations with arbitrary lengths and indices inside the
// domains their callers keep to: Perm entries are −1 or an index below the length, tensor indices
// lie inside the dimensions. Perm's own range tests (MultBySwap, SetLength, Spread, ShiftCyclic,
// GetFirstEmpty, SetMove) get any value at all.
#include "FuzzInput.h"

#include <znmt64/Mat.h>
#include <znmt64/Perm.h>
#include <znmt64/Tensor3.h>

#include <algorithm>
#include <vector>

namespace {

constexpr short kMaxLen = 300;

bool IsPermutation(const Perm& p) {
  std::vector<bool> seen(static_cast<std::size_t>(std::max<short>(p.m_nLen, 0)), false);
  for (short i = 0; i < p.m_nLen; ++i) {
    const short v = p[i];
    if (v < 0 || v >= p.m_nLen || seen[v]) return false;
    seen[v] = true;
  }
  return true;
}

void FuzzPerm(fuzz::Input& in) {
  Perm a(static_cast<short>(in.Int(0, kMaxLen)));
  Perm b(a.m_nLen);
  for (int step = 0; step < 48 && !in.Empty(); ++step) {
    Perm& p = in.Bool() ? a : b;
    Perm& q = &p == &a ? b : a;
    const short len = p.m_nLen;
    switch (in.Int(0, 13)) {
      case 0:
        p.SetLength(in.Integral<short>());
        break;
      case 1:
        p.SetLength(static_cast<short>(in.Int(1, kMaxLen)));
        p.Reset();
        fuzz::Check(IsPermutation(p), "Reset does not give the identity");
        break;
      case 2:
        p.Empty();
        for (short i = 0; i < p.m_nLen; ++i) fuzz::Check(p[i] == -1, "Empty left an entry");
        break;
      case 3:
        if (len > 0) p[static_cast<short>(in.Int(0, len - 1))] = static_cast<short>(in.Int(-1, len - 1));
        break;
      case 4: {
        const short from = in.Integral<short>();
        const short at = p.GetFirstEmpty(from);
        fuzz::Check(at == -1 || (at >= std::max<short>(from, 0) && at < len && p[at] == -1),
                    "GetFirstEmpty answered a place that is not empty");
        break;
      }
      case 5: {
        const bool wasPerm = IsPermutation(p);
        p.GetInverse(q);
        fuzz::Check(q.m_nLen == len || len < 1, "GetInverse did not give its length");
        if (wasPerm) {
          Perm id(len);
          id.Prod(p, q);
          for (short i = 0; i < len; ++i) fuzz::Check(id[i] == i, "inverse composed with the permutation");
        }
        break;
      }
      case 6:
        if (p.m_nLen == q.m_nLen) {
          const bool perms = IsPermutation(p) && IsPermutation(q);
          p.Prod(p, q);
          fuzz::Check(!perms || IsPermutation(p), "product of permutations is not one");
        }
        break;
      case 7:
        if (p.m_nLen == q.m_nLen) p *= in.Bool() ? q : p;
        break;
      case 8: {
        const bool wasPerm = IsPermutation(p);
        p.MultBySwap(in.Integral<short>(), in.Integral<short>());
        fuzz::Check(!wasPerm || IsPermutation(p), "MultBySwap broke a permutation");
        break;
      }
      case 9: {
        const int span = len + 2;
        p.SetMove(static_cast<short>(in.Int(-span, 2 * span)), static_cast<short>(in.Int(-span, 2 * span)),
                  static_cast<short>(in.Int(-2, span)));
        break;
      }
      case 10:
        p.ShiftCyclic(in.Integral<short>());
        break;
      case 11: {
        const short n = in.Integral<short>();
        const bool apply = len > 0 && n > 0 && n < len;
        p.Spread(n);
        if (apply) {
          fuzz::Check(IsPermutation(p), "Spread did not give a permutation");
          const int stepLen = static_cast<int>(static_cast<float>(len) / static_cast<float>(n));
          const int offset = static_cast<int>(std::ceil(static_cast<float>(stepLen) / 2.0f));
          for (int i = 0; i < n; ++i) fuzz::Check(p[static_cast<short>(i * stepLen + offset)] == i, "Spread place");
        }
        break;
      }
      case 12:
        p.Copy(q);
        fuzz::Check(q.m_nLen < 1 || (p.m_nLen == q.m_nLen && std::equal(p.m_pData, p.m_pData + p.m_nLen, q.m_pData)),
                    "Copy differs");
        break;
      default: {
        std::vector<short> src(static_cast<std::size_t>(std::max<short>(len, 0)));
        for (short& v : src) v = static_cast<short>(in.Int(-1, std::max<short>(len - 1, 0)));
        Perm c(len, src.data());
        if (len > 0) p.Copy(src.data());
        break;
      }
    }
  }
}

void FuzzTensor(fuzz::Input& in) {
  Tensor3 t;
  Tensor3 u;
  if (in.Bool()) t.SetDimensions(in.Int(0, 9), in.Int(0, 9), in.Int(0, 9));
  for (int step = 0; step < 48 && !in.Empty(); ++step) {
    const int d1 = t.m_n1, d2 = t.m_n2, d3 = t.m_n3;
    const bool has = d1 > 0 && d2 > 0 && d3 > 0;
    switch (in.Int(0, 9)) {
      case 0:
        t.SetDimensions(in.Int(0, 9), in.Int(0, 9), in.Int(0, 9));
        break;
      case 1:
        t.Reset();
        break;
      case 2:
        if (has) {
          const int i = in.Int(0, d1 - 1), j = in.Int(0, d2 - 1), k = in.Int(0, d3 - 1);
          const double v = in.Double();
          t.Elem(i, j, k) = v;
          fuzz::Check(fuzz::SameBits(t.m_pData[i * d2 + j + k * d1 * d2], v), "Elem addresses a layer");
          fuzz::Check(&t(i, j, k) == &t.Elem(i, j, k), "operator() differs from Elem");
        }
        break;
      case 3:
        t = in.Double();
        break;
      case 4:
        t *= in.Double();
        break;
      case 5:
        u.SetDimensions(d1, d2, d3);
        u = in.Double();
        if (in.Bool())
          t += u;
        else
          t -= u;
        break;
      case 6:
        if (has) {
          const int k = in.Int(1, d3);
          Mat m(d1, d2, false);
          t.GetCrossection(k, m);
          const int i = in.Int(1, d1), j = in.Int(1, d2);
          fuzz::Check(&m(i, j) == &t.Elem(i - 1, j - 1, k - 1), "a layer is not the tensor's own");
        }
        break;
      case 7:
        if (has) {
          const int a = in.Int(1, d1), b = in.Int(1, d2);
          const SMat v = in.Point();
          t.put(a, b, v);
          SMat out(7.0, 7.0, 7.0);
          t.elem(out, a, b);
          for (int c = 0; c < 3; ++c)
            fuzz::Check(c < d3 ? fuzz::SameBits(out[c], v[c]) : out[c] == 7.0, "elem does not give back put");
        }
        break;
      case 8:
        t.print();
        t.error("fuzz");
        break;
      default:
        if (has) (void)t.Elem(in.Int(0, d1 - 1), in.Int(0, d2 - 1), in.Int(0, d3 - 1));
        break;
    }
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::Input in(data, size);
  if (in.Bool())
    FuzzPerm(in);
  else
    FuzzTensor(in);
  return 0;
}
