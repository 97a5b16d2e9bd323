// FrameOI: the component object through which other modules reach a CMFrame. It exposes the frame
// through the five interfaces of FrameInterfaces.h, all counted by the one count of MRefObj.
#pragma once
#include <znmt64/Config.h>
#include <znmt64/FrameInterfaces.h>
#include <znmt64/MRefObj.h>

class CMFrame;

class ZNMT64_API FrameOI : public MRefObj {
 public:
  // Every constructor leaves the count at 0: the first successful QueryInterface makes it 1,
  // which is how Create hands the object out.
  FrameOI();
  // Wraps f, which stays the caller's and must outlive the object.
  explicit FrameOI(CMFrame& f);
  // own non-zero: the object makes an identity frame of its own and deletes it with itself;
  // own zero: no frame.
  explicit FrameOI(int own);
  ~FrameOI() override;

  // A new object wrapping f, as IFrame with count 1; null when it cannot be made.
  static IFrame* Create(CMFrame& f);
  // A new object owning a fresh identity frame; its IFrame pointer, as IUnknown, count 1.
  static IUnknown* Create();

  // In this order:
  //   ppv null                                  DISP_E_PARAMNOTOPTIONAL, nothing else
  //   IID_I3DObject or IID_IUnknown             m_x3DObject, counted, S_OK
  //   IID_IFrame, IID_IFrame2, IID_IFrameEx,
  //   IID_IFrame3                               m_xFrame, m_xFrame2, m_xFrameEx, m_xFrame3, counted
  //   IID_WrappedObject                         the frame pointer (possibly null), NOT counted, S_OK
  //   IID_GeomFrameDelegate                     asked of the geometry module, see below
  //   anything else                             *ppv null, E_NOINTERFACE
  // The geometry module gets a QC record for DMID_GEOM with the identifier, this object as
  // subject and command 26. Whatever it answers, the result is S_OK: callers test *ppv, which is
  // set (and this object counted) only when the module hands back an interface, and is left as it
  // was otherwise.
  HRESULT QueryInterface(const GUID& iid, void** ppv);

  // The interface implementations. Each is only its interface table: it finds this object from
  // its own fixed position inside it. AddRef and Release count this object; QueryInterface
  // answers its own identifier itself (a null ppv gives DISP_E_PARAMNOTOPTIONAL) and passes any
  // other to FrameOI::QueryInterface.
  class X3DObject : public I3DObject {
   public:
    HRESULT QueryInterface(REFIID iid, void** ppv) override;
    ULONG AddRef() override;
    ULONG Release() override;
    HRESULT IsValid(BOOL* pValid) override;
    HRESULT TranslateGlob(double dx, double dy, double dz) override;
    HRESULT Rotate(const double* dir, double angle) override;
    HRESULT SetTransform(const double* m) override;
    HRESULT CreateDump(double len, ISection** ppSection) override;

   private:
    FrameOI& Outer();
  };

  class XFrame : public IFrame {
   public:
    HRESULT QueryInterface(REFIID iid, void** ppv) override;
    ULONG AddRef() override;
    ULONG Release() override;
    HRESULT IsValid(BOOL* pValid) override;
    HRESULT TranslateGlob(double dx, double dy, double dz) override;
    HRESULT Rotate(const double* dir, double angle) override;
    HRESULT SetTransform(const double* m) override;
    HRESULT CreateDump(double len, ISection** ppSection) override;
    HRESULT GetMatrix(double* m) override;
    HRESULT SetMatrix(const double* m) override;
    HRESULT ToGlobal(double* xyz) override;
    HRESULT ToLocal(double* xyz) override;

   private:
    FrameOI& Outer();
  };

  class XFrameEx : public IFrameEx {
   public:
    HRESULT QueryInterface(REFIID iid, void** ppv) override;
    ULONG AddRef() override;
    ULONG Release() override;
    HRESULT ToGlobalVector(double* xyz) override;
    HRESULT ToLocalVector(double* xyz) override;
    HRESULT Push() override;
    HRESULT Pop() override;

   private:
    FrameOI& Outer();
  };

  class XFrame2 : public IFrame2 {
   public:
    HRESULT QueryInterface(REFIID iid, void** ppv) override;
    ULONG AddRef() override;
    ULONG Release() override;
    HRESULT SetAxis(int k, double x, double y, double z) override;
    HRESULT SetAxes(int i, const double* a, int j, const double* b, BOOL right) override;
    HRESULT LookAt(const double* target, const double* up, BOOL toward) override;
    HRESULT MakeValid(int k) override;
    HRESULT Align(const double* v) override;

   private:
    FrameOI& Outer();
  };

  class XFrame3 : public IFrame3 {
   public:
    HRESULT QueryInterface(REFIID iid, void** ppv) override;
    ULONG AddRef() override;
    ULONG Release() override;
    HRESULT GetOrigin(double* x, double* y, double* z) override;
    HRESULT SetOrigin(double x, double y, double z) override;
    HRESULT GetAxis(int k, double* x, double* y, double* z) override;
    HRESULT SetAxis(int k, double x, double y, double z) override;
    HRESULT IsValid(BOOL* pValid) override;
    HRESULT GetOrientation(BOOL* pRight) override;
    HRESULT Reset() override;
    HRESULT ToGlobal(double* xyz) override;
    HRESULT ToLocal(double* xyz) override;
    HRESULT ToGlobalVector(double* xyz) override;
    HRESULT ToLocalVector(double* xyz) override;
    HRESULT Translate(double x, double y, double z) override;
    HRESULT Rotate(double angle, int k) override;
    HRESULT GetMatrix(double* m) override;
    HRESULT SetMatrix(const double* m) override;
    HRESULT MakeValid(int k) override;
    HRESULT Push() override;
    HRESULT Pop() override;
    HRESULT FrameToLocal(IUnknown* pFrame) override;
    HRESULT Dist(IUnknown* pFrame, double* pDist) override;
    HRESULT Invert() override;

   private:
    FrameOI& Outer();
  };

  X3DObject m_x3DObject;
  XFrame m_xFrame;
  XFrameEx m_xFrameEx;
  XFrame2 m_xFrame2;
  XFrame3 m_xFrame3;
  CMFrame* frame;
  int owns;
};
