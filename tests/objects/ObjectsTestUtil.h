// Stand-ins for the other modules of the suite, shared by the component-object tests.
#pragma once
#include <znbl64/DynaModule.h>

#include <gtest/gtest.h>
#include <znmt64/platform/Com.h>

inline constexpr GUID kUnknownIid = {0x12345678, 0x9ABC, 0xDEF0, {1, 2, 3, 4, 5, 6, 7, 8}};
inline void* const kUntouched = reinterpret_cast<void*>(0x5A5A);

// from's answer to iid, which must succeed.
template <class I>
I* Query(IUnknown* from, REFIID iid) {
  void* p = nullptr;
  EXPECT_EQ(from->QueryInterface(iid, &p), S_OK);
  return static_cast<I*>(p);
}

// One row of a component object's query table: the identifier and the interface it gives.
struct QueryRow {
  const IID& iid;
  IUnknown* itf;
};

// Each row asked of the object, and of the row's interface (its own identifier, and another's,
// which it passes on), each answer counted once; a null ppv is refused. Then every reference
// taken is released through the interfaces in turn, and the object must end with the last one.
template <class Obj, std::size_t N>
void CheckQueryTable(Obj* o, const QueryRow (&rows)[N], REFIID other, IUnknown* otherItf) {
  for (const QueryRow& row : rows) {
    const ULONG before = o->m_nRef;
    void* p = nullptr;
    EXPECT_EQ(o->QueryInterface(row.iid, &p), S_OK);
    EXPECT_EQ(p, static_cast<void*>(row.itf));
    EXPECT_EQ(row.itf->QueryInterface(other, nullptr), DISP_E_PARAMNOTOPTIONAL);
    EXPECT_EQ(Query<IUnknown>(row.itf, row.iid), row.itf);
    EXPECT_EQ(Query<IUnknown>(row.itf, other), otherItf);
    EXPECT_EQ(o->m_nRef, before + 3);
  }
  void* p = kUntouched;
  EXPECT_EQ(o->QueryInterface(kUnknownIid, &p), E_NOINTERFACE);
  EXPECT_EQ(p, nullptr);
  for (ULONG k = o->m_nRef; k > 0; --k) EXPECT_EQ(rows[k % N].itf->Release(), k - 1);
}

// A counted object of another module; it never deletes itself, so a test reads its count last.
class StubUnknown : public IUnknown {
 public:
  HRESULT QueryInterface(REFIID iid, void** ppv) override {
    if (iid != IID_IUnknown) return E_NOINTERFACE;
    *ppv = this;
    ++refs;
    return S_OK;
  }
  ULONG AddRef() override { return ++refs; }
  ULONG Release() override { return --refs; }
  ULONG refs = 1;
};

// A sibling module registered as a server under id: it records the last interface request and
// answers it with status, handing out answer (counted) when status is S_OK.
class FakeSibling : public DynaModule {
 public:
  explicit FakeSibling(const GUID& id) : DynaModule(&id, eConfigServer) {}
  HRESULT status = S_OK;
  StubUnknown* answer = nullptr;
  int requests = 0, command = -1;
  GUID iid = GUID_NULL;
  void* subject = nullptr;

 protected:
  HRESULT OnGetInterface(QC& qc) override {
    ++requests;
    command = qc.m_nCommand;
    iid = qc.m_iid;
    subject = qc.m_pSubject;
    if (status == S_OK && answer != nullptr) {
      answer->AddRef();
      qc.m_pInterface = answer;
    }
    return status;
  }
};
