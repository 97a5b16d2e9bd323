// CMatWriter: vectors, lines, plane equations and frames through the framework's binary archive,
// in both directions. The records are exchanged with other modules: their layouts are fixed.
//
// Every double is the archive's: eight bytes, IEEE 754, little-endian. No record has a header or
// a type tag; the reader knows what comes next.
//   vector   24 bytes  x, y, z
//   line     48 bytes  point, then direction (two vectors)
//   frame    72 bytes  axis X as a line (origin, X), then the Y axis (a vector)
//   plane    32 bytes  a, b, c, d of a·x + b·y + c·z + d = 0
#pragma once
#include <znmt64/Config.h>

class CArchive;
class CLineal;
class CMFrame;
class PlaneEqn;
class SMat;

class ZNMT64_API CMatWriter {
 public:
  // Of a fixed type, so that a value outside the enumeration, which GetStorageSize answers with 0,
  // is a valid EObjectType rather than undefined behaviour.
  enum EObjectType : int { eVector = 0, eLine = 1, eFrame = 2, ePlaneEqn = 3 };

  // The archive is the caller's and must outlive its use here.
  CMatWriter() : m_pArchive(nullptr) {}
  explicit CMatWriter(CArchive& ar) : m_pArchive(&ar) {}
  virtual ~CMatWriter() = default;
  void Attach(CArchive& ar) { m_pArchive = &ar; }

  // The record's size in bytes; 0 for a value outside the enumeration.
  static unsigned int GetStorageSize(EObjectType t);

  // Writes the object when the archive is storing, reads it back otherwise. A short archive
  // throws the archive's CArchiveException* (endOfFile), and the object is then left as it was.
  // Without an archive nothing is done.
  void Serialize(SMat& v);
  void Serialize(CLineal& l);
  void Serialize(PlaneEqn& e);
  // Loading rebuilds Z from X and Y with CMFrame::Init(2, false), that is as -(X × Y): a frame
  // stored right-handed comes back left-handed, its Z reversed. Readers of the record rely on
  // that rebuild. X is normalised on loading, Y is taken as it stands.
  void Serialize(CMFrame& f);

  CArchive* m_pArchive;
};
