#include <znmt64/StateMatr.h>

#include <znag64/AnGeoState.h>

StateMatr::StateMatr() : m_reserved{}, m_bStarted(false) {}

void StateMatr::StartMatrLib() {
  if (m_bStarted) return;
  // A Linux process has no host class chain to link into: registering the library's resources
  // reduces to nothing here, and the module itself is registered by its entry object.
  InitAnGeoDll();
  m_bStarted = true;
}
