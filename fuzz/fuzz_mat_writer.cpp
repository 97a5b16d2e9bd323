// CMatWriter reading every record type from arbitrary archive bytes: a CArchive in load mode over
// a CFile on a scratch file, as a caller reads a record file. The sequence of record types comes
// from the input too, including a value outside the enumeration, and may end with an array of
// planes or points whose element count comes from the archive.
//
// Checks: a record read whole holds the file's bytes bit for bit (the frame its origin); a short
// archive throws the archive's exception and leaves the object as it was; what was read, written
// back through a storing archive, takes exactly GetStorageSize bytes per record and reads back the
// same (a frame is rebuilt on loading, so its origin only).
#include "FuzzInput.h"

#include <znmt64/CLineal.h>
#include <znmt64/CMFrame.h>
#include <znmt64/CMatWriter.h>
#include <znmt64/CPlane.h>
#include <znmt64/CSegment.h>
#include <znmt64/platform/CArchive.h>
#include <znmt64/platform/CFile.h>

#include <vector>

namespace {

const fuzz::ScratchFile& InFile() {
  static const fuzz::ScratchFile file;
  return file;
}
const fuzz::ScratchFile& OutFile() {
  static const fuzz::ScratchFile file;
  return file;
}

// Beyond the writer's own record types (4 being none of them): the arrays that callers serialize
// through the same archive, whose element count is read from it.
constexpr int kArrayOfPlanes = 5;
constexpr int kArrayOfPoints = 6;

// One record of each type; the frame and line start from values a short read must not disturb.
struct Records {
  SMat v{0.25, -0.5, 4.0};
  CLineal l{SMat(1.0, 2.0, 3.0), SMat(1.0, 2.0, 4.0)};
  PlaneEqn e{0.0, 0.0, 1.0, -2.0};
  CMFrame f;

