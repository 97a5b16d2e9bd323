// The framework's exception base. Exceptions are created on the heap and thrown by pointer;
// the catcher owns the object and releases it with Delete().
#pragma once
#include <znmt64/Config.h>
#include <znmt64/platform/CObject.h>

class ZNPF_API CException : public CObject {
  DECLARE_DYNAMIC(CException)
 public:
  explicit CException(BOOL bAutoDelete = TRUE) : m_bAutoDelete(bAutoDelete) {}
  ~CException() override = default;

  // Deletes the object when it was created for automatic deletion (on the heap).
  void Delete();
  // Copies the message into lpszError (at most nMaxError - 1 characters and a terminating zero)
  // and returns TRUE; FALSE with an empty buffer when there is no message. The base has none.
  virtual BOOL GetErrorMessage(LPTSTR lpszError, UINT nMaxError, UINT* pnHelpContext = nullptr) const;

  BOOL m_bAutoDelete;
};

// Out of memory. The numeric allocators throw it by pointer instead of ending the process.
class ZNPF_API CMemoryException : public CException {
  DECLARE_DYNAMIC(CMemoryException)
 public:
  CMemoryException() : CException(TRUE) {}
  BOOL GetErrorMessage(LPTSTR lpszError, UINT nMaxError, UINT* pnHelpContext = nullptr) const override;
};

[[noreturn]] ZNPF_API void AfxThrowMemoryException();

// Copies text into a framework message buffer; shared by every GetErrorMessage.
ZNPF_API BOOL AfxCopyErrorMessage(const char* text, LPTSTR lpszError, UINT nMaxError,
                                  UINT* pnHelpContext);
