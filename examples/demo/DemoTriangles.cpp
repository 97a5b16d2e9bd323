#include <znmt64/CCircle.h>
#include <znmt64/Triangle3D.h>

#include <znag64/AnGeoState.h>

#include "Demo.h"

namespace {

const char* LocationName(SimplPointBase::ELocn l) {
  static const char* const kNames[] = {"inside",  "on side",   "at corner",   "near side",
                                       "outside", "too thin", "off the plane", "undetermined"};
  return kNames[l];
}

void PrintPoint(const char* name, const SMat& p) { std::printf("  %-22s (%8.4f, %8.4f, %8.4f)", name, p.x, p.y, p.z); }

// A plane as the circle queries read a line: the plane through p with normal n.
CLineal Plane(const SMat& p, const SMat& n) {
  CLineal l(n);
  l.origin = p;
  return l;
}

}  // namespace

void DemoTriangles() {
  Section("Triangles and circles: point location, snapping, circle-plane intersections");
  AnGeoState::GetDbg()->Clear();  // the picture shows this section's scene only

  // A triangle cutting the three coordinate axes.
  const SMat corners[3] = {SMat(2, 0, 0), SMat(0, 3, 0), SMat(0, 0, 1.5)};
  const Triangle3D tri(corners);
  SMat n;
  tri.GetNormal(n, 1e-10);
  std::printf("triangle %s\n  parallelogram area %.6f, unit normal (%.6f, %.6f, %.6f)\n", tri.ToString().GetString(),
              tri.Area(), n.x, n.y, n.z);

  SMat centroid;
  tri.GetPointBaricentr(1, 1, 1, centroid);
  SMat midSide;
  tri.GetPointBaricentr(0, 1, 1, midSide);  // the middle of side 1
  const struct {
    const char* name;
    SMat p;
  } probes[] = {{"centroid", centroid},
                {"middle of side 1", midSide},
                {"corner 2", corners[2]},
                {"centroid, 1e-3 above", centroid + 1e-3 * n},
                {"beyond side 0", corners[0] + corners[1] - centroid}};
  for (const auto& probe : probes) {
    SimplPoint sp(probe.p);
    sp.bSidePosn = true;
    const SimplPointBase::ELocn code = tri.GetPointLocation2(sp);
    PrintPoint(probe.name, probe.p);
    std::printf(" -> %d %s", static_cast<int>(code), LocationName(code));
    if (sp.m_nInd >= 0) std::printf(" %d", sp.m_nInd);
    if (code != SimplPointBase::eOffPlane)
      std::printf(", sides %.4f %.4f %.4f away", sp.adSideDist[0], sp.adSideDist[1], sp.adSideDist[2]);
    std::printf("\n");
  }

  // A point on side 0, 1e-4 from corner 0: within the snapping tolerance 2e-4 it becomes the corner.
  SMat along = corners[1] - corners[0];
  along.Normalize(1e-10);
  SimplPoint hair(corners[0] + 1e-4 * along);
  tri.GetPointLocation2(hair);
  PrintPoint("1e-4 from corner 0", hair.m_pt);
  std::printf(" -> %s %d", LocationName(hair.m_eLocn), hair.m_nInd);
  hair.StickToSideModify(0, tri);
  std::printf(", snapped: %s %d at (%.4f, %.4f, %.4f)\n", LocationName(hair.m_eLocn), hair.m_nInd, hair.m_pt.x,
              hair.m_pt.y, hair.m_pt.z);

  // The circle through the corners, and another one cut by planes.
  CCircle around;
  if (around.DefineFromThreePoints(corners)) {
    around.radius = around.origin.Dist(corners[0]);  // the three-point fit leaves the radius to us
    PrintPoint("circumcircle centre", around.origin);
    std::printf(", radius %.6f\n", around.radius);
  }
  CCircle c(2.0);
  c.origin.Set(1, 1, 0);
  std::printf("circle of radius 2 about (1, 1, 0), axis z, against planes:\n");
  const struct {
    const char* name;
    CLineal plane;
  } planes[] = {{"x = 2", Plane(SMat(2, 0, 0), SMat(1, 0, 0))},
                {"x = 3", Plane(SMat(3, 0, 0), SMat(1, 0, 0))},
                {"x = 4", Plane(SMat(4, 0, 0), SMat(1, 0, 0))},
                {"z = 0", Plane(SMat(0, 0, 0), SMat(0, 0, 1))},
                {"z = 1", Plane(SMat(0, 0, 1), SMat(0, 0, 1))}};
  for (const auto& pl : planes) {
    SMat pts[2];
    const unsigned char count = c.IntersectPlane(pl.plane, pts);
    std::printf("  %-6s %d%s", pl.name, count, count == 3 ? " (the circle lies in it)" : "");
    for (int k = 0; k < count && count < 3; ++k) std::printf("  (%.4f, %.4f, %.4f)", pts[k].x, pts[k].y, pts[k].z);
    std::printf("\n");
  }

  tri.Dp();
  around.Dp();
  c.Dp();
  const std::string svg = g_outputDir + "/triangles.svg";
  std::printf("  triangle and circles drawn to %s: %s\n", svg.c_str(),
              AnGeoState::GetDbg()->WriteSvg(svg.c_str()) ? "written" : "not written");
  AnGeoState::GetDbg()->Clear();  // nor the later sections' pictures
}
