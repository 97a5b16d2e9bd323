// DynaModule and QC: how the modules of the suite find and call each other inside one process.
//
// Each module owns one DynaModule object (a static object, e.g. dynaModuleMatr), constructed
// with its module identifier when the module is loaded and destroyed when it is unloaded; the
// object registers and unregisters itself. A module sends a command by filling a QC record with
// the target module's identifier, a command code and its arguments, and passing it to its own
// DynaModule's Execute or GetInterface, which route it to the target. A module that answers
// commands derives from DynaModule and overrides OnExecute / OnGetInterface.
//
// Registration happens while modules load and unload, which the loader serialises; the registry
// takes no lock.
#pragma once
#include <znmt64/Config.h>
#include <znmt64/platform/Com.h>

// Module identifiers of the suite.
// {C480C410-207D-4AF8-927E-EBB46A781667} the matrix and 3D geometry library
inline constexpr GUID DMID_MATR = {0xC480C410, 0x207D, 0x4AF8, {0x92, 0x7E, 0xEB, 0xB4, 0x6A, 0x78, 0x16, 0x67}};
// {62F8C8A6-6B6A-4E6C-A06F-5F4723F2D4FB} the geometry module
inline constexpr GUID DMID_GEOM = {0x62F8C8A6, 0x6B6A, 0x4E6C, {0xA0, 0x6F, 0x5F, 0x47, 0x23, 0xF2, 0xD4, 0xFB}};
// {59D02574-6E71-4888-A865-1EA127D360E7} the quadric surfaces module
inline constexpr GUID DMID_QUADR = {0x59D02574, 0x6E71, 0x4888, {0xA8, 0x65, 0x1E, 0xA1, 0x27, 0xD3, 0x60, 0xE7}};
// {9BC8C7F1-19B3-47A3-ADA0-447F2538F934} the sphere module
inline constexpr GUID DMID_SPHERE = {0x9BC8C7F1, 0x19B3, 0x47A3, {0xAD, 0xA0, 0x44, 0x7F, 0x25, 0x38, 0xF9, 0x34}};

// The target module is not loaded (no module of that identifier is registered); the framework's
// "module not found".
inline constexpr HRESULT DM_E_NOTLOADED = static_cast<HRESULT>(0x8007007Eu);
// The target module is loaded but does not answer this kind of request; "not implemented".
inline constexpr HRESULT DM_E_NOTHANDLED = static_cast<HRESULT>(0x80004001u);

// A command record. The meaning of the command code and of the arguments is the target module's;
// the record owns nothing it points to.
struct ZNBL64_API QC {
  explicit QC(const GUID& module, int command = 0, void* subject = nullptr)
      : m_guidModule(module), m_nCommand(command), m_pSubject(subject) {}
  // A request for interface iid of the target module about subject (GetInterface).
  QC(const GUID& module, const GUID& iid, void* subject, int command)
      : m_guidModule(module), m_iid(iid), m_nCommand(command), m_pSubject(subject) {}
  ~QC() = default;

  GUID m_guidModule;           // target module
  GUID m_iid = GUID_NULL;      // interface asked for, GUID_NULL when the command asks for none
  int m_nCommand = 0;          // command code, numbered by the target
  void* m_pSubject = nullptr;  // the object the command is about
  void* m_apArg[4] = {};       // further arguments, by address
  void* m_pInterface = nullptr;  // interface the target hands back, already counted for the caller
};

class ZNBL64_API DynaModule {
 public:
  enum EConfiguration {
    eConfigLocal = 0,   // not registered: can send commands, cannot be found
    eConfigServer = 1,  // registered; commands sent to it reach OnExecute / OnGetInterface
    eConfigClient = 2   // registered, so others see it loaded; sends commands and answers none
  };

  // Registers the module under *id unless the configuration is local, id is null, or another
  // module holds the identifier already (the first one keeps it; this one stays unregistered).
  DynaModule(const GUID* id, EConfiguration config);
  virtual ~DynaModule();  // unregisters
  DynaModule(const DynaModule&) = delete;
  DynaModule& operator=(const DynaModule&) = delete;

  // Route qc to the module qc.m_guidModule and return its status: DM_E_NOTLOADED when no such
  // module is registered, DM_E_NOTHANDLED when it is not a server. 0 is success.
  virtual HRESULT Execute(QC& qc);
  virtual HRESULT GetInterface(QC& qc);

  const GUID& GetId() const { return m_guidId; }
  EConfiguration GetConfiguration() const { return m_eConfig; }
  bool IsRegistered() const { return Find(m_guidId) == this; }
  // The registered module of that identifier, or null.
  static DynaModule* Find(const GUID& id);

 protected:
  // The answers of a server module; both give DM_E_NOTHANDLED here.
  virtual HRESULT OnExecute(QC& qc);
  virtual HRESULT OnGetInterface(QC& qc);

 private:
  static HRESULT Route(QC& qc, HRESULT (DynaModule::*handler)(QC&));

  GUID m_guidId;
  EConfiguration m_eConfig;
};
