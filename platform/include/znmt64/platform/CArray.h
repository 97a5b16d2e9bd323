// The framework's growable array with 64-bit indices, on raw storage: elements are constructed and
// destroyed one by one, and the capacity follows the framework's growth rule.
#pragma once
#include <znmt64/Config.h>
#include <znmt64/platform/CArchive.h>
#include <znmt64/platform/CException.h>
#include <znmt64/platform/CObject.h>

#include <algorithm>
#include <cassert>
#include <cstdint>
#include <memory>
#include <new>
#include <type_traits>
#include <utility>

// Writes or reads nCount elements; CArray::Serialize calls it, and a caller may specialize it for
// its own element type, as with the framework. The framework's default copies the bytes; here the
// default chooses, in this order: the element's own Serialize(CArchive&) (CObject-derived types);
// the archive's operator<< and operator>> (arithmetic types, CString and any type given both); the
// bytes, in host order, for other trivially copyable types; otherwise CNotSupportedException.
template <class TYPE>
void SerializeElements(CArchive& ar, TYPE* pElements, INT_PTR nCount) {
  if constexpr (requires(TYPE& t, CArchive& a) { t.Serialize(a); }) {
    for (INT_PTR i = 0; i < nCount; ++i) pElements[i].Serialize(ar);
  } else if constexpr (requires(TYPE& t, CArchive& a) { a << t; a >> t; }) {
    for (INT_PTR i = 0; i < nCount; ++i) {
      if (ar.IsStoring())
        ar << pElements[i];
      else
        ar >> pElements[i];
    }
  } else if constexpr (std::is_trivially_copyable_v<TYPE>) {
    auto* bytes = reinterpret_cast<BYTE*>(pElements);
    for (ULONGLONG left = ULONGLONG(nCount) * sizeof(TYPE); left > 0;) {
      UINT step = UINT(std::min<ULONGLONG>(left, 1u << 30));
      if (ar.IsStoring())
        ar.Write(bytes, step);
      else if (ar.Read(bytes, step) != step)
        AfxThrowArchiveException(CArchiveException::endOfFile, ar.m_strFileName);
      bytes += step;
      left -= step;
    }
  } else {
    if (nCount > 0) AfxThrowNotSupportedException();
  }
}

// An index or count outside the array (GetAt, SetAt, ElementAt, operator[], RemoveAt, a negative
// size or InsertAt index) throws CInvalidArgException*, in every build: the framework asserts and
// then throws in its debug build and throws in its release build. Allocation failure throws
// CMemoryException*. Unlike the framework, which moves elements as raw bytes, elements are moved
// with their move constructor and assignment, so any C++ type may be stored; RemoveAt moves the
// tail down and destroys the last elements rather than the removed ones. Copying, moving and
// assigning a CArray copy or move its elements (the framework's CArray cannot be copied).
template <class TYPE, class ARG_TYPE = const TYPE&>
class CArray : public CObject {
 public:
  CArray() = default;
  CArray(const CArray& src) : CObject() { Copy(src); }
  CArray(CArray&& src) noexcept : CObject() { Swap(src); }
  CArray& operator=(const CArray& src) {
    Copy(src);
    return *this;
  }
  CArray& operator=(CArray&& src) noexcept {
    if (this != &src) {
      CArray gone(std::move(*this));
      Swap(src);
    }
    return *this;
  }
  ~CArray() override { SetSize(0, -1); }

  INT_PTR GetSize() const { return m_nSize; }
  INT_PTR GetCount() const { return m_nSize; }
  BOOL IsEmpty() const { return m_nSize == 0; }
  INT_PTR GetUpperBound() const { return m_nSize - 1; }

  // nGrowBy >= 0 becomes the growth step (0: the framework's heuristic, see Grow); -1 keeps it.
  // New elements are value-initialized (zero for arithmetic types, as the framework's zero-filled
  // storage gives). Size 0 frees the storage.
  void SetSize(INT_PTR nNewSize, INT_PTR nGrowBy = -1);
  void FreeExtra();
  void RemoveAll() { SetSize(0, -1); }

  const TYPE& GetAt(INT_PTR nIndex) const { return m_pData[Checked(nIndex)]; }
  TYPE& GetAt(INT_PTR nIndex) { return m_pData[Checked(nIndex)]; }
  void SetAt(INT_PTR nIndex, ARG_TYPE newElement) { m_pData[Checked(nIndex)] = newElement; }
  const TYPE& ElementAt(INT_PTR nIndex) const { return m_pData[Checked(nIndex)]; }
  TYPE& ElementAt(INT_PTR nIndex) { return m_pData[Checked(nIndex)]; }
  const TYPE& operator[](INT_PTR nIndex) const { return m_pData[Checked(nIndex)]; }
  TYPE& operator[](INT_PTR nIndex) { return m_pData[Checked(nIndex)]; }
  // Null while nothing is allocated.
  const TYPE* GetData() const { return m_pData; }
  TYPE* GetData() { return m_pData; }

