// Drawing objects of the debug-drawing service: reference-counted component objects that other
// modules fill and hand to the 3D debugger.
#pragma once
#include <znmt64/Config.h>
#include <znmt64/platform/Com.h>

// {A66D0B80-9A5A-4FCE-835F-F3E0619DE947}
constexpr IID IID_ISection = {0xA66D0B80, 0x9A5A, 0x4FCE, {0x83, 0x5F, 0xF3, 0xE0, 0x61, 0x9D, 0xE9, 0x47}};
// {08C5EC3D-A8FB-4CF3-9F90-1F3C05AEEC0A}
constexpr IID IID_IVertexArray = {
    0x08C5EC3D, 0xA8FB, 0x4CF3, {0x9F, 0x90, 0x1F, 0x3C, 0x05, 0xAE, 0xEC, 0x0A}};
// {ED873BC2-BD99-47F7-9549-A2CBE37AFD90}
constexpr IID IID_IIndexArray = {
    0xED873BC2, 0xBD99, 0x47F7, {0x95, 0x49, 0xA2, 0xCB, 0xE3, 0x7A, 0xFD, 0x90}};

// A drawn figure: vertices in space, and an index list that strings them into polylines. The
// index list is read as one polyline through the listed vertices in order; an entry that is not
// a vertex (-1 by convention) ends the polyline and the next valid entry starts another. An empty
// list draws all vertices in order. A polyline needs two entries; single points are not drawn.
// The twelve operations and their order are the interface's layout: append, never reorder.
struct ISection : IUnknown {
  // 9 for a section (AnGeoGenerator::eSection).
  virtual HRESULT GetKind(int* pKind) = 0;
  virtual HRESULT SetCaption(const char* text) = 0;
  // Copies at most max - 1 characters and a terminating zero; S_FALSE when the caption was cut.
  virtual HRESULT GetCaption(char* buf, UINT max) = 0;
  virtual HRESULT GetVertexCount(int* pCount) = 0;
  // xyz receives three doubles.
  virtual HRESULT GetVertex(int i, double* xyz) = 0;
  virtual HRESULT GetIndexCount(int* pCount) = 0;
  virtual HRESULT GetIndex(int pos, LONG* pValue) = 0;
  // Number of polylines drawn.
  virtual HRESULT GetStripCount(int* pCount) = 0;
  // Total length of the polylines drawn.
  virtual HRESULT GetLength(double* pLength) = 0;
  // Smallest and largest coordinates of the vertices (three doubles each); S_FALSE and nothing
  // written without vertices.
  virtual HRESULT GetBox(double* pMin, double* pMax) = 0;
  // Applies the affine map of a 3×4 row-major matrix (rotation part, then translation column).
  virtual HRESULT Transform(const double* m) = 0;
  // Removes vertices and indices; the caption stays.
  virtual HRESULT Clear() = 0;
};

// Writing side of a section's vertices.
struct IVertexArray : IUnknown {
  // Coordinate axis (0..2) of vertex i; setting a vertex past the end adds zero vertices up to it.
  virtual HRESULT SetCoord(int i, int axis, double value) = 0;
};

// Writing side of a section's index list.
struct IIndexArray : IUnknown {
  // Entry pos; setting past the end fills the gap with -1, which draws nothing.
  virtual HRESULT SetEntry(int pos, LONG value) = 0;
};
