#include <znmt64/CLineal.h>
#include <znmt64/CMFrame.h>
#include <znmt64/CMatWriter.h>
#include <znmt64/CPlane.h>
#include <znmt64/SMat.h>
#include <znmt64/platform/CArchive.h>

namespace {

void Write(CArchive& ar, const SMat& v) { ar << v.x << v.y << v.z; }

// Read into a fresh value, so that a short archive leaves the caller's object untouched.
SMat Read(CArchive& ar) {
  SMat v;
  ar >> v.x >> v.y >> v.z;
  return v;
}

}  // namespace

unsigned int CMatWriter::GetStorageSize(EObjectType t) {
  switch (t) {
    case eVector:
      return 24;
    case eLine:
      return 48;
    case eFrame:
      return 72;
    case ePlaneEqn:
      return 32;
  }
  return 0;
}

void CMatWriter::Serialize(SMat& v) {
  if (m_pArchive == nullptr) return;
  if (m_pArchive->IsStoring())
    Write(*m_pArchive, v);
  else
    v = Read(*m_pArchive);
}

void CMatWriter::Serialize(CLineal& l) {
  if (m_pArchive == nullptr) return;
  if (m_pArchive->IsStoring()) {
    Write(*m_pArchive, l.origin);
    Write(*m_pArchive, l.dir);
  } else {
    const SMat origin = Read(*m_pArchive);
    const SMat dir = Read(*m_pArchive);
    l.origin = origin;
    l.dir = dir;
  }
}

void CMatWriter::Serialize(PlaneEqn& e) {
  if (m_pArchive == nullptr) return;
  CArchive& ar = *m_pArchive;
  if (ar.IsStoring()) {
    ar << e.a << e.b << e.c << e.d;
  } else {
    PlaneEqn r;
    ar >> r.a >> r.b >> r.c >> r.d;
    e = r;
  }
}

void CMatWriter::Serialize(CMFrame& f) {
  if (m_pArchive == nullptr) return;
  CLineal axis;
  if (m_pArchive->IsStoring()) {
    f.GetAxis(0, axis);
    Serialize(axis);
    SMat y = f.axes[1];
    Serialize(y);
  } else {
    Serialize(axis);
    const SMat y = Read(*m_pArchive);
    f.SetAxis(0, axis);
    f.axes[1] = y;
    f.Init(2, false);
  }
}