  // Grows the array to nIndex + 1 elements when needed, then sets the element.
  void SetAtGrow(INT_PTR nIndex, ARG_TYPE newElement);
  // Appends the element; returns its index.
  INT_PTR Add(ARG_TYPE newElement) {
    INT_PTR nIndex = m_nSize;
    SetAtGrow(nIndex, newElement);
    return nIndex;
  }
  // Appends src's elements (src must not be this array); returns the old size.
  INT_PTR Append(const CArray& src);
  // Makes this array a copy of src, which keeps this array's growth step.
  void Copy(const CArray& src);
  // nCount copies of newElement at nIndex (past the end: the gap is value-initialized).
  void InsertAt(INT_PTR nIndex, ARG_TYPE newElement, INT_PTR nCount = 1);
  // The elements of pNewArray at nStartIndex.
  void InsertAt(INT_PTR nStartIndex, CArray* pNewArray);
  void RemoveAt(INT_PTR nIndex, INT_PTR nCount = 1);

  // The element count (CArchive::WriteCount), then the elements through SerializeElements.
  void Serialize(CArchive& ar) override;
  void AssertValid() const override {
    assert(m_nSize >= 0 && m_nSize <= m_nMaxSize && (m_pData == nullptr) == (m_nMaxSize == 0));
  }

 protected:
  TYPE* m_pData = nullptr;
  INT_PTR m_nSize = 0;
  INT_PTR m_nMaxSize = 0;
  INT_PTR m_nGrowBy = 0;

 private:
  INT_PTR Checked(INT_PTR nIndex) const {
    if (nIndex < 0 || nIndex >= m_nSize) AfxThrowInvalidArgException();
    return nIndex;
  }
  void Swap(CArray& o) noexcept {
    std::swap(m_pData, o.m_pData);
    std::swap(m_nSize, o.m_nSize);
    std::swap(m_nMaxSize, o.m_nMaxSize);
    std::swap(m_nGrowBy, o.m_nGrowBy);
  }
  static TYPE* Allocate(INT_PTR n) {
    if (n == 0) return nullptr;
    if (std::uint64_t(n) > PTRDIFF_MAX / sizeof(TYPE)) AfxThrowMemoryException();
    try {
      return std::allocator<TYPE>().allocate(std::size_t(n));
    } catch (const std::bad_alloc&) {
      AfxThrowMemoryException();
    }
  }
  static void Deallocate(TYPE* p, INT_PTR n) {
    if (p != nullptr) std::allocator<TYPE>().deallocate(p, std::size_t(n));
  }
  // New storage of nNewMax places holding the current elements followed by value-initialized ones
  // up to nNewSize; the old storage is released. Strong guarantee when a constructor throws.
  void Reallocate(INT_PTR nNewMax, INT_PTR nNewSize);
};

template <class TYPE, class ARG_TYPE>
void CArray<TYPE, ARG_TYPE>::Reallocate(INT_PTR nNewMax, INT_PTR nNewSize) {
  TYPE* p = Allocate(nNewMax);
  try {
    std::uninitialized_value_construct(p + m_nSize, p + nNewSize);
    try {
      if constexpr (std::is_nothrow_move_constructible_v<TYPE> || !std::is_copy_constructible_v<TYPE>)
        std::uninitialized_move(m_pData, m_pData + m_nSize, p);
      else
        std::uninitialized_copy(m_pData, m_pData + m_nSize, p);
    } catch (...) {
      std::destroy(p + m_nSize, p + nNewSize);
      throw;
    }
  } catch (...) {
    Deallocate(p, nNewMax);
    throw;
  }
  std::destroy(m_pData, m_pData + m_nSize);
  Deallocate(m_pData, m_nMaxSize);
  m_pData = p;
  m_nSize = nNewSize;
  m_nMaxSize = nNewMax;
}

template <class TYPE, class ARG_TYPE>
void CArray<TYPE, ARG_TYPE>::SetSize(INT_PTR nNewSize, INT_PTR nGrowBy) {
  if (nNewSize < 0) AfxThrowInvalidArgException();
  if (nGrowBy >= 0) m_nGrowBy = nGrowBy;
  if (nNewSize == 0) {
    std::destroy(m_pData, m_pData + m_nSize);
    Deallocate(m_pData, m_nMaxSize);
    m_pData = nullptr;
    m_nSize = m_nMaxSize = 0;
  } else if (m_pData == nullptr) {
    // The first block holds the requested size or the growth step, whichever is larger.
    Reallocate(std::max(nNewSize, m_nGrowBy), nNewSize);
  } else if (nNewSize <= m_nMaxSize) {
    if (nNewSize > m_nSize)
      std::uninitialized_value_construct(m_pData + m_nSize, m_pData + nNewSize);
    else
      std::destroy(m_pData + nNewSize, m_pData + m_nSize);
    m_nSize = nNewSize;
  } else {
    // Growth step 0: the framework's heuristic, an eighth of the current size between 4 and 1024,
    // which avoids heap fragmentation. The block grows by the step, or to the new size when larger.
    INT_PTR grow = m_nGrowBy != 0 ? m_nGrowBy : std::clamp<INT_PTR>(m_nSize / 8, 4, 1024);
    Reallocate(nNewSize < m_nMaxSize + grow ? m_nMaxSize + grow : nNewSize, nNewSize);
  }
}

