#include <znmt64/platform/CObject.h>

#include <cstdio>
#include <cstring>
#include <mutex>
#include <vector>

namespace {
// Classes announce themselves when their record is first asked for by name or kind; the list
// serves CRuntimeClass::FromName, which archives use to re-create objects.
std::vector<const CRuntimeClass*>& KnownClasses() {
  static std::vector<const CRuntimeClass*> classes;
  return classes;
}
std::mutex& KnownClassesLock() {
  static std::mutex lock;
  return lock;
}
void Remember(const CRuntimeClass* c) {
  std::lock_guard<std::mutex> guard(KnownClassesLock());
  auto& known = KnownClasses();
  for (; c != nullptr; c = c->m_pBaseClass) {
    bool seen = false;
    for (const CRuntimeClass* k : known) seen = seen || k == c;
    if (!seen) known.push_back(c);
  }
}
}  // namespace

const CRuntimeClass CObject::classCObject = {"CObject", int(sizeof(CObject)), 0xFFFF, nullptr, nullptr};

CObject* CRuntimeClass::CreateObject() const {
  Remember(this);
  return m_pfnCreateObject != nullptr ? m_pfnCreateObject() : nullptr;
}

BOOL CRuntimeClass::IsDerivedFrom(const CRuntimeClass* pBaseClass) const {
  for (const CRuntimeClass* c = this; c != nullptr; c = c->m_pBaseClass)
    if (c == pBaseClass) return TRUE;
  return FALSE;
}

const CRuntimeClass* CRuntimeClass::FromName(const char* lpszClassName) {
  if (lpszClassName == nullptr) return nullptr;
  std::lock_guard<std::mutex> guard(KnownClassesLock());
  for (const CRuntimeClass* c : KnownClasses())
    if (std::strcmp(c->m_lpszClassName, lpszClassName) == 0) return c;
  return nullptr;
}

const CRuntimeClass* CObject::GetRuntimeClass() const { return &classCObject; }
void CObject::Serialize(CArchive&) {}
void CObject::AssertValid() const {}
void CObject::Dump(CDumpContext& dc) const {
  dc << "a " << GetRuntimeClass()->m_lpszClassName << " at " << static_cast<const void*>(this) << "\n";
}

BOOL CObject::IsKindOf(const CRuntimeClass* pClass) const {
  const CRuntimeClass* mine = GetRuntimeClass();
  Remember(mine);
  return mine->IsDerivedFrom(pClass);
}

BOOL CObject::IsSerializable() const { return GetRuntimeClass()->m_wSchema != 0xFFFF; }

CDumpContext afxDump;

CDumpContext& CDumpContext::operator<<(const char* s) {
  std::fputs(s != nullptr ? s : "(null)", stderr);
  return *this;
}
CDumpContext& CDumpContext::operator<<(const void* p) {
  std::fprintf(stderr, "%p", p);
  return *this;
}
CDumpContext& CDumpContext::operator<<(int n) { return *this << static_cast<long long>(n); }
CDumpContext& CDumpContext::operator<<(unsigned n) { return *this << static_cast<unsigned long long>(n); }
CDumpContext& CDumpContext::operator<<(long n) { return *this << static_cast<long long>(n); }
CDumpContext& CDumpContext::operator<<(unsigned long n) { return *this << static_cast<unsigned long long>(n); }
CDumpContext& CDumpContext::operator<<(long long n) {
  std::fprintf(stderr, "%lld", n);
  return *this;
}
CDumpContext& CDumpContext::operator<<(unsigned long long n) {
  std::fprintf(stderr, "%llu", n);
  return *this;
}
CDumpContext& CDumpContext::operator<<(double d) {
  std::fprintf(stderr, "%.17g", d);
  return *this;
}
CDumpContext& CDumpContext::operator<<(const CObject* p) {
  if (p == nullptr) return *this << "NULL";
  p->Dump(*this);
  return *this;
}
CDumpContext& CDumpContext::operator<<(const CObject& o) {
  o.Dump(*this);
  return *this;
}
void CDumpContext::Flush() { std::fflush(stderr); }
