// Properties of frames and rotations that hold for every valid frame and every turn.
#include <znmt64/CMFrame.h>
#include <znmt64/Mat.h>
#include <znmt64/MatSq.h>
#include <znmt64/Rotation.h>
#include <znmt64/SMat.h>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "Generators.h"

namespace {

// Rounding of a few operations on values of that size.
double Rounding(double size) { return 1e-13 * (1.0 + size); }

}  // namespace

RC_GTEST_PROP(FrameProperty, ToLocalThenToGlobalGivesThePointBack, ()) {
  const CMFrame f = prop::ValidFrame();
  const SMat p0 = *prop::Point(prop::Coordinate(1e4));
  SMat p = p0;
  f.ToLocal(p);
  f.ToGlobal(p);
  RC_ASSERT(p.DistMax(p0) <= Rounding(p0.Norm() + f.origin.Norm()));

  SMat v = p0;
  f.ToGlobalVector(v);
  f.ToLocalVector(v);
  RC_ASSERT(v.DistMax(p0) <= Rounding(p0.Norm()));
}

RC_GTEST_PROP(FrameProperty, ConversionsKeepDistances, ()) {
  const CMFrame f = prop::ValidFrame();
  const SMat a0 = *prop::Point(prop::Coordinate(1e3));
  const SMat b0 = *prop::Point(prop::Coordinate(1e3));
  SMat a = a0, b = b0;
  f.ToLocal(a);
  f.ToLocal(b);
  RC_ASSERT(std::fabs(a.Dist(b) - a0.Dist(b0)) <= Rounding(a0.Norm() + b0.Norm() + f.origin.Norm()));
}

RC_GTEST_PROP(FrameProperty, InverseComposedWithTheFrameIsTheIdentity, ()) {
  const CMFrame f = prop::ValidFrame();
  CMFrame inv = f;
  inv.Invert();
  const double tol = Rounding(f.origin.Norm()) * 10.0;
  for (CMFrame id : {f * inv, inv * f}) {
    RC_ASSERT(id.origin.IsZero(tol));
    id.origin.SetAll(0.0);
    RC_ASSERT(id.IsSame(CMFrame(), 1e-13));  // the axes
  }
  // The inverse undoes the frame on points as well.
  const SMat p0 = *prop::Point(prop::Coordinate(1e3));
  SMat p = p0;
  f.ToGlobal(p);
  inv.ToGlobal(p);
  RC_ASSERT(p.DistMax(p0) <= Rounding(p0.Norm() + f.origin.Norm()) * 10.0);
}

RC_GTEST_PROP(RotationProperty, TurnsKeepLengths, ()) {
  const SMat v0 = *prop::Point(prop::Coordinate(1e3));
  const double angle = *prop::Coordinate(20.0);
  const double tol = Rounding(v0.Norm());

  SMat v = v0;
  v.Rotate(angle, *rc::gen::inRange(1, 4));
  RC_ASSERT(std::fabs(v.Norm() - v0.Norm()) <= tol);

  const SMat axis = *prop::Direction();
  v = v0;
  v.Rotate(axis, angle);
  RC_ASSERT(std::fabs(v.Norm() - v0.Norm()) <= tol);
  // About its own axis a vector does not move.
  SMat along = axis;
  along.Rotate(axis, angle);
  RC_ASSERT(along.DistMax(axis) <= 1e-15);

  // Through the rotation matrix as well, whose axis must be unit: FindRotation takes it as given.
  SMat unit = axis;
  unit.Normalize(1e-10);
  Mat ax(3, 1);
  for (int k = 0; k < 3; ++k) ax[k] = unit[k];
  MatSq m(3);
  m.FindRotation(angle, ax);
  v.Mult(m, v0);
  RC_ASSERT(std::fabs(v.Norm() - v0.Norm()) <= tol);
}

RC_GTEST_PROP(RotationProperty, TurnedFramesStayValidAndRigid, ()) {
  CMFrame f = prop::ValidFrame();
  const SMat a0 = *prop::Point(prop::Coordinate(1e3));
  const SMat b0 = *prop::Point(prop::Coordinate(1e3));
  const double angle = *prop::Coordinate(20.0);
  switch (*rc::gen::inRange(0, 3)) {
    case 0: f.Rotate(angle, *rc::gen::inRange(0, 3)); break;
    case 1: f.Rotate(*prop::Direction(), angle); break;
    default: {
      const SMat axis = *prop::Direction();
      f.Rotate(Rotation(axis.x, axis.y, axis.z, angle));
    }
  }
  RC_ASSERT(f.IsValid());
  SMat a = a0, b = b0;
  f.ToGlobal(a);
  f.ToGlobal(b);
  RC_ASSERT(std::fabs(a.Dist(b) - a0.Dist(b0)) <= Rounding(a0.Norm() + b0.Norm() + f.origin.Norm()) * 10.0);
}
