#include <znmt64/ZnScale.h>

#include <cmath>

double ZnScale::NormMax() const {
  double m = 0.0;
  for (int k = 0; k < 3; ++k)
    if (multipliers[k] > m) m = multipliers[k];
  return m;
}

bool ZnScale::IsValid() const {
  for (int k = 0; k < 3; ++k)
    if (multipliers[k] < 1e-10 || multipliers[k] > 1000.0) return false;
  return true;
}

bool ZnScale::IsTrivialMultipliers() const {
  for (int k = 0; k < 3; ++k)
    if (std::fabs(multipliers[k] - 1.0) > 1e-10) return false;
  return frame.IsUnitary();
}

bool ZnScale::ScaleInverse(double* v) const {
  if (!IsValid()) return false;
  for (int k = 0; k < 3; ++k) v[k] /= multipliers[k];
  return true;
}

void ZnScale::Normalize(double* v) {
  const double n = SMat(v).Norm();
  if (n < 1e-10) return;
  for (int k = 0; k < 3; ++k) v[k] /= n;
}

void ZnScale::ScaleNormal(SMat& n) const {
  SMat t1;
  n.GetAnyOrthoVect(t1);
  SMat t2;
  t2.CrossProd(n, t1);
  t2.Normalize(1e-10);
  ScaleUnitary(t1);
  ScaleUnitary(t2);
  n.CrossProd(t1, t2);
}

void ZnScale::ScaleNormal(double* n) const {
  SMat v(n);
  ScaleNormal(v);
  v.GetDataCopy(n);
}

void ZnScale::SetOrientation(double x, double y, double z, double angle) {
  if (std::fabs(angle) < 1e-10) return;
  const SMat d(x, y, z);
  if (!d.IsZero(0.0)) frame.RotateLoc(d, angle);
}

void ZnScale::ChangeFrame(CMFrame& f) {
  SMat v = multipliers;
  frame.ToGlobalVector(v);
  frame.Copy(f);
  f.ToLocalVector(v);
  multipliers = v;
}

void ZnScale::Transform(CMFrame& f) {
  frame *= f;
  SMat v = multipliers;
  f.ToLocalVector(v);
  multipliers = v;
}

void ZnScale::Pop() {
  frame.Pop();
  // An unmatched Pop leaves the multipliers: there is nothing saved to restore.
  if (saved.empty()) return;
  multipliers = saved.back();
  saved.pop_back();
}
