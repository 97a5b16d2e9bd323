// StateStack<T>: the stack of saved full copies of its owner, embedded as the owner's first data
// member. CMFrame and CScalarSolver carry it and reach it through their eight virtual operations
// (Pop, Discard, Push, GetStackCount, GetStackSize, AttachStack, PopDifferent,
// SetInitialStackSize), which forward to the members of the same names here.
#pragma once
#include <znmt64/Config.h>

#include <algorithm>
#include <memory>

template <class T>
struct StateStack {
  int count = 0;
  // Owned slots, every one a default-constructed T. Held by shared ownership because a copied
  // CScalarSolver takes its source's fields as they stand and so shares the array: whichever of
  // the two is destroyed last releases it.
  std::shared_ptr<T[]> entries;
  T* owner = nullptr;
  int capacity = -1;  // -1: not attached yet, no array
  short initialSize = 1;

  // Saves a copy of self on top. The first push attaches with initialSize slots; a full stack
  // doubles (1, 2, 4, ...).
  void Push(T& self) {
    if (capacity < 0) self.AttachStack(-1);
    if (count >= capacity) Grow(capacity < 1 ? 1 : 2 * capacity);
    entries[count] = self;
    ++count;
  }

  // Restores the top state into self and removes it; an empty stack leaves self as it is.
  void Pop(T& self) {
    if (count < 1) return;
    --count;
    self = entries[count];
  }

  // Removes the top state without restoring it; true when self differs from it.
  bool Discard(const T& self) {
    if (count == 0) return false;
    const bool differs = !(entries[count - 1] == self);
    --count;
    return differs;
  }

  // Restores and removes the top state only when self differs from it; an equal top state stays
  // on the stack, unlike Discard.
  bool PopDifferent(T& self) {
    if (count == 0) return false;
    if (entries[count - 1] == self) return false;
    Pop(self);
    return true;
  }

  // Meant to be called once, before the first Push: an installed array is replaced without its
  // contents and the count is kept, as callers of the original expect.
  void AttachStack(T& self, int n) {
    owner = &self;
    if (n < 0) n = initialSize;
    entries = std::shared_ptr<T[]>(new T[n]);
    capacity = n;
  }

  // The i-th saved state from the top (0: the most recent), or null past the bottom. A negative i
  // is not rejected: it names an unused slot above the top, or null beyond the array.
  T* GetState(int i) const {
    const long slot = static_cast<long>(count) - 1 - i;
    return i >= count || slot >= capacity ? nullptr : &entries[slot];
  }

  void ResetStack() { count = 0; }

 private:
  void Grow(int n) {
    std::shared_ptr<T[]> grown(new T[n]);
    // All old slots are carried over, not only the used ones.
    std::copy_n(entries.get(), std::min(n, std::max(capacity, 0)), grown.get());
    capacity = n;
    entries = std::move(grown);
  }
};
