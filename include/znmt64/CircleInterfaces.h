// The circle interfaces: how the other modules of the suite reach a CCircle (CircleOI.h). The
// sixth, ISection, is the 2D module's drawing interface (znag64/Section.h).
//
// The tables are binary layouts shared with modules built separately: never reorder, insert or
// remove an operation. Each operation forwards to the CCircle operation named with it, on the
// wrapped circle: points and vectors are three doubles (x, y, z), angles radians, locations
// CCircle's codes (-1 inside the disc, 0 on the circle, 1 outside or off its plane).
//
// Status codes, common to every operation after the three of IUnknown:
//   S_OK                       done
//   S_FALSE                    the circle operation answered false (degenerate input); nothing
//                              is written
//   DISP_E_PARAMNOTOPTIONAL    a pointer argument that is not said to be optional is null
//   E_INVALIDARG               a point at the centre, where an arc measure has no angle
//   E_UNEXPECTED               the object wraps no circle
#pragma once
#include <znmt64/Config.h>
#include <znmt64/platform/Com.h>

struct IFrame3;

// {4D37E0D8-CBA3-46EE-9EC2-B60AF01B78E5}
inline constexpr IID IID_ILocation = {
    0x4D37E0D8, 0xCBA3, 0x46EE, {0x9E, 0xC2, 0xB6, 0x0A, 0xF0, 0x1B, 0x78, 0xE5}};
// {11AC41C1-C326-4E40-81F6-A76C42CA4D25}
inline constexpr IID IID_IAxis = {
    0x11AC41C1, 0xC326, 0x4E40, {0x81, 0xF6, 0xA7, 0x6C, 0x42, 0xCA, 0x4D, 0x25}};
// {99691C4D-D6E6-4F55-B9E6-B02FC4D05284}
inline constexpr IID IID_ICircle3D_Zn2 = {
    0x99691C4D, 0xD6E6, 0x4F55, {0xB9, 0xE6, 0xB0, 0x2F, 0xC4, 0xD0, 0x52, 0x84}};
// {1016826F-3907-4DD8-B3A7-0060D89AC4DD}
inline constexpr IID IID_IMetrics64 = {
    0x1016826F, 0x3907, 0x4DD8, {0xB3, 0xA7, 0x00, 0x60, 0xD8, 0x9A, 0xC4, 0xDD}};
// {1FAEFCB1-F3C8-4D37-A37D-04E76CDB80E3}
inline constexpr IID IID_IMetrics2 = {
    0x1FAEFCB1, 0xF3C8, 0x4D37, {0xA3, 0x7D, 0x04, 0xE7, 0x6C, 0xDB, 0x80, 0xE3}};
// {A638DD14-D290-4E18-BFD5-9D041D287ADC}: an interface of the quadric module about a circle.
// CircleOI does not answer it itself but asks that module (command 7 through dynaModuleMatr).
inline constexpr IID IID_QuadrCircleDelegate = {
    0xA638DD14, 0xD290, 0x4E18, {0xBF, 0xD5, 0x9D, 0x04, 0x1D, 0x28, 0x7A, 0xDC}};

// Where a point is against the object.
struct ILocation : IUnknown {
  // CCircle::GetPointLocation.
  virtual HRESULT GetPointLocation(const double* p, int* pLocn) = 0;
  // CCircle::DistPoint: the distance from p to the circle (to the disc when it stands for one);
  // nearest, optional, receives the nearest point.
  virtual HRESULT DistPoint(const double* p, double* nearest, double* pDist) = 0;
};

// The object's axis: the circle's centre and unit normal (CCircle::GetAxis).
struct IAxis : ILocation {
  virtual HRESULT GetAxis(double* origin, double* dir) = 0;
  // dir is normalised; S_FALSE, circle unchanged, for a zero dir.
  virtual HRESULT SetAxis(const double* origin, const double* dir) = 0;
};

struct ICircle3D_Zn2 : IUnknown {
  // CCircle::radius.
  virtual HRESULT GetRadius(double* pRadius) = 0;
  virtual HRESULT SetRadius(double radius) = 0;
  // CCircle::GetFrame into a new frame object of its own (count 1, the caller's): origin the
  // centre, Z the axis, X along ref (optional) made orthogonal to it. S_FALSE and *ppFrame null
  // when ref lies along the axis.
  virtual HRESULT GetFrame(const double* ref, IFrame3** ppFrame) = 0;
  // CCircle::GetSampling: n points, 3·n doubles into xyz, equally spaced counter-clockwise from
  // the X axis of GetFrame(ref) (ref optional). n < 1 writes nothing.
  virtual HRESULT GetSampling(int n, const double* ref, double* xyz) = 0;
};

// Arc measures between points of the circle.
struct IMetrics64 : IUnknown {
  // CCircle::Dist(p1, p2): the shorter arc length.
  virtual HRESULT Dist(const double* p1, const double* p2, double* pLength) = 0;
  // CCircle::GetTranslation: the arc length from p1 to p2 as the circle's other modules measure it.
  virtual HRESULT GetTranslation(const double* p1, const double* p2, double* pLength) = 0;
  // CCircle::InsideArc: p on the arc from a to b.
  virtual HRESULT InsideArc(const double* p, const double* a, const double* b, BOOL* pInside) = 0;
  // CCircle::Translate: p, in place, moved along the circle by the arc length s.
  virtual HRESULT Translate(double s, double* p) = 0;
};

struct IMetrics2 : IUnknown {
  // CCircle::IsOpposite and CCircle::IsAfter.
  virtual HRESULT IsOpposite(const double* p1, const double* p2, BOOL* pOpposite) = 0;
  virtual HRESULT IsAfter(const double* p1, const double* p2, BOOL* pAfter) = 0;
  // CCircle::GetTangent: the unit tangent at p; S_FALSE for p on the axis.
  virtual HRESULT GetTangent(const double* p, double* tangent) = 0;
};
