// PointArray: the polyline of SMat points, its distance, XML and debug display.
#include <znmt64/CSegment.h>

#include <znbl64/PCExBase.h>
#include <znmt64/platform/CString.h>

#include "algebra/DebugSection.h"

#include <algorithm>
#include <climits>
#include <cmath>

namespace {
// A count read from a document is believed only up to this many points, so that a corrupt one
// cannot make the loader allocate gigabytes.
constexpr double kMaxLoadedPoints = 1 << 24;
}  // namespace

void PointArray::Set(const SMat* pts, int count) {
  if (count <= 0) {
    RemoveAll();
    return;
  }
  if (pts == nullptr) return;
  SetSize(count, -1);
  std::copy(pts, pts + count, GetData());
}

void PointArray::CopyTo(SMat* pts) const {
  if (pts != nullptr && GetSize() > 0) std::copy(GetData(), GetData() + GetSize(), pts);
}

bool PointArray::GetSegment(int i, CSegment& s) const {
  if (i < 0 || i + 1 >= GetSize()) return false;
  s.origin = GetAt(i);
  return s.SetQ(GetAt(i + 1), false);
}

double PointArray::Dist(const SMat& p, SMat* nearest) const {
  const INT_PTR n = GetSize();
  double best = 1e307;
  const INT_PTR pieces = n > 1 ? n - 1 : n;  // a single point is the segment from it to itself
  for (INT_PTR i = 0; i < pieces; ++i) {
    const CSegment s(GetAt(i), GetAt(std::min(i + 1, n - 1)));
    SMat f;
    const double d = s.Dist(p, &f, nullptr);
    if (d < best) {
      best = d;
      if (nearest != nullptr) *nearest = f;
    }
  }
  return best;
}

bool PointArray::PersistXML(PCExBase& px) {
  if (!px.PersistElement("Pa", true)) return false;
  bool done = false;
  double count = static_cast<double>(GetSize());
  if (px.PersistData("N", &count, 1) && count >= 0.0 && count <= kMaxLoadedPoints && count == std::floor(count)) {
    const int n = static_cast<int>(count);
    if (px.IsStoring()) {
      done = SMat::Read3DArrayXML(px, "P", GetData(), n);
    } else {
      // Into a scratch array first: an element that fails to load leaves the points as they were.
      PointArray loaded;
      loaded.SetSize(n, -1);
      if (SMat::Read3DArrayXML(px, "P", loaded.GetData(), n)) {
        Copy(loaded);
        done = true;
      }
    }
  }
  px.PopElement(false);
  return done;
}

ISection* PointArray::CreateDump() const {
  char caption[64];
  FormatDebugCaption(caption, "path %08x", this);
  // No index list: the section draws its points in order.
  return MakeDebugSection(GetData(), static_cast<int>(std::min<INT_PTR>(GetSize(), INT_MAX)), nullptr, 0, caption);
}

void PointArray::Dump(CDumpContext& dc) const {
  char caption[64];
  FormatDebugCaption(caption, "path %08x", this);
  dc << caption << "\n";
  for (INT_PTR i = 0; i < GetSize(); ++i) {
    CString line;
    line.Format("(%.6f, %.6f, %.6f)\n", GetAt(i).x, GetAt(i).y, GetAt(i).z);
    dc << static_cast<const char*>(line);
  }
}

void PointArray::Dp() const { ShowDebugSection(CreateDump()); }
