#include <znmt64/CPlane.h>
#include <znmt64/CSegment.h>
#include <znmt64/DistContext.h>
#include <znmt64/znmt64.h>

#include <znag64/AnGeoState.h>

#include "Demo.h"

namespace {
void Print(const char* name, const SMat& v) { std::printf("  %-30s (%9.5f, %9.5f, %9.5f)\n", name, v.x, v.y, v.z); }
}  // namespace

void DemoLines() {
  Section("Lines and planes: the distance between a plane and a segment");
  // A plane through (0, 0, 1) tilted towards x, and a segment above it.
  CLineal normal(-1.0, 0.0, 4.0);  // normalised by the constructor
  normal.SetOrigin(0.0, 0.0, 1.0);
  const CPlane plane(normal);
  const CSegment segment(SMat(-2.0, -1.0, 4.0), SMat(3.0, 2.0, 2.5));
  SMat q;
  segment.GetQ(q);
  Print("plane point", plane.origin);
  Print("plane normal", plane.dir);
  Print("segment P", segment.origin);
  Print("segment Q", q);
  std::printf("  segment against plane: code %d (5: above it)\n", static_cast<int>(plane.GetSegmentLocation(segment)));

  // The caller asks for both nearest points and owns the record.
  DistContext ctx;
  ctx.SetNeed(true, true);
  const double d = plane.Dist(segment, ctx);
  std::printf("  distance %.10f (best so far %.10f)\n", d, ctx.dDist);
  Print("nearest point on the plane", *ctx.Pt(true));
  Print("nearest point of the segment", *ctx.Pt(false));

  // Only the ends are measured: a segment through the plane still gets its nearer end's distance.
  const CSegment through(SMat(0.0, 0.0, -1.0), SMat(0.5, 0.0, 3.0));
  DistContext ctx2;
  std::printf("  a segment through the plane: %.10f, by its ends (code %d: crossing)\n", plane.Dist(through, ctx2),
              static_cast<int>(plane.GetSegmentLocation(through)));

  // The scene for a person to look at: the plane as a disc, the segment, and the shortest link.
  Dbg3D& dbg = *AnGeoState::GetDbg();
  dbg.Clear();  // this picture shows this scene only
  plane.Dp(4.0);
  segment.Dp();
  PointArray link;
  link.Add(*ctx.Pt(true));
  link.Add(*ctx.Pt(false));
  link.Dp();
  const std::string svg = g_outputDir + "/lines.svg";
  std::printf("  plane, segment and nearest points drawn to %s: %s\n", svg.c_str(),
              dbg.WriteSvg(svg.c_str()) ? "written" : "not written");
}
