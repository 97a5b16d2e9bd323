// State of the 2D analytic geometry module: its start-up, the generator of drawing objects and
// the 3D debugger that records what it is shown.
#pragma once
#include <znmt64/Config.h>
#include <znmt64/platform/Com.h>
#include <znag64/Section.h>

#include <string>
#include <vector>

// Starts the module once; later calls do nothing.
ZNAG64_API void InitAnGeoDll();
// How many times the module really started (0 or 1); lets callers check the once-only start.
ZNAG64_API int AnGeoStartCount();

// Makes drawing objects. They need no start-up: debug output works before InitAnGeoDll.
class ZNAG64_API AnGeoGenerator {
 public:
  enum EKind { eSection = 9 };

  // A new object of kind nKind, asked for iid; the caller owns the one reference it gets.
  // E_INVALIDARG for a kind not drawn here; on failure *ppv is null.
  HRESULT CreateObject(int nKind, REFIID iid, void** ppv);
};

// What a section holds, copied out of it: the debugger keeps such copies, not the objects.
struct ZNAG64_API SectionData {
  // Guards against a stray vertex or index position allocating gigabytes.
  static constexpr int kMaxEntries = 1 << 24;

  std::string caption;
  std::vector<double> xyz;  // three coordinates per vertex
  std::vector<LONG> idx;

  int GetVertexCount() const { return static_cast<int>(xyz.size() / 3); }
  const double* GetVertex(int i) const { return xyz.data() + 3 * static_cast<size_t>(i); }
  // The polylines drawn, as vertex indices, by the rules of ISection.
  std::vector<std::vector<int>> GetStrips() const;
};

// Records every object it is shown and writes the record as an SVG picture.
//
// The picture is an orthographic view fitted to everything recorded: objects shown in a 3D
// stream (the default) in the isometric view with z up (x runs to the lower right, y to the lower
// left), objects of a flat stream in the top view (x right, y up). Each section's polylines are
// drawn as lines in its colour, its caption as text at its first drawn vertex, on a dark ground.
// Objects without ISection are recorded but not drawn.
class ZNAG64_API Dbg3D {
 public:
  struct Item {
    SectionData data;
    bool bSection;  // the object answered ISection
    DWORD color;    // 0x00BBGGRR
    int nMode;      // 0: lines; 1: each polyline also filled, closed, half transparent
    int nStream;    // 0 for the base stream, then 1, 2, ... in the order streams were opened
    bool b3D;       // drawn in the isometric view, else in the top view
  };

  std::vector<Item> m_items;

  // Records pObj, which stays the caller's: its reference is neither taken nor released.
  // E_POINTER for a null object, which is not recorded.
  HRESULT Show(IUnknown* pObj, DWORD color = 0x00FFFFFF, int nMode = 0);

  // Opens a stream for what is shown next, nested in the current one.
  void PushStream(bool b3D);
  // Closes the innermost stream; false when only the base stream is open.
  bool PopStream();
  int GetStreamDepth() const { return static_cast<int>(m_streams.size()); }

  // Forgets the items and closes every stream.
  void Clear();
  bool WriteSvg(const char* path) const;

 private:
  struct Stream {
    int nId;
    bool b3D;
  };
  std::vector<Stream> m_streams;  // innermost last; empty: the base stream, 3D
  int m_nStreams = 0;             // streams opened so far
};

// The module's one state; the static members reach theStateAnGeo, so callers need no instance.
class ZNAG64_API AnGeoState {
 public:
  AnGeoGenerator m_generator;
  Dbg3D m_dbg;

  static AnGeoGenerator* GetGenerator();
  static Dbg3D* GetDbg();
  // Opens a debugger stream: 3D when b3D, flat otherwise.
  static void Set3DPush(bool b3D);
  static bool PopStream();
};

extern ZNAG64_API AnGeoState theStateAnGeo;
