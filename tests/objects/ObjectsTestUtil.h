// Stand-ins for the other modules of the suite, shared by the component-object tests.
#pragma once
#include <znbl64/DynaModule.h>

#include <znmt64/platform/Com.h>

// A counted object of another module; it never deletes itself, so a test can read its count
// after the last Release.
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
  int requests = 0;
  int command = -1;
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
