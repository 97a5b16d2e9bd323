#include <znmt64/CMFrame.h>
#include <znmt64/CMovement.h>
#include <znmt64/ZnScale.h>

#include <znag64/Point2D.h>
#include <znbl64/PCExBase.h>

#include <algorithm>
#include <cmath>

void CMovement::Reset() {
  angle = 0.0;
  axis.dir.Set(1.0, 0.0, 0.0);
  shift.SetAll(0.0);
}

void CMovement::MovePoint(SMat& p) const {
  if (!IsTranslation()) axis.RotatePoint(p, angle);
  p += shift;
}

void CMovement::MovePoint(double* p) const {
  SMat q(p);
  MovePoint(q);
  q.GetDataCopy(p);
}

void CMovement::Move(CMFrame& f) const {
  if (!IsTranslation()) f.Rotate(axis, angle);
  SMat s = shift;
  f.ToLocalVector(s);
  f.Translate(s.x, s.y, s.z);
}

void CMovement::MoveLoc(CMFrame& f) const {
  f.Translate(shift.x, shift.y, shift.z);
  if (!IsTranslation()) f.RotateLoc(axis.dir, angle);
}

void CMovement::MakeLocal(CMFrame& f) {
  f.ToLocal(axis);
  f.ToLocal(shift);
}

void TransformParametric::Transform(C2DPoint& p) const {
  p.x += shift.x;
  p.y += shift.y;
  const C2DPoint c(center.x, center.y);
  p -= c;
  p.Rotate(angle);
  p.x *= scale[0];
  p.y *= scale[1];
  p += c;
}

void TransformParametric::Transform(double* p) const {
  C2DPoint q(p[0], p[1]);
  Transform(q);
  p[0] = q.x;
  p[1] = q.y;
}

bool TransformParametric::PersistXML(PCExBase& x) {
  const int n = std::min<int>(dim, 3);
  if (x.IsStoring()) {
    if (!x.PushElement("TP")) return false;
    x.PushData("Sc", scale, n);
    x.PushData("Cr", center.GetBuffer(), n);
    x.PopElement(false);
    return true;
  }
  if (!x.IsLoading()) return false;
  const PCElem cur = x.GetCurElem();
  if (!cur) return false;
  const PCElem tp = x.FindChildElem(cur, "TP");
  if (!tp || !x.Push(tp)) return false;
  x.ReadData("Sc", scale, n, true);
  x.ReadData("Cr", center.GetBuffer(), n, true);
  x.PopElement(false);
  return true;
}

// The scale's frame moves in its own terms; the multipliers turn with it as a direction.
void ZnScale::Transform(CMovement& m) {
  m.MoveLoc(frame);
  m.MoveVect(multipliers);
}
