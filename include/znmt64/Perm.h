// Perm: a permutation of 0 … n−1 held as 16-bit indices; N3: a triple of ints with a
// component-wise (partial) order, used as an integer index, size or lattice point.
#pragma once
#include <znmt64/Config.h>

// Entry i of a Perm is the image of i; −1 marks a place not assigned yet.
class ZNMT64_API Perm {
 public:
  Perm() = default;
  explicit Perm(short n);  // the identity of length n
  Perm(short n, const short* src);
  virtual ~Perm();
  // A Perm owns its entries; copies are made explicitly with Copy.
  Perm(const Perm&) = delete;
  Perm& operator=(const Perm&) = delete;

  // A shorter length keeps the storage and its first entries; a longer one gets new storage whose
  // entries are not set. Lengths below 1 change nothing, not even the length.
  void SetLength(short n);
  void Reset();  // identity
  void Empty();  // every entry −1
  short& operator[](short i) { return m_pData[i]; }
  short operator[](short i) const { return m_pData[i]; }
  // First index ≥ from whose entry is −1, or −1; from = −1 means from the start.
  short GetFirstEmpty(short from) const;

  void Copy(const short* src);  // m_nLen entries
  void Copy(const Perm& p);
  void GetInverse(Perm& inv);
  // this[i] = b[a[i]]: apply a, then b.
  void Prod(const Perm& a, const Perm& b);
  void operator*=(const Perm& b);
  void MultBySwap(short i, short j);
  // Maps the count places from … onto to … and back.
  void SetMove(short from, short to, short count);
  void ShiftCyclic(short k);
  // Puts 0 … n−1 at evenly spaced places and fills the others with n … length−1 in order.
  void Spread(short n);
  void Pr() const {}  // diagnostic print: silent in this build

  short m_nLen = 0;
  short* m_pData = nullptr;
};

// The plain C form of N3, shared with modules that exchange integer triples.
struct ZnN3_ {
  int n[3];
};

// Comparisons hold only when they hold for all three components, so two triples may be
// unordered: for (1, 5, 0) and (2, 4, 0) neither < nor >= is true. Sum, Prod, += and −= wrap
// around at 32 bits.
class ZNMT64_API N3 {
 public:
  N3() = default;
  N3(int a, int b, int c) : n{a, b, c} {}
  explicit N3(const int* p) : n{p[0], p[1], p[2]} {}
  N3(const ZnN3_& s) : n{s.n[0], s.n[1], s.n[2]} {}

  void Set(int a, int b, int c) {
    n[0] = a;
    n[1] = b;
    n[2] = c;
  }
  void Copy(const int* p) { Set(p[0], p[1], p[2]); }
  void CopyTo(int* p) const {
    p[0] = n[0];
    p[1] = n[1];
    p[2] = n[2];
  }
  void CopyTo(ZnN3_& s) const { CopyTo(s.n); }
  void Reset() { Set(0, 0, 0); }

  int Sum() const { return Wrap(0u + unsigned(n[0]) + unsigned(n[1]) + unsigned(n[2])); }
  int Prod() const { return Wrap(1u * unsigned(n[0]) * unsigned(n[1]) * unsigned(n[2])); }
  void SetMin(const N3& o) {
    for (int k = 0; k < 3; ++k) n[k] = o.n[k] < n[k] ? o.n[k] : n[k];
  }
  void operator+=(const N3& o) {
    for (int k = 0; k < 3; ++k) n[k] = Wrap(unsigned(n[k]) + unsigned(o.n[k]));
  }
  void operator-=(const N3& o) {
    for (int k = 0; k < 3; ++k) n[k] = Wrap(unsigned(n[k]) - unsigned(o.n[k]));
  }

  bool operator==(const N3& o) const { return n[0] == o.n[0] && n[1] == o.n[1] && n[2] == o.n[2]; }
  bool operator!=(const N3& o) const { return !(*this == o); }
  bool operator<(const N3& o) const { return n[0] < o.n[0] && n[1] < o.n[1] && n[2] < o.n[2]; }
  bool operator<=(const N3& o) const { return n[0] <= o.n[0] && n[1] <= o.n[1] && n[2] <= o.n[2]; }
  bool operator>(const N3& o) const { return o < *this; }
  bool operator>=(const N3& o) const { return o <= *this; }
  bool operator>(int v) const { return n[0] > v && n[1] > v && n[2] > v; }
  bool operator>=(int v) const { return n[0] >= v && n[1] >= v && n[2] >= v; }

  // Placeholders: callers get 0 and false whatever the triples are.
  int DistM(N3&) const { return 0; }
  bool IsNextTo(N3&) { return false; }

  int& operator[](int k) { return n[k]; }
  int operator[](int k) const { return n[k]; }

  int n[3] = {0, 0, 0};

 private:
  static int Wrap(unsigned v) { return static_cast<int>(v); }
};
