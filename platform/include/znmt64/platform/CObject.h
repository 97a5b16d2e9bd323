// The framework's root class with run-time class information.
#pragma once
#include <znmt64/Config.h>
#include <znmt64/platform/Types.h>

class CObject;
class CArchive;
class CDumpContext;

// One record per class: its name, size, schema, factory and base.
struct ZNPF_API CRuntimeClass {
  const char* m_lpszClassName;
  int m_nObjectSize;
  UINT m_wSchema;  // 0xFFFF for classes that are not serializable
  CObject* (*m_pfnCreateObject)();
  const CRuntimeClass* m_pBaseClass;

  CObject* CreateObject() const;
  BOOL IsDerivedFrom(const CRuntimeClass* pBaseClass) const;
  // The record of the class called lpszClassName among those seen so far, or null.
  static const CRuntimeClass* FromName(const char* lpszClassName);
};

#define RUNTIME_CLASS(class_name) (&class_name::class##class_name)

#define DECLARE_DYNAMIC(class_name)                                   \
 public:                                                              \
  static const CRuntimeClass class##class_name;                       \
  const CRuntimeClass* GetRuntimeClass() const override;

#define DECLARE_DYNCREATE(class_name) \
  DECLARE_DYNAMIC(class_name)         \
  static CObject* CreateObject();

#define DECLARE_SERIAL(class_name) DECLARE_DYNCREATE(class_name)

#define ZNPF_IMPLEMENT_RUNTIMECLASS(class_name, base_class_name, wSchema, pfnNew)              \
  const CRuntimeClass class_name::class##class_name = {#class_name, int(sizeof(class_name)),   \
                                                       wSchema, pfnNew,                        \
                                                       RUNTIME_CLASS(base_class_name)};        \
  const CRuntimeClass* class_name::GetRuntimeClass() const { return RUNTIME_CLASS(class_name); }

#define IMPLEMENT_DYNAMIC(class_name, base_class_name) \
  ZNPF_IMPLEMENT_RUNTIMECLASS(class_name, base_class_name, 0xFFFF, nullptr)

#define IMPLEMENT_DYNCREATE(class_name, base_class_name)                        \
  CObject* class_name::CreateObject() { return new class_name; }                \
  ZNPF_IMPLEMENT_RUNTIMECLASS(class_name, base_class_name, 0xFFFF, class_name::CreateObject)

#define IMPLEMENT_SERIAL(class_name, base_class_name, wSchema)                  \
  CObject* class_name::CreateObject() { return new class_name; }                \
  ZNPF_IMPLEMENT_RUNTIMECLASS(class_name, base_class_name, wSchema, class_name::CreateObject)

class ZNPF_API CObject {
 public:
  static const CRuntimeClass classCObject;

  virtual const CRuntimeClass* GetRuntimeClass() const;
  virtual ~CObject() = default;
  virtual void Serialize(CArchive& ar);
  virtual void AssertValid() const;
  virtual void Dump(CDumpContext& dc) const;

  BOOL IsKindOf(const CRuntimeClass* pClass) const;
  BOOL IsSerializable() const;

 protected:
  CObject() = default;
  // Copying is for derived classes only, so a CObject is never sliced by accident.
  CObject(const CObject&) = default;
  CObject& operator=(const CObject&) = default;
};

// The framework's diagnostic stream; afxDump writes to standard error.
class ZNPF_API CDumpContext {
 public:
  CDumpContext() = default;
  CDumpContext& operator<<(const char* s);
  CDumpContext& operator<<(const void* p);
  CDumpContext& operator<<(int n);
  CDumpContext& operator<<(unsigned n);
  CDumpContext& operator<<(long n);
  CDumpContext& operator<<(unsigned long n);
  CDumpContext& operator<<(long long n);
  CDumpContext& operator<<(unsigned long long n);
  CDumpContext& operator<<(double d);
  CDumpContext& operator<<(const CObject* p);
  CDumpContext& operator<<(const CObject& o);
  void Flush();
  int GetDepth() const { return m_nDepth; }
  void SetDepth(int n) { m_nDepth = n; }

 private:
  int m_nDepth = 0;
};

ZNPF_API extern CDumpContext afxDump;
