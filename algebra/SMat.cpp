// The parts of SMat that are not worth inlining or need other modules: tolerance scaling, the 2D
// module's point, XML persistence and the diagnostic dump.
#include <znmt64/SMat.h>
#include <znmt64/NRCUtil.h>

#include <znag64/Point2D.h>
#include <znbl64/PCExBase.h>
#include <znmt64/platform/CObject.h>
#include <znmt64/platform/CString.h>

#include <algorithm>
#include <climits>
#include <cstdint>

double EpsPow(int n) {
  // Not std::pow: the tolerances must be the very doubles their literals name (EpsPow(3) == 1e-7).
  // 10^k is exact up to k = 22, and 1 / 10^k is then correctly rounded, which is the literal
  // 1e-k; n from -12 to 32 is therefore exact. Beyond that each step rounds, and the clamp only
  // keeps the loop short (the result is 0 or infinity there anyway).
  const long long k = std::clamp(static_cast<long long>(n) - 10, -400LL, 400LL);
  double p = 1.0;
  for (long long i = 0; i < (k < 0 ? -k : k); ++i) p *= 10.0;
  return k < 0 ? 1.0 / p : p;
}

void SMat::CopyTo(C2DPoint& p) const {
  p.x = x;
  p.y = y;
}

void SMat::Copy2D(C2DPoint& p) const { CopyTo(p); }

void SMat::GetAnyOrthoVect(SMat& out) const {
  // The 3x1 matrices are views of stack storage: queries that need a perpendicular (a circle's
  // nearest point on its axis, a plane's frame) allocate nothing.
  const SMat self = *this;  // out may be this
  double in[3] = {x, y, z}, other[3];
  MatView inView(3, 1, in), otherView(3, 1, other);
  inView.GetAnyNonCollinear(otherView);
  out = SMat(other);
  out.MakeOrtho(self);
  out.Normalize(1e-10);
}

namespace {
// The data item an SMat goes to when its owner names none: <Lc V="0 0 0" />.
constexpr const char* kDefaultItem = "V";
}  // namespace

bool SMat::PersistXML(PCExBase& px, const char* name) {
  return px.PersistData(name != nullptr ? name : kDefaultItem, GetBuffer(), 3);
}

bool SMat::Read3DArrayXML(PCExBase& px, const char* name, SMat* out, int count) {
  if (count < 0 || count > INT_MAX / 3 || (out == nullptr && count > 0)) return false;
  // The array's components are consecutive doubles: one item of 3 * count numbers.
  return px.PersistData(name != nullptr ? name : kDefaultItem, out != nullptr ? out->GetBuffer() : nullptr,
                        3 * count);
}

void SMat::Dump(bool bFull, bool bNewLine, const char* label, bool bNorm) const {
  const unsigned addr = static_cast<unsigned>(reinterpret_cast<std::uintptr_t>(this));
  CString text;
  text.Format(bFull ? "%s %08x (%.17g, %.17g, %.17g)" : "%s %08x (%.6f, %.6f, %.6f)",
              label != nullptr ? label : "SMat", addr, x, y, z);
  if (bNorm) text.AppendFormat(bFull ? " len %.17g" : " len %.6f", Norm());
  if (bNewLine) text.AppendFormat("\n");
  afxDump << static_cast<const char*>(text);
}

void SMat::Dp() const { Dump(true, true, nullptr, false); }
