// DistContext: the record every distance query between two objects fills in.
//
// The caller says which nearest points it wants (SetNeed, or its own SMat's address in pPt1 /
// pPt2) and, optionally, a distance limit; the query keeps the smallest distance found in dDist
// and writes the nearest point on each object where the pointers say. Partial results of
// sub-queries are merged with Insert. A plain value type: copyable, comparable, no virtual table.
//
// How a query uses it:
//   1. When IsNeedPoints() is false it computes distances only.
//   2. It offers candidates with Update(p1, p2, d); the strict comparison keeps the first of
//      equal candidates.
//   3. A sub-query runs on a fresh DistContext(bool, bool) built from the caller's needs and is
//      merged with Insert.
//   4. A query answered by the mirrored query (the two objects exchanged) calls Swap() before and
//      after it, so that the points land in the right places.
//   5. A limit set with DistContext(double) is seen through IsOperCloser, IsCloser, IsCloserD.
//
// The pointers pPt1 / pPt2 are null, or point into this record's own aPts[0] or aPts[2] (local),
// or at an SMat of the caller's (external). The slot after a local point (aPts[1], aPts[3]) is a
// companion vector of that result and travels with it when the record is copied.
#pragma once
#include <znmt64/Config.h>
#include <znmt64/SMat.h>

#include <cstdint>

class ZNMT64_API DistContext {
 public:
  DistContext() { Construct(); }
  // SetNeed(true) when bNeedPt1, then SetNeed(false) when bNeedPt2.
  DistContext(bool bNeedPt1, bool bNeedPt2) {
    Construct();
    if (bNeedPt1) SetNeed(true);
    if (bNeedPt2) SetNeed(false);
  }
  explicit DistContext(double limit) {
    Construct();
    dLimit = limit;
  }
  // Local points are re-seated into the copy's own slots (see Copy).
  DistContext(const DistContext& src) { Copy(src); }
  void operator=(const DistContext& src) { Copy(src); }
  // Never frees what pPt1 / pPt2 point to.
  ~DistContext() = default;

  // Every field to its initial value; the point slots are left as they are.
  void Construct() {
    wSelect = 0xFFFF;
    wFlags = 0;
    dTol = 1e-10;
    dLimit = -1.0;
    dDist = 1e307;
    pPt1 = nullptr;
    pPt2 = nullptr;
    dParam = -1.0;
    nCount = 0;
    abFlag[0] = abFlag[1] = false;
    anInd[0] = anInd[1] = -1;
  }

  // ---- choosing the outputs ------------------------------------------------------------------
  // The object's local slot, unless the caller already set a pointer (an external one is kept).
  void SetNeed(bool bFirst) {
    if (bFirst) {
      if (pPt1 == nullptr) pPt1 = &aPts[0];
    } else if (pPt2 == nullptr) {
      pPt2 = &aPts[2];
    }
  }
  void SetNeed(bool bNeed1, bool bNeed2) {
    if (bNeed1 && pPt1 == nullptr) pPt1 = &aPts[0];
    if (bNeed2 && pPt2 == nullptr) pPt2 = &aPts[2];
  }

  // ---- queries on the record -------------------------------------------------------------------
  bool IsNeedPoints() const { return pPt1 != nullptr || pPt2 != nullptr; }
  // Two distinct output places; two null pointers are not valid.
  bool IsValid() const { return pPt1 != pPt2; }
  // Where to write the object's point: never null, the local slot when no place was chosen.
  SMat* Pt(bool bFirst) {
    if (bFirst) return pPt1 != nullptr ? pPt1 : &aPts[0];
    return pPt2 != nullptr ? pPt2 : &aPts[2];
  }
  // 0 when the object's point is aPts[0], otherwise 2 (also for a null or external pointer).
  unsigned char GetInd(bool bFirst) const { return (bFirst ? pPt1 : pPt2) == &aPts[0] ? 0 : 2; }
  // Whether the FIRST object's point is local, whichever object is asked about. Copy relies on
  // exactly this.
  bool IsLocal(bool /*bFirst*/) const { return pPt1 == &aPts[0] || pPt1 == &aPts[2]; }
  // The best distance is still above the limit.
  bool IsCloser() const { return dDist > dLimit; }
  // dDist itself beyond ±1e306, else +1e306 above the limit and -1e306 not above it: a signed
  // marker for callers that sort by it.
  double IsCloserD() const {
    if (dDist > 1e306 || dDist < -1e306) return dDist;
    return dDist > dLimit ? 1e306 : -1e306;
  }
  // A limit is in force.
  bool IsOperCloser() const { return dLimit > 1e-10; }
  // wSelect, dTol, wFlags, dDist, dLimit, the pointer values, nCount, dParam, abFlag; anInd and
  // the slots' contents are not compared.
  bool operator==(const DistContext& o) const;

  // ---- filling in results ----------------------------------------------------------------------
  // Takes the candidate when d is strictly below the best distance (ties keep the earlier one).
  void Update(const SMat& p1, const SMat& p2, double d) {
    if (d >= dDist) return;
    if (pPt1 != nullptr) *pPt1 = p1;
    if (pPt2 != nullptr) *pPt2 = p2;
    dDist = d;
  }
  // dDist, the points where both records have a place, nCount, dParam and abFlag[0]; abFlag[1]
  // and anInd stay as they are.
  void CopyResults(const DistContext& src);
  // Merges a sub-query's result when it is strictly closer; true when it was taken.
  bool Insert(const DistContext& src) {
    if (src.dDist >= dDist) return false;
    CopyResults(src);
    return true;
  }
  // A full copy. A local point of src becomes the same slot of this record, with its companion;
  // an external or null pointer is shared as it is. As IsLocal looks at the first pointer only,
  // a source whose first point is local gives the copy a local second point too, even when the
  // source's second pointer was null or external; callers rely on that.
  void Copy(const DistContext& src);
  // Exchanges the objects' output places.
  void Swap() {
    SMat* p = pPt1;
    pPt1 = pPt2;
    pPt2 = p;
  }

  std::uint16_t wSelect;  // the caller's selector word; carried, not interpreted
  std::uint16_t wFlags;   // the caller's flag word; carried, not interpreted
  double dTol;            // carried with the query, not interpreted
  double dLimit;          // above 1e-10: a limit is in force
  double dDist;           // smallest distance so far; 1e307 until the first result
  SMat* pPt1;             // nearest point on the first object goes here; null: not wanted
  SMat* pPt2;             // the same for the second object
  SMat aPts[4];           // local slots: 0 and 1 of the first object, 2 and 3 of the second
  double dParam;          // a parameter written by queries; -1: none
  std::int32_t nCount;    // a count written by queries
  bool abFlag[2];         // a flag per object
  std::int32_t anInd[2];  // an index per object (side or corner reached); -1: none
};