template <class TYPE, class ARG_TYPE>
void CArray<TYPE, ARG_TYPE>::FreeExtra() {
  if (m_nSize == m_nMaxSize) return;
  if (m_nSize == 0) {
    SetSize(0, -1);
    return;
  }
  INT_PTR grow = m_nGrowBy;
  Reallocate(m_nSize, m_nSize);
  m_nGrowBy = grow;
}

template <class TYPE, class ARG_TYPE>
void CArray<TYPE, ARG_TYPE>::SetAtGrow(INT_PTR nIndex, ARG_TYPE newElement) {
  if (nIndex < 0 || nIndex == PTRDIFF_MAX) AfxThrowInvalidArgException();
  if (nIndex >= m_nMaxSize) {
    // newElement may be one of this array's elements, which the reallocation moves.
    TYPE value(newElement);
    SetSize(nIndex + 1, -1);
    m_pData[nIndex] = std::move(value);
    return;
  }
  if (nIndex >= m_nSize) SetSize(nIndex + 1, -1);
  m_pData[nIndex] = newElement;
}

template <class TYPE, class ARG_TYPE>
INT_PTR CArray<TYPE, ARG_TYPE>::Append(const CArray& src) {
  if (this == &src) AfxThrowInvalidArgException();
  INT_PTR nOldSize = m_nSize;
  SetSize(m_nSize + src.m_nSize, -1);
  std::copy(src.m_pData, src.m_pData + src.m_nSize, m_pData + nOldSize);
  return nOldSize;
}

template <class TYPE, class ARG_TYPE>
void CArray<TYPE, ARG_TYPE>::Copy(const CArray& src) {
  if (this == &src) return;
  SetSize(src.m_nSize, -1);
  std::copy(src.m_pData, src.m_pData + src.m_nSize, m_pData);
}

template <class TYPE, class ARG_TYPE>
void CArray<TYPE, ARG_TYPE>::InsertAt(INT_PTR nIndex, ARG_TYPE newElement, INT_PTR nCount) {
  if (nIndex < 0 || nCount <= 0 || nCount > PTRDIFF_MAX - std::max(nIndex, m_nSize)) AfxThrowInvalidArgException();
  TYPE value(newElement);  // newElement may be one of this array's elements
  const INT_PTR nOldSize = m_nSize;
  if (nIndex >= nOldSize) {
    SetSize(nIndex + nCount, -1);
  } else {
    SetSize(nOldSize + nCount, -1);
    std::move_backward(m_pData + nIndex, m_pData + nOldSize, m_pData + nOldSize + nCount);
  }
  std::fill(m_pData + nIndex, m_pData + nIndex + nCount, value);
}

template <class TYPE, class ARG_TYPE>
void CArray<TYPE, ARG_TYPE>::InsertAt(INT_PTR nStartIndex, CArray* pNewArray) {
  if (pNewArray == nullptr || nStartIndex < 0) AfxThrowInvalidArgException();
  if (pNewArray == this) {
    CArray copy(*this);
    InsertAt(nStartIndex, &copy);
    return;
  }
  if (pNewArray->m_nSize == 0) return;
  InsertAt(nStartIndex, pNewArray->m_pData[0], pNewArray->m_nSize);
  std::copy(pNewArray->m_pData, pNewArray->m_pData + pNewArray->m_nSize, m_pData + nStartIndex);
}

template <class TYPE, class ARG_TYPE>
void CArray<TYPE, ARG_TYPE>::RemoveAt(INT_PTR nIndex, INT_PTR nCount) {
  if (nIndex < 0 || nCount < 0 || nIndex > m_nSize || nCount > m_nSize - nIndex) AfxThrowInvalidArgException();
  std::move(m_pData + nIndex + nCount, m_pData + m_nSize, m_pData + nIndex);
  std::destroy(m_pData + m_nSize - nCount, m_pData + m_nSize);
  m_nSize -= nCount;
}

template <class TYPE, class ARG_TYPE>
void CArray<TYPE, ARG_TYPE>::Serialize(CArchive& ar) {
  CObject::Serialize(ar);
  if (ar.IsStoring()) {
    ar.WriteCount(DWORD_PTR(m_nSize));
    SerializeElements<TYPE>(ar, m_pData, m_nSize);
    return;
  }
  const DWORD_PTR n = ar.ReadCount();
  if (n > DWORD_PTR(PTRDIFF_MAX / sizeof(TYPE))) AfxThrowArchiveException(CArchiveException::badIndex, ar.m_strFileName);
  // A count read from a file is trusted only as far as its elements are really there: the array
  // grows in doubling steps as they are read, so a corrupt count ends in endOfFile rather than in
  // one huge allocation. (Past 4096 elements the capacity may so end a little above the count,
  // where the framework's would be exact.)
  const INT_PTR total = INT_PTR(n);
  INT_PTR done = 0;
  do {
    INT_PTR next = std::min(total, std::max<INT_PTR>(2 * done, 4096));
    SetSize(next, -1);
    SerializeElements<TYPE>(ar, m_pData + done, next - done);
    done = next;
  } while (done < total);
}
