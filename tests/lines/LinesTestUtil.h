// Helpers of the tests of lines, planes, segments and point arrays.
#pragma once
#include <znmt64/CLineal.h>

#include <gtest/gtest.h>
#include <znbl64/PCExBase.h>

#include <cmath>
#include <string>

// v is (x, y, z) within tol; usable inside a larger condition.
inline ::testing::AssertionResult Near(const SMat& v, double x, double y, double z, double tol = 1e-15) {
  if (std::fabs(v.x - x) <= tol && std::fabs(v.y - y) <= tol && std::fabs(v.z - z) <= tol)
    return ::testing::AssertionSuccess();
  return ::testing::AssertionFailure() << "(" << v.x << ", " << v.y << ", " << v.z << ")";
}

// Writes from as XML (its text to *xml when given) and reads it back into to.
template <class T>
bool XmlRoundTrip(T& from, T& to, std::string* xml = nullptr) {
  PCExBase out, in;
  std::string text;
  out.StartStoring();
  if (!from.PersistXML(out) || !out.SaveString(text)) return false;
  if (xml != nullptr) *xml = text;
  return in.LoadString(text.c_str()) && to.PersistXML(in);
}

// The line through (px, py, pz) along (dx, dy, dz) normalised.
inline CLineal Line(double px, double py, double pz, double dx, double dy, double dz) {
  CLineal l(dx, dy, dz);
  l.SetOrigin(px, py, pz);
  return l;
}
