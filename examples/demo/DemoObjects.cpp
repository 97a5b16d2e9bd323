#include <znmt64/CMFrame.h>
#include <znmt64/CMatWriter.h>
#include <znmt64/FrameOI.h>
#include <znmt64/znmt64.h>

#include <string>

#include "Demo.h"

namespace {

void Print(const char* name, const SMat& v) { std::printf("  %-24s (%9.5f, %9.5f, %9.5f)\n", name, v.x, v.y, v.z); }

void PrintRows(const char* name, const Mat& m) {
  std::printf("%s:\n", name);
  for (int r = 1; r <= m.NRows(); ++r) {
    std::printf("  ");
    for (int c = 1; c <= m.NCols(); ++c) std::printf("%8.3f", m(r, c));
    std::printf("\n");
  }
}

// The record of f, written to path and read back into a fresh frame.
bool FrameRecordRoundTrip(const std::string& path, CMFrame& f, CMFrame& back) {
  try {
    {
      CFile file(path.c_str(), CFile::modeCreate | CFile::modeWrite);
      CArchive ar(&file, CArchive::store);
      CMatWriter(ar).Serialize(f);
      ar.Close();
    }
    CFile file(path.c_str(), CFile::modeRead);
    CArchive ar(&file, CArchive::load);
    CMatWriter(ar).Serialize(back);
    return true;
  } catch (CException* e) {
    char msg[256];
    e->GetErrorMessage(msg, sizeof msg);
    std::printf("  the record failed: %s\n", msg);
    e->Delete();
    return false;
  }
}

}  // namespace

void DemoObjects() {
  Section("Matrix files, archive records and a frame through IFrame3");
  // The raw file is column-major and has no header: the reader shapes the matrix first.
  Mat m(2, 3);
  for (int k = 0; k < 6; ++k) m[k] = k + 1;
  PrintRows("m", m);
  const int written = m.Send2F(g_outputDir.c_str(), "demo_matrix.bin", 56);
  std::printf("Send2F wrote %d elements to %s/demo_matrix.bin\n", written, g_outputDir.c_str());
  Mat back(2, 3);
  std::printf("Load returned %d\n", back.Load((g_outputDir + "/demo_matrix.bin").c_str()));
  PrintRows("read back", back);
  Mat wide(3, 2);
  wide.Load((g_outputDir + "/demo_matrix.bin").c_str());
  PrintRows("the same file read as 3x2", wide);

  // A frame record holds the origin, X and Y; Z is rebuilt as -(X x Y) on reading.
  CMFrame f;
  f.SetOrigin(1.0, 2.0, 3.0);
  f.Rotate(SMat(0.0, 0.0, 1.0), 0.5);
  CMFrame g;
  const std::string record = g_outputDir + "/demo_frame.rec";
  std::printf("frame record: %u bytes, %s\n", CMatWriter::GetStorageSize(CMatWriter::eFrame), record.c_str());
  if (FrameRecordRoundTrip(record, f, g)) {
    Print("written X", f.axes[0]);
    Print("read X", g.axes[0]);
    Print("written Z", f.axes[2]);
    Print("read Z (reversed)", g.axes[2]);
  }

  // Another module sees the frame only through its interfaces.
  IUnknown* obj = FrameOI::Create(f);
  IFrame3* f3 = nullptr;
  if (obj == nullptr || obj->QueryInterface(IID_IFrame3, reinterpret_cast<void**>(&f3)) != S_OK) {
    std::printf("no IFrame3\n");
    if (obj != nullptr) obj->Release();
    return;
  }
  obj->Release();  // f3 keeps the object alive
  double x, y, z;
  f3->GetOrigin(&x, &y, &z);
  std::printf("through IFrame3: origin (%g, %g, %g)\n", x, y, z);
  f3->Translate(1.0, 0.0, 0.0);  // one unit along the frame's own X
  double p[3] = {0.0, 0.0, 0.0};
  f3->ToGlobal(p);
  std::printf("after a local move along X, the local origin lies at (%.5f, %.5f, %.5f)\n", p[0], p[1], p[2]);
  BOOL right = FALSE;
  f3->GetOrientation(&right);
  std::printf("right-handed: %s; the wrapped frame moved too: origin.x = %.5f\n", right ? "yes" : "no", f.origin.x);
  std::printf("last Release returns %u\n", static_cast<unsigned>(f3->Release()));
}
