#include <znmt64/CMFrame.h>
#include <znmt64/CMovement.h>
#include <znmt64/Rotation.h>
#include <znmt64/znmt64.h>

#include <znag64/AnGeoState.h>

#include <cmath>

#include "Demo.h"

namespace {
void Print(const char* name, const SMat& v) { std::printf("  %-28s (%9.5f, %9.5f, %9.5f)\n", name, v.x, v.y, v.z); }

void PrintFrame(const char* name, const CMFrame& f) {
  std::printf("%s (%s, %s-handed):\n", name, f.IsValid() ? "valid" : "invalid",
              f.GetOrientation() ? "right" : "left");
  Print("origin", f.origin);
  Print("X", f.axes[0]);
  Print("Y", f.axes[1]);
  Print("Z", f.axes[2]);
}
}  // namespace

void DemoFrames() {
  Section("Frames: a camera frame, local coordinates and a movement");
  // A camera at (10, -4, 6) looking at the origin, with z up: Z towards the target, Y up.
  CMFrame camera;
  camera.SetOrigin(10.0, -4.0, 6.0);
  if (!camera.LookAt(SMat(0.0, 0.0, 0.0), SMat(0.0, 0.0, 1.0), true)) {
    std::printf("LookAt failed\n");
    return;
  }
  PrintFrame("camera", camera);
  Rotation r;
  camera.GetRotation(r);
  std::printf("  its orientation: %.5f rad about (%.5f, %.5f, %.5f)\n", r.angle, r.x, r.y, r.z);

  // A point carried to the camera's coordinates and back.
  const SMat p(1.0, 2.0, 0.5);
  SMat local = p;
  camera.ToLocal(local);
  SMat back = local;
  camera.ToGlobal(back);
  Print("point", p);
  Print("in camera coordinates", local);
  Print("back in global ones", back);
  std::printf("  %.5f from the camera: %.5f along the view, %.5f off it\n", camera.origin.Dist(p), local.z,
              std::hypot(local.x, local.y));

  // Try a change and undo it with the saved-state stack.
  camera.Push();
  camera.Translate(0.0, 0.0, 5.0);  // five units along the view
  Print("5 along the view", camera.origin);
  camera.Pop();
  Print("after Pop", camera.origin);

  // A quarter turn about the vertical axis through the origin, then a lift by 1. A point moved
  // along with the camera keeps its camera coordinates.
  CMovement orbit;
  orbit.axis.dir.Set(0.0, 0.0, 1.0);
  orbit.angle = std::acos(-1.0) / 2;
  orbit.shift.Set(0.0, 0.0, 1.0);
  CMFrame moved = camera;
  orbit.Move(moved);
  PrintFrame("camera after the movement", moved);
  SMat q = p;
  orbit.MovePoint(q);
  moved.ToLocal(q);
  Print("moved point, camera coords", q);

  camera.Dump(3.0);
  const std::string svg = g_outputDir + "/frames.svg";
  std::printf("  camera axes drawn to %s: %s\n", svg.c_str(),
              AnGeoState::GetDbg()->WriteSvg(svg.c_str()) ? "written" : "not written");
}
