// The frame's members that take a line or a plane: they live with the lines, which know both
// classes.
#include <znmt64/CLineal.h>
#include <znmt64/CMFrame.h>
#include <znmt64/CPlane.h>

CMFrame::CMFrame(CLineal& l) : CMFrame() {
  SetAxisRand(2, l.dir, -1);
  origin = l.origin;
}

void CMFrame::GetAxis(int k, CLineal& l) const {
  if (k < 0 || k > 2) return;
  l.origin = origin;
  l.dir = axes[k];
}

void CMFrame::ToLocal(CLineal& l) const {
  ToLocal(l.origin);
  ToLocalVector(l.dir);
}

void CMFrame::ToGlobal(CLineal& l) const {
  ToGlobal(l.origin);
  ToGlobalVector(l.dir);
}

void CMFrame::GetPlane(int k, CLineal& l) const { GetAxis(k, l); }

void CMFrame::SetAxis(int k, const CLineal& l) {
  origin = l.origin;
  SetAxisRand(k, l.dir, -1);
}

void CMFrame::Mirror(const CPlane& p) {
  p.Mirror(origin);
  for (SMat& a : axes) p.MirrorVector(a);
}

void CMFrame::Rotate(const CLineal& axis, double angle) {
  axis.RotatePoint(origin, angle);
  Rotate(axis.dir, angle);
}
