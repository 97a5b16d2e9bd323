#include "QueryMix.h"

#include <znbl64/PCExBase.h>
#include <znmt64/CCircle.h>
#include <znmt64/CLineal.h>
#include <znmt64/CMFrame.h>
#include <znmt64/CMatWriter.h>
#include <znmt64/CMovement.h>
#include <znmt64/CPlane.h>
#include <znmt64/CScalarSolver.h>
#include <znmt64/CSegment.h>
#include <znmt64/DistContext.h>
#include <znmt64/Mat.h>
#include <znmt64/MatSq.h>
#include <znmt64/Perm.h>
#include <znmt64/Polinom.h>
#include <znmt64/Rotation.h>
#include <znmt64/Tensor3.h>
#include <znmt64/Triangle3D.h>
#include <znmt64/C.h>
#include <znmt64/platform/CArchive.h>
#include <znmt64/platform/CFile.h>

#include <bit>
#include <cmath>
#include <cstdlib>
#include <stdexcept>
#include <unistd.h>

namespace {

// FNV-1a over the bit patterns of the results, so that a single changed bit shows.
class Hash {
 public:
  Hash& operator<<(double v) { return Mix(std::bit_cast<std::uint64_t>(v)); }
  Hash& operator<<(long v) { return Mix(static_cast<std::uint64_t>(v)); }
  Hash& operator<<(int v) { return Mix(static_cast<std::uint64_t>(static_cast<long>(v))); }
  Hash& operator<<(bool v) { return Mix(v ? 1 : 0); }
  Hash& operator<<(const SMat& v) { return *this << v.x << v.y << v.z; }
  Hash& operator<<(const CMFrame& f) { return *this << f.origin << f.axes[0] << f.axes[1] << f.axes[2]; }
  std::uint64_t Value() const { return m_h; }

 private:
  Hash& Mix(std::uint64_t v) {
    for (int b = 0; b < 8; ++b) m_h = (m_h ^ ((v >> (8 * b)) & 0xFF)) * 0x100000001b3ULL;
    return *this;
  }
  std::uint64_t m_h = 0xcbf29ce484222325ULL;
};

double Cubic(double x) { return (x - 0.25) * (x + 0.5) * (x - 1.5); }

}  // namespace

QueryMix::QueryMix(int seed) : m_seed(seed) {
  const char* dir = std::getenv("ZNMT64_TEST_TMP");
  m_file = std::string(dir != nullptr && *dir != '\0' ? dir : "/tmp") + "/stress-XXXXXX";
  const int fd = ::mkstemp(m_file.data());
  if (fd < 0) throw std::runtime_error("cannot create " + m_file);
  ::close(fd);
}

QueryMix::~QueryMix() { ::unlink(m_file.c_str()); }

// A value in [-4, 4) that depends on the query, the slot and the seed.
double QueryMix::Value(long i, int k) const {
  const unsigned long h = (2654435761UL * i + 40503UL * k + 9973UL * m_seed) % 65536UL;
  return static_cast<double>(h) / 8192.0 - 4.0;
}

std::uint64_t QueryMix::Run(long first, long count) {
  Hash h;
  for (long i = first; i < first + count; ++i) h << static_cast<long>(Run(i));
  return h.Value();
}

