// DistContext's copying, merging and comparison.
#include <znmt64/DistContext.h>

bool DistContext::operator==(const DistContext& o) const {
  return wSelect == o.wSelect && dTol == o.dTol && wFlags == o.wFlags && dDist == o.dDist && dLimit == o.dLimit &&
         pPt1 == o.pPt1 && pPt2 == o.pPt2 && nCount == o.nCount && dParam == o.dParam && abFlag[0] == o.abFlag[0] &&
         abFlag[1] == o.abFlag[1];
}

void DistContext::CopyResults(const DistContext& src) {
  dDist = src.dDist;
  if (pPt1 != nullptr && src.pPt1 != nullptr) *pPt1 = *src.pPt1;
  if (pPt2 != nullptr && src.pPt2 != nullptr) *pPt2 = *src.pPt2;
  nCount = src.nCount;
  dParam = src.dParam;
  abFlag[0] = src.abFlag[0];
}

void DistContext::Copy(const DistContext& src) {
  wSelect = src.wSelect;
  dTol = src.dTol;
  wFlags = src.wFlags;
  dDist = src.dDist;
  dLimit = src.dLimit;
  // Both places are decided by src.IsLocal, which looks at the first pointer only (see the header).
  SMat** const places[2] = {&pPt1, &pPt2};
  for (int obj = 0; obj < 2; ++obj) {
    const bool first = obj == 0;
    if (src.IsLocal(first)) {
      const unsigned char k = src.GetInd(first);
      aPts[k] = src.aPts[k];
      aPts[k + 1] = src.aPts[k + 1];
      *places[obj] = &aPts[k];
    } else {
      *places[obj] = first ? src.pPt1 : src.pPt2;
    }
  }
  nCount = src.nCount;
  dParam = src.dParam;
  abFlag[0] = src.abFlag[0];
  abFlag[1] = src.abFlag[1];
  anInd[0] = src.anInd[0];
  anInd[1] = src.anInd[1];
}
