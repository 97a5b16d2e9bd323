#include <znmt64/Triangle3D.h>

namespace {
int Next(int i) { return CZGroup::Factorize(3, i + 1); }
int Prev(int i) { return CZGroup::Factorize(3, i - 1); }
}  // namespace

SimplPointBase::~SimplPointBase() = default;

SimplPoint::~SimplPoint() = default;

bool SimplPoint::IsNearEdge() const {
  if (IsOnEdge(false)) return false;
  // A distance of exactly 0 was snapped, and a negative one is not known: neither is "near".
  const auto isNear = [](double d) { return d > 0.0 && d < 1e-5; };
  for (int i = 0; i < 3; ++i)
    if (isNear(adSideDist[i]) || isNear(adCornerDist[i])) return true;
  return false;
}

double SimplPoint::CalcDistToSide(unsigned char i, const Triangle3D& tri) {
  if (i >= 3) return -1.0;
  if (adSideDist[i] >= 0.0) return adSideDist[i];
  CSegment side;
  tri.GetEdge(i, side);
  SMat foot;
  adSideDist[i] = side.Dist(m_pt, &foot, nullptr);
  return adSideDist[i];
}

int SimplPoint::CalcNearestSide(const Triangle3D& tri) {
  int best = 0;
  for (unsigned char i = 1; i < 3; ++i)
    if (CalcDistToSide(i, tri) < CalcDistToSide(static_cast<unsigned char>(best), tri)) best = i;
  return best;
}

unsigned char SimplPoint::GetNearestSide(unsigned char i, const Triangle3D& tri, bool bForward) {
  if (i >= 3) return i;
  const auto j = static_cast<unsigned char>(bForward ? Next(i) : Prev(i));
  const int k = bForward ? Prev(i) : Next(i);
  const double cj = adCornerDist[j];
  const bool worthComparing = (adSideDist[i] >= 0.0 && adSideDist[j] >= 0.0) ||
                              (cj >= 0.0 && (cj < 0.5 * adCornerDist[i] || cj < 0.5 * adCornerDist[k]));
  if (worthComparing && CalcDistToSide(i, tri) > CalcDistToSide(j, tri)) return j;
  return i;
}

bool SimplPoint::StickToSide(unsigned char i, const Triangle3D&) {
  if (m_eLocn == eOnSide) return false;
  m_eLocn = eOnSide;
  m_nInd = i;
  return true;
}

bool SimplPoint::StickToSideModify(unsigned char i, const Triangle3D& tri) {
  if (i >= 3) return false;
  CSegment side;
  tri.GetEdge(i, side);
  const double t = side.FindPtToLineProjection(m_pt, &m_pt);
  dSidePosn = t;
  bBarValid = false;
  const bool nearStart = t < dTol2;
  const bool nearEnd = side.length - t < dTol2;
  if (!nearStart && !nearEnd) {
    m_eLocn = eOnSide;
    m_nInd = i;
    return true;
  }
  if (m_eLocn == eAtCorner) return false;
  const int c = nearStart ? i : Next(i);
  m_eLocn = eAtCorner;
  m_nInd = c;
  m_pt = tri.m_p[c];
  return true;
}

void SimplPoint::StickToCornerModify(const Triangle3D& tri, unsigned char c) {
  if (c >= 3) return;
  m_eLocn = eAtCorner;
  m_nInd = c;
  dSidePosn = 0.0;
  m_pt = tri.m_p[c];
  bBarValid = false;
  for (int k = 0; k < 3; ++k) {
    adSideDist[k] = -1.0;
    adCornerDist[k] = k == c ? 0.0 : -1.0;
  }
}

bool SimplPoint::StickGeometry(const Triangle3D& tri, const double* cornerTol) {
  if (m_eLocn == eAtCorner) return false;
  for (int i = 0; cornerTol != nullptr && i < 3; ++i) {
    if (adCornerDist[i] >= 0.0 && adCornerDist[i] < cornerTol[i]) {
      m_eLocn = eAtCorner;
      m_nInd = i;
      dSidePosn = 0.0;
      bBarValid = false;
      return true;
    }
  }
  int side = -1;
  for (int i = 0; side < 0 && i < 3; ++i)
    if (adSideDist[i] >= 0.0 && adSideDist[i] < dTol2) side = i;
  if (side < 0) return false;
  const auto isNear = [this](int k) { return adSideDist[k] >= 0.0 && adSideDist[k] <= dTol2; };
  const int p = Prev(side);
  const int n = Next(side);
  // Near the corner the side shares with a near neighbour, the nearer of the two sides wins.
  const int candidate = isNear(n) ? n : p;
  if ((!isNear(n) && !isNear(p)) || !(adSideDist[side] > adSideDist[candidate]))
    return StickToSide(static_cast<unsigned char>(side), tri);
  return StickToSide(static_cast<unsigned char>(candidate), tri);
}