std::uint64_t QueryMix::Run(long i) {
  Hash h;
  auto v = [&](int k) { return Value(i, k); };
  const SMat p(v(0), v(1), v(2));
  const SMat q(v(3), v(4), v(5));
  const SMat r(v(6), v(7), v(8));
  switch (i % kKinds) {
    case 0: {  // dense matrices: products, inverse, determinant
      Mat a(4, 4);
      for (int k = 0; k < 16; ++k) a[k] = v(k) + (k % 5 == 0 ? 8.0 : 0.0);
      Mat b(a);
      h << a.Det() << b.Invert();
      const Mat c = a * b;
      for (int k = 0; k < 16; ++k) h << c[k];
      a.Transpose();
      h << a.Norm();
      break;
    }
    case 1: {  // a linear system
      Mat a(5, 5);
      Mat rhs(5, 1);
      for (int k = 0; k < 25; ++k) a[k] = v(k) + (k % 6 == 0 ? 12.0 : 0.0);
      for (int k = 0; k < 5; ++k) rhs[k] = v(30 + k);
      a.Solve(rhs);
      for (int k = 0; k < 5; ++k) h << rhs[k];
      break;
    }
    case 2: {  // vectors
      SMat a = p, b = q;
      a.Rotate(b, v(9));
      b.Rotate(v(10), 1 + static_cast<int>(i % 3));
      h << a << b << SMat().CrossProd(p, q) << p.IsCollinear(q, 1e-10);
      try {
        h << p.Angle(q, 1e-10);
      } catch (CMatrExeption* e) {
        e->Delete();
      }
      break;
    }
    case 3: {  // frames: building, saved states, conversions, composition, rotation
      CMFrame f;
      SMat a = q, b = r;
      h << f.SetAxes(0, a, 1, b, i % 2 == 0);
      f.origin = p;
      f.Push();
      f.Rotate(v(11), 2);
      SMat x = r;
      f.ToLocal(x);
      h << x;
      f.Pop();
      CMFrame g = f;
      g.Invert();
      h << f * g;
      Rotation rot;
      f.GetRotation(rot);
      h << static_cast<const SMat&>(rot) << rot.angle;
      break;
    }
    case 4: {  // lines
      const CLineal l(p, q), o(r, p);
      SMat a, b;
      double t[2] = {0, 0};
      h << l.Dist(o, &a, &b, t) << a << b << static_cast<int>(l.Intesect(o, a)) << l.DistConical(o, 0.7);
      CLineal pl;
      h << pl.PassPlane(p, q, r) << pl.origin << pl.dir;
      CLineal common;
      h << common.IntersectPlanes(l, o) << common.dir;
      break;
    }
    case 5: {  // planes and segments with a distance record
      const CPlane pl(CLineal(p, q));
      const CSegment s(q, r), s2(r, p);
      DistContext ctx(true, true);
      h << pl.Dist(s, ctx) << ctx.dDist << *ctx.Pt(true) << static_cast<int>(pl.GetSegmentLocation(s));
      SMat a, b;
      h << s.DistSegm(s2, &a, &b) << a << static_cast<int>(s.GetIntesection(s2, a));
      break;
    }
    case 6: {  // circles
      CCircle c(1.0 + std::fabs(v(12)));
      c.origin = p;
      c.SetDirection(q.x, q.y, q.z);
      SMat pts[2];
      h << static_cast<int>(c.IntersectPlane(CLineal(r, q + r), pts)) << pts[0] << pts[1];
      SMat near;
      h << c.FindNearestPoint(r, near) << near << c.DistPlane(CLineal(r, p));
      CArray<SMat, SMat> samples;
      samples.SetSize(8);
      h << c.GetSampling(samples);
      for (int k = 0; k < 8; ++k) h << samples[k];
      break;
    }
    case 7: {  // triangles (not GetPointLocation2: it is not reentrant)
      const SMat corners[3] = {p, q, r};
      const Triangle3D t(corners);
      const SMat in = (1.0 / 3.0) * (p + q + r);
      h << static_cast<int>(t.GetPointLocation(in)) << static_cast<int>(t.GetPtLocation3D(SMat(1, 1, 1)));
      CMFrame f;
      h << t.GetFrame(f, true) << f << t.Area();
      const CString text = t.ToString();
      h << static_cast<int>(text.GetLength());
      break;
    }
    case 8: {  // the scalar solver
      CScalarSolver s(&Cubic);
      CArray<double, double> roots;
      h << s.FindRoots(RangeR1(-2.0 + v(13) / 64.0, 2.0), roots, 0.05);
      for (INT_PTR k = 0; k < roots.GetSize(); ++k) h << roots[k];
      h << s.Integral(-1.0, 1.0 + v(14) / 16.0);
      break;
    }
    case 9: {  // permutations and tensors
      Perm pm(static_cast<short>(20 + i % 50));
      pm.Spread(static_cast<short>(3 + i % 7));
      Perm inv;
      pm.GetInverse(inv);
      for (short k = 0; k < inv.m_nLen; ++k) h << static_cast<int>(inv[k]);
      Tensor3 t(3, 4, 3);
      t = v(15);
      t.put(2, 3, p);
      SMat out;
      t.elem(out, 2, 3);
      h << out << t.Elem(1, 2, 2);
      break;
    }
    case 10: {  // XML both ways
      PCExBase out;
      out.StartStoring();
      out.PushElement("root");
      CMFrame f;
      f.origin = p;
      f.PersistXML(out);
      CLineal l(q, r);
      l.PersistXML(out);
      out.PopElement(false);
      std::string text;
      out.SaveString(text);
      PCExBase in;
      CMFrame g;
      CLineal m;
      h << in.LoadString(text.c_str()) << in.PersistElement("root", false) << g.PersistXML(in) << m.PersistXML(in);
      h << g << m.origin << m.dir;
      break;
    }
    case 11: {  // square matrices and polynomials
      MatSq m(3);
      for (int k = 0; k < 9; ++k) m[k] = v(16 + k);
      Polinom chr(3);
      m.GetCharPolinom(chr);
      for (int k = 0; k < chr.m_nSize; ++k) h << chr[k];
      C roots[2];
      h << chr.GetRoots(roots);
      h << m.Trace() << m.A(1, 2);
      break;
    }
    case 12: {  // movements
      CMovement mv;
      mv.angle = v(17);
      mv.axis = CLineal(p, q);
      mv.shift = r;
      SMat x = q;
      mv.MovePoint(x);
      CMFrame f;
      mv.Move(f);
      h << x << f;
      break;
    }
    default: {  // archive records and the raw matrix file
      {
        CFile file(m_file.c_str(), CFile::modeCreate | CFile::modeWrite);
        CArchive ar(&file, CArchive::store);
        CMatWriter w(ar);
        SMat a = p;
        CLineal l(q, r);
        w.Serialize(a);
        w.Serialize(l);
        ar.Close();
      }
      Mat m(2, 3);
      h << m.Load(m_file.c_str());
      for (int k = 0; k < 6; ++k) h << m[k];
      CFile file(m_file.c_str(), CFile::modeRead | CFile::shareDenyWrite);
      CArchive ar(&file, CArchive::load);
      CMatWriter w(ar);
      SMat a;
      CLineal l;
      w.Serialize(a);
      w.Serialize(l);
      h << a << l.origin << l.dir;
      break;
    }
  }
  return h.Value();
}
