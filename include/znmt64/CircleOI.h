// CircleOI: the component object through which other modules reach a CCircle. It exposes the
// circle through the six interfaces of CircleInterfaces.h and ISection, all counted by the one
// count of MRefObj.
#pragma once
#include <znmt64/Config.h>
#include <znmt64/CCircle.h>
#include <znmt64/CircleInterfaces.h>
#include <znmt64/MRefObj.h>
#include <znmt64/platform/CString.h>

#include <znag64/Section.h>

#include <memory>

class ZNMT64_API CircleOI : public MRefObj {
 public:
  // Status of the quadric module's query for an object without a circle: a plain decimal code,
  // positive, so SUCCEEDED() does not catch it. Callers compare with it.
  static constexpr HRESULT kNoCircle = 5023;

  // Unlike FrameOI, the count starts at 1: the constructing client holds the first reference.
  // There is no Create: a client constructs the object and queries it.
  //
  // c stays the caller's and must outlive the object. With a null c, and with the default
  // constructor, the object makes a default circle (CCircle()) and frees it with itself.
  explicit CircleOI(CCircle* c);
  CircleOI();
  // Frees the circle the object made; a circle passed in is never deleted.
  ~CircleOI() override;

  // In this order:
  //   ppv null                                 DISP_E_PARAMNOTOPTIONAL
  //   IID_IAxis or IID_IUnknown                m_xAxis, counted, S_OK
  //   IID_ILocation, IID_ICircle3D_Zn2,
  //   IID_ISection                             m_xLocation, m_xCircle3D_Zn2, m_xSection, counted
  //   IID_WrappedObject                        the circle pointer, NOT counted, S_OK
  //   IID_IMetrics64, IID_IMetrics2            m_xMetrics, m_xMetrics2, counted
  //   IID_QuadrCircleDelegate                  asked of the quadric module, see below
  //   anything else                            *ppv null, E_NOINTERFACE
  // The quadric module gets a QC record for DMID_QUADR with the identifier, this object as
  // subject and command 7. Unlike FrameOI's delegated query, failures come back: the module's
  // status as it stands, E_UNEXPECTED when it answers S_OK without an interface, kNoCircle when
  // there is no circle to ask about. Only on success are *ppv set and this object counted.
  HRESULT QueryInterface(const GUID& iid, void** ppv);

  // The interface implementations, each only its interface table (see FrameOI). AddRef and
  // Release count this object; QueryInterface answers its own identifier and passes the rest on.
  class XAxis : public IAxis {
   public:
    HRESULT QueryInterface(REFIID iid, void** ppv) override;
    ULONG AddRef() override;
    ULONG Release() override;
    HRESULT GetPointLocation(const double* p, int* pLocn) override;
    HRESULT DistPoint(const double* p, double* nearest, double* pDist) override;
    HRESULT GetAxis(double* origin, double* dir) override;
    HRESULT SetAxis(const double* origin, const double* dir) override;

   private:
    CircleOI& Outer();
  };

  class XLocation : public ILocation {
   public:
    HRESULT QueryInterface(REFIID iid, void** ppv) override;
    ULONG AddRef() override;
    ULONG Release() override;
    HRESULT GetPointLocation(const double* p, int* pLocn) override;
    HRESULT DistPoint(const double* p, double* nearest, double* pDist) override;

   private:
    CircleOI& Outer();
  };

  class XCircle3D_Zn2 : public ICircle3D_Zn2 {
   public:
    HRESULT QueryInterface(REFIID iid, void** ppv) override;
    ULONG AddRef() override;
    ULONG Release() override;
    HRESULT GetRadius(double* pRadius) override;
    HRESULT SetRadius(double radius) override;
    HRESULT GetFrame(const double* ref, IFrame3** ppFrame) override;
    HRESULT GetSampling(int n, const double* ref, double* xyz) override;

   private:
    CircleOI& Outer();
  };

  class XMetrics : public IMetrics64 {
   public:
    HRESULT QueryInterface(REFIID iid, void** ppv) override;
    ULONG AddRef() override;
    ULONG Release() override;
    HRESULT Dist(const double* p1, const double* p2, double* pLength) override;
    HRESULT GetTranslation(const double* p1, const double* p2, double* pLength) override;
    HRESULT InsideArc(const double* p, const double* a, const double* b, BOOL* pInside) override;
    HRESULT Translate(double s, double* p) override;

   private:
    CircleOI& Outer();
  };

  class XMetrics2 : public IMetrics2 {
   public:
    HRESULT QueryInterface(REFIID iid, void** ppv) override;
    ULONG AddRef() override;
    ULONG Release() override;
    HRESULT IsOpposite(const double* p1, const double* p2, BOOL* pOpposite) override;
    HRESULT IsAfter(const double* p1, const double* p2, BOOL* pAfter) override;
    HRESULT GetTangent(const double* p, double* tangent) override;

   private:
    CircleOI& Outer();
  };

  // The circle as a drawn figure: its debug drawing (CCircle::CreateDump, a closed polyline
  // captioned "CCircle %08x"), so that the 2D module's debugger can show the object itself. The
  // drawing is made on first use and kept, and SetCaption, Transform and Clear act on it as on
  // any section, never on the circle. Once the circle has moved or changed its radius, the next
  // operation draws it anew; a caption that was set is carried over, the other edits are not.
  class XSection : public ISection {
   public:
    HRESULT QueryInterface(REFIID iid, void** ppv) override;
    ULONG AddRef() override;
    ULONG Release() override;
    HRESULT GetKind(int* pKind) override;
    HRESULT SetCaption(const char* text) override;
    HRESULT GetCaption(char* buf, UINT max) override;
    HRESULT GetVertexCount(int* pCount) override;
    HRESULT GetVertex(int i, double* xyz) override;
    HRESULT GetIndexCount(int* pCount) override;
    HRESULT GetIndex(int pos, LONG* pValue) override;
    HRESULT GetStripCount(int* pCount) override;
    HRESULT GetLength(double* pLength) override;
    HRESULT GetBox(double* pMin, double* pMax) override;
    HRESULT Transform(const double* m) override;
    HRESULT Clear() override;

   private:
    CircleOI& Outer();
    // op(drawing) on the circle's drawing; E_UNEXPECTED without a circle, E_FAIL when the 2D
    // module cannot draw it.
    template <class Op>
    HRESULT OnDrawing(Op op);
  };

  XAxis m_xAxis;
  XLocation m_xLocation;
  XCircle3D_Zn2 m_xCircle3D_Zn2;
  XMetrics m_xMetrics;
  XMetrics2 m_xMetrics2;
  XSection m_xSection;
  CCircle* circle;

 private:
  // The circle's drawing, made for the circle as it is now (or kept when it is unchanged); null
  // when there is no circle or the 2D module cannot draw.
  ISection* Drawing();

  std::unique_ptr<CCircle> m_pOwnCircle;  // the circle the object made itself
  ISection* m_pDrawing = nullptr;          // one reference, held by the object
  CCircle m_drawn;                         // the circle as m_pDrawing shows it
  bool m_bCaption = false;                 // SetCaption was called: m_strCaption replaces the default
  CString m_strCaption;
};
