#include <znmt64/MRefObj.h>

IMPLEMENT_DYNAMIC(MRefObj, CObject)

ULONG MRefObj::AddRef() { return ++m_nRef; }

ULONG MRefObj::Release() {
  if (--m_nRef != 0) return m_nRef;
  delete this;
  return 0;
}
