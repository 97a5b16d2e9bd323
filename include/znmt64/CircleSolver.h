// CircleSolver: the nearest approach of a circle to another object, searched over one angle.
//
// The point of the moving circle is P(t) = c + r·(cos t·X + sin t·Y), with (c; X, Y, Z) the frame
// of CCircle::GetFrame whose X comes from the coordinate axis least along the circle's axis (the
// first of equal ones), and r the absolute radius. The target is another circle (its exact
// nearest point, CCircle::FindNearestPoint), a filled disc (FindNearestDiscPoint), an unbounded
// line, or a segment (its clamped nearest point). The solver keeps its own copies of both objects,
// with their directions normalised and radii taken by absolute value.
//
// The objective, GetExtremFuncVal(t), is the squared distance from P(t) to the target: unlike the
// distance it stays smooth where it reaches 0. GetSolverBrentMethodFunctValue(t) is its exact
// slope 2·(P - Q)·P'(t), Q the target's nearest point (Q moves too, but the distance is
// stationary in Q). The slope is continuous for every target except a circle whose axis P
// crosses; there the objective has a ridge, never a valley.
//
// Solve:
//   1. Closed forms, where the objective is flat or the problem is a plane one:
//      - a moving circle of radius below 1e-10 is its centre;
//      - a target that every turn about the axis maps onto itself (a coaxial circle or disc, a
//        line or segment along the axis, a point on it): every point of the circle is as near,
//        and the one at t = 0 is taken;
//      - a circle or disc in a parallel plane: the nearest approach of the two in the plane,
//        along the line of the centres or at the crossings of the circles.
//   2. Otherwise kSamples angles over a turn, each interval between neighbours looked at in turn:
//      - where the nearest point on a target circle turns by more than 45 degrees about its
//        centre, P runs close to that circle's axis, where the objective changes faster than the
//        samples see: the interval is divided and each part looked at the same way;
//      - a slope going from negative to positive brackets a local minimum, refined by Brent's
//        method on the slope, or, should Brent give up, by GetExtrem's bisection of the difference
//        quotient;
//      - slopes of one sign at both ends may still hide a minimum next to a maximum: the cubic
//        through the end values and slopes says where the slope would turn, a sample there
//        settles it, and an unsettled interval is halved there and looked at again.
//      The least local minimum wins (the least sample when no interval brackets one). Subdivision
//      stops four levels down.
//   The angles run over [π, 3π) rather than [0, 2π): Brent's step tolerance is relative to the
//   abscissa and would never be met by a root at 0. Reported angles are in [0, 2π).
//
// Nothing is allocated: the samples live on the stack and the state stack is never pushed.
#pragma once
#include <znmt64/Config.h>

#include <znmt64/CCircle.h>
#include <znmt64/CLineal.h>
#include <znmt64/CMFrame.h>
#include <znmt64/CScalarSolver.h>
#include <znmt64/CSegment.h>
#include <znmt64/SMat.h>

class ZNMT64_API CircleSolver : public CScalarSolver {
 public:
  enum ETarget { eTargetNone = 0, eTargetCircle = 1, eTargetDisk = 2, eTargetLine = 3, eTargetSegment = 4 };
  static constexpr int kSamples = 32;

  // No target yet. Brent's method runs to dEps 1e-15 (a few ulps of the angle) and, with dTol 0,
  // only an exactly zero slope is a root at an interval end.
  explicit CircleSolver(const CCircle& moving);

  // The target, replacing the previous one. The disc flag, not o.bDisk, says what o stands for.
  void SetCircle(const CCircle& o, bool disk);
  // line is read as a line whatever class it is (a plane's or a segment's own distances are not
  // used).
  void SetLine(const CLineal& line);
  // A segment shorter than 1e-10 is its start point.
  void SetSegment(const CSegment& s);

  // False for a moving circle or target that needs an axis or a direction and has none (shorter
  // than 1e-10), and before a target is set.
  bool IsValid() const { return m_bMoving && m_bTarget; }
  ETarget GetTarget() const { return m_eTarget; }

  // P(t), any t.
  void GetPoint(double t, SMat& p) const;
  // Distance from p to the target, q its nearest point there.
  double DistTarget(const SMat& p, SMat& q) const;

  // Squared distance from P(t) to the target; 1e307 without a valid target.
  double GetExtremFuncVal(double t) const override;
  // d/dt of GetExtremFuncVal, exact; 0 without a valid target.
  double GetSolverBrentMethodFunctValue(double t) override;

  // The least distance from the moving circle to the target: p1 on the circle, p2 on the target,
  // *t the angle of p1 in [0, 2π), *count 1 when p1 is the only nearest point of the circle and 2
  // when there are more (isolated points within 1e-9·(1 + distance) of the least, an arc, or the
  // whole circle). Without a valid target: 1e307, *count 0, nothing else written.
  double Solve(SMat* p1 = nullptr, SMat* p2 = nullptr, int* count = nullptr, double* t = nullptr);

 private:
  // Distance at t, P(t) and the target's point; *slope the objective's derivative.
  double Eval(double t, SMat& p, SMat& q, double* slope) const;
  double AxisDist(const SMat& p) const;
  bool AlongAxis(const SMat& d) const { return d.IsCollinear(m_frame.axes[2], 1e-10); }
  // Step 1 of Solve: the point of the circle to take, and the count; false when none applies.
  bool ClosedForm(SMat& p, int& count) const;
  // Step 2 of Solve: the angle of the least local minimum found.
  double Search(int& count);

  CMFrame m_frame;
  double m_r;
  bool m_bMoving;          // the moving circle has a plane to turn in (or is a point)
  bool m_bTarget = false;  // a target is set and has the axis or direction it needs
  ETarget m_eTarget = eTargetNone;
  CCircle m_other;
  CLineal m_line;
  CSegment m_seg;
};
