#include <znbl64/DynaModule.h>

#include <algorithm>
#include <vector>

namespace {

// Built on first use, by the first module object of any library, and so destroyed after the last.
std::vector<DynaModule*>& Registry() {
  static std::vector<DynaModule*> modules;
  return modules;
}

}  // namespace

DynaModule::DynaModule(const GUID* id, EConfiguration config)
    : m_guidId(id != nullptr ? *id : GUID_NULL), m_eConfig(config) {
  // Touched by every module object, registered or not, so that the registry outlives them all:
  // each destructor looks into it.
  std::vector<DynaModule*>& modules = Registry();
  if (config != eConfigLocal && m_guidId != GUID_NULL && Find(m_guidId) == nullptr) modules.push_back(this);
}

DynaModule::~DynaModule() { std::erase(Registry(), this); }

DynaModule* DynaModule::Find(const GUID& id) {
  const auto& modules = Registry();
  const auto it = std::find_if(modules.begin(), modules.end(),
                               [&](const DynaModule* m) { return m->m_guidId == id; });
  return it != modules.end() ? *it : nullptr;
}

HRESULT DynaModule::Route(QC& qc, HRESULT (DynaModule::*handler)(QC&)) {
  DynaModule* target = Find(qc.m_guidModule);
  if (target == nullptr) return DM_E_NOTLOADED;
  if (target->m_eConfig != eConfigServer) return DM_E_NOTHANDLED;
  return (target->*handler)(qc);
}

HRESULT DynaModule::Execute(QC& qc) { return Route(qc, &DynaModule::OnExecute); }
HRESULT DynaModule::GetInterface(QC& qc) { return Route(qc, &DynaModule::OnGetInterface); }

HRESULT DynaModule::OnExecute(QC&) { return DM_E_NOTHANDLED; }
HRESULT DynaModule::OnGetInterface(QC&) { return DM_E_NOTHANDLED; }
