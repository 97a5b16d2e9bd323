// What the library's component objects share. Internal: not installed, not exported.
#pragma once
#include <znmt64/Config.h>
#include <znmt64/platform/Com.h>

#include <cstddef>

// A component object holds each interface implementation as a member at a fixed position, and the
// implementation finds its object by subtracting that position from its own address: it needs no
// pointer of its own and is nothing but its interface table. The offset comes from offsetof on a
// polymorphic class, which GCC and Clang support for classes without virtual bases (our case);
// the callers silence -Winvalid-offsetof around it.
template <class Outer, class Inner>
Outer& OuterOf(Inner* inner, std::size_t offset) {
  return *reinterpret_cast<Outer*>(reinterpret_cast<char*>(inner) - offset);
}

// QueryInterface of an interface implementation: a null ppv is refused, its own identifier gives
// itself, counted on the outer object, and every other identifier is the outer object's to answer.
template <class Outer, class Inner>
HRESULT NestedQueryInterface(Outer& outer, Inner* self, REFIID own, REFIID iid, void** ppv) {
  if (ppv == nullptr) return DISP_E_PARAMNOTOPTIONAL;
  if (iid == own) {
    *ppv = self;
    outer.AddRef();
    return S_OK;
  }
  return outer.QueryInterface(iid, ppv);
}
