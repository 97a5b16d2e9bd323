// MRefObj: the reference count shared by the library's component objects (FrameOI, CircleOI).
#pragma once
#include <znmt64/Config.h>
#include <znmt64/platform/Com.h>
#include <znmt64/platform/CObject.h>

// {6A7F5542-C2BD-480D-97B1-B90F2129774F}: not an interface. Asked of a component object of this
// library, it hands out the wrapped object itself (CMFrame* of a FrameOI, CCircle* of a
// CircleOI), uncounted: code of the library that is given any interface reaches the object
// behind it this way. The pointer is valid while the component object lives.
inline constexpr IID IID_WrappedObject = {
    0x6A7F5542, 0xC2BD, 0x480D, {0x97, 0xB1, 0xB9, 0x0F, 0x21, 0x29, 0x77, 0x4F}};

// Status codes of the component objects, under the framework's names for their bit patterns:
//   E_NOINTERFACE (0x80004002)            identifier not answered
//   DISP_E_PARAMNOTOPTIONAL (0x8002000F)  a pointer argument is null
//   E_UNEXPECTED (0x8000FFFF)             the wrapped object is missing

// Counts are plain integers, not atomic: an object and its interfaces belong to one thread at a
// time.
class ZNMT64_API MRefObj : public CObject {
  DECLARE_DYNAMIC(MRefObj)
 public:
  MRefObj() = default;
  ~MRefObj() override = default;
  // A count belongs to one object: component objects are never copied.
  MRefObj(const MRefObj&) = delete;
  MRefObj& operator=(const MRefObj&) = delete;

  // The new count.
  ULONG AddRef();
  // The new count; at 0 the object deletes itself (through the virtual destructor) and 0 is
  // returned. Releasing an object whose count is already 0 wraps the count round instead.
  ULONG Release();

  ULONG m_nRef = 1;
};
