// PCExBase: the XML persistence object through which classes of the suite store and load
// themselves.
//
// A class has one PersistXML routine for both directions: it opens its element, transfers its data
// items, and closes the element again; IsStoring() says which way the data goes. The object keeps a
// stack of open elements; the bottom entry is the document itself, so the first element a caller
// opens is a top-level element of the document.
//
// Shape of the XML: every object is an element, and its numbers are attributes of that element,
// each holding a whitespace-separated list of doubles in their shortest form that reads back to
// the same bits ("0.1", "1e-300", "-0", "nan", "inf"). A frame, say, gives
//   <Fr O="1 2 3" A0="1 0 0" A1="0 1 0" />
// and nested objects nest their elements: <Ll><Lc V="0 0 0" /><Dr V="1 0 0" /></Ll>.
// A document with several top-level elements is written and read back, but is not well-formed
// XML for other readers; a caller that stores several objects opens one enclosing element first.
//
// Nothing here throws or crashes on bad input: malformed XML, a missing element or data item, or a
// data item that is short or not numeric gives a false result and leaves the caller's values as
// they were.
#pragma once
#include <znmt64/Config.h>

#include <memory>
#include <string>

namespace pugi {
struct xml_node_struct;
}

// Handle of an element of a PCExBase document; null when there is none. It stays valid until the
// element is removed (PopElement(true)) or the document is replaced or destroyed.
struct PCElem {
  pugi::xml_node_struct* node = nullptr;

  explicit operator bool() const { return node != nullptr; }
  friend bool operator==(const PCElem&, const PCElem&) = default;
};

class ZNBL64_API PCExBase {
 public:
  enum EMode {
    eNone,     // no document: every transfer fails and does nothing
    eStoring,  // a document being written
    eLoading   // a document read from a file or a string
  };

  PCExBase();  // eNone until StartStoring or a successful load
  ~PCExBase();
  PCExBase(const PCExBase&) = delete;
  PCExBase& operator=(const PCExBase&) = delete;

  // ---- documents ---------------------------------------------------------------------------
  // Drops any document and starts an empty one in storing mode.
  void StartStoring();
  // Reads a document and enters loading mode with the document as the current element. On a
  // failure (file missing, malformed XML, no element at all) the object is left in eNone.
  bool LoadFile(const char* path);
  bool LoadString(const char* xml);
  // Writes the document, indented, with an XML declaration; false in eNone or when the file
  // cannot be written.
  bool SaveFile(const char* path) const;
  bool SaveString(std::string& out) const;

  EMode GetMode() const { return m_eMode; }
  bool IsStoring() const { return m_eMode == eStoring; }
  bool IsLoading() const { return m_eMode == eLoading; }

  // ---- elements ----------------------------------------------------------------------------
  // Opens child name of the current element and makes it current; true when it did. When
  // storing with create, a new child is appended (a repeated name gives a second element);
  // otherwise, and always when loading, the first existing child of that name is opened.
  bool PersistElement(const char* name, bool create);
  // PersistElement(name, true): the storing side's way to open a new element.
  bool PushElement(const char* name) { return PersistElement(name, true); }
  // Returns to the element that was current before the last PersistElement or Push; false at the
  // document level. With remove, the element left is deleted from the document, so that a loader
  // can take repeated elements of one name one by one; it is not deleted (and false results) while
  // a still open element lies inside it.
  bool PopElement(bool remove);

  // The current element: the document node itself before any element is opened, null in eNone.
  PCElem GetCurElem() const;
  // The first child element of parent called name, or null.
  PCElem FindChildElem(PCElem parent, const char* name) const;
  // Makes an element of this document current (PopElement returns from it); false for a null
  // handle or one of another document.
  bool Push(PCElem elem);
  // Child elements of the current element, or only those called name.
  int GetChildCount(const char* name = nullptr) const;

  // ---- data items --------------------------------------------------------------------------
  // Storing: writes count doubles as the data item name of the current element, replacing an
  // item of that name. False when not storing, at the document level, or for count < 0.
  bool PushData(const char* name, const double* data, int count);
  // Reads the data item name of the current element into data[0..count-1]. With exact
  // the item must hold exactly count numbers; without it, extra numbers after the first count are
  // ignored. A missing item, too few numbers or a word that is not a number gives false, and data
  // is untouched.
  bool ReadData(const char* name, double* data, int count, bool exact) const;
  // The routine that serves both directions: PushData when storing, ReadData (exact) when loading.
  bool PersistData(const char* name, double* data, int count) {
    return IsStoring() ? PushData(name, data, count) : ReadData(name, data, count, true);
  }

 private:
  struct Impl;
  bool Adopt(bool parsed);

  EMode m_eMode = eNone;
  std::unique_ptr<Impl> m_pImpl;
};
