#include "algebra/DebugSection.h"

#include <znmt64/SMat.h>

#include <znag64/AnGeoState.h>
#include <znag64/Section.h>

#include <cstdint>
#include <cstdio>

void FormatDebugCaption(char (&buf)[64], const char* format, const void* object) {
  std::snprintf(buf, sizeof buf, format, static_cast<unsigned>(reinterpret_cast<std::uintptr_t>(object)));
}

ISection* MakeDebugSection(const SMat* pts, int nPts, const LONG* idx, int nIdx, const char* caption) {
  ISection* sec = nullptr;
  if (FAILED(AnGeoState::GetGenerator()->CreateObject(AnGeoGenerator::eSection, IID_ISection,
                                                       reinterpret_cast<void**>(&sec))) ||
      sec == nullptr)
    return nullptr;
  IVertexArray* va = nullptr;
  IIndexArray* ia = nullptr;
  bool ok = SUCCEEDED(sec->QueryInterface(IID_IVertexArray, reinterpret_cast<void**>(&va))) && va != nullptr &&
            SUCCEEDED(sec->QueryInterface(IID_IIndexArray, reinterpret_cast<void**>(&ia))) && ia != nullptr;
  for (int v = 0; ok && v < nPts; ++v)
    for (int c = 0; ok && c < 3; ++c) ok = SUCCEEDED(va->SetCoord(v, c, pts[v][c]));
  for (int i = 0; ok && i < nIdx; ++i) ok = SUCCEEDED(ia->SetEntry(i, idx[i]));
  if (ok) ok = SUCCEEDED(sec->SetCaption(caption));
  if (va != nullptr) va->Release();
  if (ia != nullptr) ia->Release();
  if (!ok) {
    sec->Release();
    return nullptr;
  }
  return sec;
}

void ShowDebugSection(ISection* sec) {
  AnGeoState::Set3DPush(true);
  if (sec != nullptr) {
    AnGeoState::GetDbg()->Show(sec);  // the debugger keeps a copy, not the object
    sec->Release();
  }
  AnGeoState::PopStream();
}
