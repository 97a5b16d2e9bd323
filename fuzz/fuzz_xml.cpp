// XML loading through PCExBase: SMat, CMFrame, CLineal, TransformParametric and PointArray read
// themselves from an arbitrary document, at the top level or from inside an element the caller
// opened first.
//
// Checks: a load that reports failure leaves a vector, a parametric transform or a point array as
// it was; what a vector, a line, a parametric transform or a point array read, stored again and
// read back, has the same bits;
// and a valid frame, stored and read back, comes back within rounding.
#include "FuzzInput.h"

#include <znbl64/PCExBase.h>
#include <znmt64/CLineal.h>
#include <znmt64/CMFrame.h>
#include <znmt64/CMovement.h>
#include <znmt64/CSegment.h>
#include <znmt64/SMat.h>

#include <string>

namespace {

struct Objects {
  SMat v{1.0, 2.0, 3.0};
  CMFrame f;
  CLineal l;
  TransformParametric tp;
  PointArray pa;
  bool vOk = false, fOk = false, lOk = false, tpOk = false, paOk = false;
};

constexpr const char* kNames[] = {"V", "O", "A0", "Fr", "Ll", "Lc", "Dr", "TP", "Sc", "Cr", "Pa", "root"};
constexpr int kNameCount = sizeof(kNames) / sizeof(kNames[0]);

bool SameTP(const TransformParametric& a, const TransformParametric& b) {
  for (int k = 0; k < 3; ++k)
    if (!fuzz::SameBits(a.scale[k], b.scale[k]) || !fuzz::SameBits(a.center[k], b.center[k])) return false;
  return true;
}
// The objects named by the mask read or write themselves through px in its current mode.
void Persist(PCExBase& px, Objects& o, unsigned mask, const char* vName) {
  if (mask & 1) {
    const SMat before = o.v;
    o.vOk = o.v.PersistXML(px, vName);
    if (px.IsLoading() && !o.vOk) fuzz::Check(fuzz::SameBits(before, o.v), "a failed vector load changed it");
  }
  if (mask & 2) o.fOk = o.f.PersistXML(px);
  if (mask & 4) o.lOk = o.l.PersistXML(px);
  if (mask & 8) {
    const TransformParametric before = o.tp;
    o.tpOk = o.tp.PersistXML(px);
    if (px.IsLoading() && !o.tpOk) fuzz::Check(SameTP(before, o.tp), "a failed transform load changed it");
  }
  if (mask & 16) {
    const INT_PTR before = o.pa.GetSize();
    o.paOk = o.pa.PersistXML(px);
    if (px.IsLoading() && !o.paOk) fuzz::Check(o.pa.GetSize() == before, "a failed point array load changed it");
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::Input in(data, size);
  const unsigned mask = static_cast<unsigned>(in.Int(0, 31));
  const int enter = in.Int(-1, kNameCount - 1);
  const char* vName = in.Bool() ? nullptr : kNames[in.Int(0, kNameCount - 1)];
  const unsigned char dim = in.Integral<unsigned char>();
  const std::string doc = in.RestString();

  PCExBase px;
  if (!px.LoadString(doc.c_str())) {
    Objects o;
    Persist(px, o, 31, vName);  // no document: nothing may be read
    fuzz::Check(!o.vOk && !o.fOk && !o.lOk && !o.tpOk && !o.paOk, "a transfer succeeded without a document");
    return 0;
  }
  bool entered = enter >= 0 && px.PersistElement(kNames[enter], false);

  Objects o;
  o.tp.dim = dim;
  Persist(px, o, mask, vName);
  if (entered) fuzz::Check(px.PopElement(false), "the entered element cannot be left");
  px.GetChildCount();

  // Store what was read, and read it back into fresh objects.
  PCExBase out;
  out.StartStoring();
  fuzz::Check(out.PushElement("root"), "cannot open an element for storing");
  Persist(out, o, mask, vName);
  out.PopElement(false);
  std::string text;
  fuzz::Check(out.SaveString(text), "cannot save a stored document");
  PCExBase back;
  fuzz::Check(back.LoadString(text.c_str()), "a stored document does not load");
  fuzz::Check(back.PersistElement("root", false), "the stored element is missing");
  Objects again;
  again.tp.dim = dim;
  Persist(back, again, mask, vName);
  if ((mask & 1) && o.vOk) fuzz::Check(again.vOk && fuzz::SameBits(again.v, o.v), "vector round trip");
  if ((mask & 4) && o.lOk)
    fuzz::Check(again.lOk && fuzz::SameBits(again.l.origin, o.l.origin) && fuzz::SameBits(again.l.dir, o.l.dir),
                "line round trip");
  if (mask & 8) fuzz::Check(again.tpOk && SameTP(again.tp, o.tp), "transform round trip");
  if ((mask & 16) && o.paOk) {
    bool same = again.paOk && again.pa.GetSize() == o.pa.GetSize();
    for (INT_PTR k = 0; same && k < o.pa.GetSize(); ++k) same = fuzz::SameBits(again.pa[k], o.pa[k]);
    fuzz::Check(same, "point array round trip");
  }
  // Loading normalises X and Y and rebuilds Z, so a valid frame's axes come back within rounding.
  // The origin is stored as read, infinities included, where IsSame could never hold.
  if ((mask & 2) && o.fOk) {
    fuzz::Check(again.fOk, "frame element lost");
    bool same = fuzz::SameBits(again.f.origin, o.f.origin);
    for (int k = 0; k < 3; ++k) same = same && again.f.axes[k].IsSame(o.f.axes[k], 1e-12);
    if (o.f.IsValid()) fuzz::Check(same, "frame round trip");
  }
  return 0;
}