  Records() { f.SetOrigin(5.0, 6.0, 7.0); }
};

bool SameBits(const CLineal& a, const CLineal& b) {
  return fuzz::SameBits(a.origin, b.origin) && fuzz::SameBits(a.dir, b.dir);
}
bool SameBits(const PlaneEqn& a, const PlaneEqn& b) {
  return fuzz::SameBits(a.a, b.a) && fuzz::SameBits(a.b, b.b) && fuzz::SameBits(a.c, b.c) &&
         fuzz::SameBits(a.d, b.d);
}
bool SameBits(const CMFrame& a, const CMFrame& b) {
  return fuzz::SameBits(a.origin, b.origin) && fuzz::SameBits(a.axes[0], b.axes[0]) &&
         fuzz::SameBits(a.axes[1], b.axes[1]) && fuzz::SameBits(a.axes[2], b.axes[2]);
}

double At(const std::vector<std::uint8_t>& bytes, std::size_t offset) {
  double d;
  std::memcpy(&d, bytes.data() + offset, sizeof d);
  return d;
}
SMat VectorAt(const std::vector<std::uint8_t>& bytes, std::size_t offset) {
  return SMat(At(bytes, offset), At(bytes, offset + 8), At(bytes, offset + 16));
}

// What a record of type t at offset holds, in the fields the record fills (a frame: its origin).
Records FromBytes(const std::vector<std::uint8_t>& bytes, std::size_t offset, int t) {
  Records r;
  switch (t) {
    case CMatWriter::eVector: r.v = VectorAt(bytes, offset); break;
    case CMatWriter::eLine:
      r.l.origin = VectorAt(bytes, offset);
      r.l.dir = VectorAt(bytes, offset + 24);
      break;
    case CMatWriter::eFrame: r.f.origin = VectorAt(bytes, offset); break;
    case CMatWriter::ePlaneEqn:
      r.e = PlaneEqn(At(bytes, offset), At(bytes, offset + 8), At(bytes, offset + 16), At(bytes, offset + 24));
      break;
    default: break;
  }
  return r;
}

// Serialize for type t on r; true when the record was read or written whole.
bool Transfer(CMatWriter& w, Records& r, int t) {
  switch (t) {
    case CMatWriter::eVector: w.Serialize(r.v); return true;
    case CMatWriter::eLine: w.Serialize(r.l); return true;
    case CMatWriter::eFrame: w.Serialize(r.f); return true;
    case CMatWriter::ePlaneEqn: w.Serialize(r.e); return true;
    default: return false;
  }
}

bool SameRecord(const Records& a, const Records& b, int t, bool wholeFrame) {
  switch (t) {
    case CMatWriter::eVector: return fuzz::SameBits(a.v, b.v);
    case CMatWriter::eLine: return SameBits(a.l, b.l);
    case CMatWriter::eFrame: return wholeFrame ? SameBits(a.f, b.f) : fuzz::SameBits(a.f.origin, b.f.origin);
    case CMatWriter::ePlaneEqn: return SameBits(a.e, b.e);
    default: return true;
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::Input in(data, size);
  std::vector<int> types(static_cast<std::size_t>(in.Int(1, 8)));
  for (int& t : types) t = in.Int(0, kArrayOfPoints);
  const std::vector<std::uint8_t> bytes = in.RestBytes();
  InFile().Write(bytes.data(), bytes.size());

  std::vector<Records> got(types.size());
  std::vector<bool> whole(types.size(), false);
  {
    CFile file(InFile().Path(), CFile::modeRead | CFile::shareDenyWrite | CFile::typeBinary);
    CArchive ar(&file, CArchive::load);
    CMatWriter w(ar);
    std::size_t offset = 0;
    for (std::size_t i = 0; i < types.size(); ++i) {
      const int t = types[i];
      const unsigned need = CMatWriter::GetStorageSize(static_cast<CMatWriter::EObjectType>(t));
      if (t >= kArrayOfPlanes) {
        // Last in the sequence: what it consumes depends on the count it reads.
        try {
          if (t == kArrayOfPlanes) {
            PlaneArray planes;
            planes.Serialize(ar);
          } else {
            PointArray points;
            points.Serialize(ar);
          }
        } catch (CArchiveException* e) {
          e->Delete();
        }
        types.resize(i + 1);
        break;
      }
      const Records before = got[i];
      try {
        whole[i] = Transfer(w, got[i], t);
      } catch (CArchiveException* e) {
        e->Delete();
        fuzz::Check(offset + need > bytes.size(), "a complete record threw");
        fuzz::Check(SameRecord(before, got[i], t, true), "a short read changed the object");
        break;  // the archive is spent
      }
      fuzz::Check(whole[i] == (need > 0), "GetStorageSize disagrees with the record types");
      fuzz::Check(offset + need <= bytes.size(), "a record was read past the end of the archive");
      if (need > 0) fuzz::Check(SameRecord(FromBytes(bytes, offset, t), got[i], t, false), "a record differs from its bytes");
      offset += need;
    }
    ar.Close();
  }

  // Write what was read and read it back.
  std::size_t expected = 0;
  {
    CFile file(OutFile().Path(), CFile::modeCreate | CFile::modeWrite | CFile::typeBinary);
    CArchive ar(&file, CArchive::store);
    CMatWriter w(ar);
    for (std::size_t i = 0; i < types.size(); ++i)
      if (whole[i]) {
        Transfer(w, got[i], types[i]);
        expected += CMatWriter::GetStorageSize(static_cast<CMatWriter::EObjectType>(types[i]));
      }
    ar.Close();
    file.Close();
  }
  fuzz::Check(OutFile().Read().size() == expected, "records written do not take GetStorageSize bytes");
  {
    CFile file(OutFile().Path(), CFile::modeRead | CFile::typeBinary);
    CArchive ar(&file, CArchive::load);
    CMatWriter w(ar);
    for (std::size_t i = 0; i < types.size(); ++i)
      if (whole[i]) {
        Records again;
        Transfer(w, again, types[i]);
        fuzz::Check(SameRecord(again, got[i], types[i], false), "a record does not read back as written");
      }
    ar.Close();
  }
  return 0;
}
