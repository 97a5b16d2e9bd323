#include <znmt64/platform/CException.h>

#include <cstring>

IMPLEMENT_DYNAMIC(CException, CObject)
IMPLEMENT_DYNAMIC(CMemoryException, CException)

void CException::Delete() {
  if (m_bAutoDelete) delete this;
}

BOOL AfxCopyErrorMessage(const char* text, LPTSTR lpszError, UINT nMaxError, UINT* pnHelpContext) {
  if (pnHelpContext != nullptr) *pnHelpContext = 0;
  if (lpszError == nullptr || nMaxError == 0) return FALSE;
  if (text == nullptr || *text == '\0') {
    *lpszError = '\0';
    return FALSE;
  }
  std::size_t n = std::strlen(text);
  if (n > nMaxError - 1) n = nMaxError - 1;
  std::memcpy(lpszError, text, n);
  lpszError[n] = '\0';
  return TRUE;
}

BOOL CException::GetErrorMessage(LPTSTR lpszError, UINT nMaxError, UINT* pnHelpContext) const {
  return AfxCopyErrorMessage(nullptr, lpszError, nMaxError, pnHelpContext);
}

BOOL CMemoryException::GetErrorMessage(LPTSTR lpszError, UINT nMaxError, UINT* pnHelpContext) const {
  return AfxCopyErrorMessage("Out of memory.", lpszError, nMaxError, pnHelpContext);
}

void AfxThrowMemoryException() { throw new CMemoryException(); }
