#include <znag64/AnGeoState.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <numeric>

std::vector<std::vector<int>> SectionData::GetStrips() const {
  const int n = GetVertexCount();
  std::vector<std::vector<int>> strips;
  std::vector<int> cur;
  const auto close = [&] {
    if (cur.size() >= 2) strips.push_back(cur);
    cur.clear();
  };
  if (idx.empty()) {
    cur.resize(static_cast<size_t>(n));
    std::iota(cur.begin(), cur.end(), 0);
  }
  for (const LONG e : idx) {
    if (e >= 0 && e < n)
      cur.push_back(e);
    else
      close();
  }
  close();
  return strips;
}

namespace {

// The drawing object of kind 9. Null out-pointers get 0x8002000F, as every component object of
// the suite answers them.
class SectionObj final : public ISection, public IVertexArray, public IIndexArray {
 public:
  HRESULT QueryInterface(REFIID iid, void** ppv) override {
    if (!ppv) return DISP_E_PARAMNOTOPTIONAL;
    if (iid == IID_IUnknown || iid == IID_ISection)
      *ppv = static_cast<ISection*>(this);
    else if (iid == IID_IVertexArray)
      *ppv = static_cast<IVertexArray*>(this);
    else if (iid == IID_IIndexArray)
      *ppv = static_cast<IIndexArray*>(this);
    else {
      *ppv = nullptr;
      return E_NOINTERFACE;
    }
    AddRef();
    return S_OK;
  }
  ULONG AddRef() override { return ++m_nRef; }
  ULONG Release() override {
    const ULONG n = --m_nRef;
    if (n == 0) delete this;
    return n;
  }

  HRESULT GetKind(int* pKind) override { return Out(pKind, static_cast<int>(AnGeoGenerator::eSection)); }
  HRESULT SetCaption(const char* text) override {
    if (!text) return E_POINTER;
    m_d.caption = text;
    return S_OK;
  }
  HRESULT GetCaption(char* buf, UINT max) override {
    if (!buf || max == 0) return DISP_E_PARAMNOTOPTIONAL;
    const size_t n = std::min<size_t>(m_d.caption.size(), max - 1);
    std::memcpy(buf, m_d.caption.data(), n);
    buf[n] = '\0';
    return n < m_d.caption.size() ? S_FALSE : S_OK;
  }
  HRESULT GetVertexCount(int* pCount) override { return Out(pCount, m_d.GetVertexCount()); }
  HRESULT GetVertex(int i, double* xyz) override {
    if (!xyz) return DISP_E_PARAMNOTOPTIONAL;
    if (i < 0 || i >= m_d.GetVertexCount()) return E_INVALIDARG;
    std::copy_n(m_d.GetVertex(i), 3, xyz);
    return S_OK;
  }
  HRESULT GetIndexCount(int* pCount) override { return Out(pCount, static_cast<int>(m_d.idx.size())); }
  HRESULT GetIndex(int pos, LONG* pValue) override {
    if (!pValue) return DISP_E_PARAMNOTOPTIONAL;
    if (pos < 0 || pos >= static_cast<int>(m_d.idx.size())) return E_INVALIDARG;
    *pValue = m_d.idx[static_cast<size_t>(pos)];
    return S_OK;
  }
  HRESULT GetStripCount(int* pCount) override {
    return Out(pCount, static_cast<int>(m_d.GetStrips().size()));
  }
  HRESULT GetLength(double* pLength) override {
    double len = 0.0;
    for (const auto& strip : m_d.GetStrips())
      for (size_t k = 1; k < strip.size(); ++k) {
        const double* a = m_d.GetVertex(strip[k - 1]);
        const double* b = m_d.GetVertex(strip[k]);
        len += std::hypot(b[0] - a[0], b[1] - a[1], b[2] - a[2]);
      }
    return Out(pLength, len);
  }
  HRESULT GetBox(double* pMin, double* pMax) override {
    if (!pMin || !pMax) return DISP_E_PARAMNOTOPTIONAL;
    const int n = m_d.GetVertexCount();
    if (n == 0) return S_FALSE;
    std::copy_n(m_d.GetVertex(0), 3, pMin);
    std::copy_n(m_d.GetVertex(0), 3, pMax);
    for (int i = 1; i < n; ++i)
      for (int k = 0; k < 3; ++k) {
        pMin[k] = std::min(pMin[k], m_d.GetVertex(i)[k]);
        pMax[k] = std::max(pMax[k], m_d.GetVertex(i)[k]);
      }
    return S_OK;
  }
  HRESULT Transform(const double* m) override {
    if (!m) return E_POINTER;
    for (size_t v = 0; v < m_d.xyz.size(); v += 3) {
      const double p[3] = {m_d.xyz[v], m_d.xyz[v + 1], m_d.xyz[v + 2]};
      for (size_t r = 0; r < 3; ++r)
        m_d.xyz[v + r] = m[4 * r] * p[0] + m[4 * r + 1] * p[1] + m[4 * r + 2] * p[2] + m[4 * r + 3];
    }
    return S_OK;
  }
  HRESULT Clear() override {
    m_d.xyz.clear();
    m_d.idx.clear();
    return S_OK;
  }

  HRESULT SetCoord(int i, int axis, double value) override {
    if (i < 0 || i >= SectionData::kMaxEntries || axis < 0 || axis > 2) return E_INVALIDARG;
    const size_t at = 3 * static_cast<size_t>(i) + static_cast<size_t>(axis);
    if (at >= m_d.xyz.size()) m_d.xyz.resize(3 * (static_cast<size_t>(i) + 1), 0.0);
    m_d.xyz[at] = value;
    return S_OK;
  }
  HRESULT SetEntry(int pos, LONG value) override {
    if (pos < 0 || pos >= SectionData::kMaxEntries) return E_INVALIDARG;
    if (pos >= static_cast<int>(m_d.idx.size())) m_d.idx.resize(static_cast<size_t>(pos) + 1, -1);
    m_d.idx[static_cast<size_t>(pos)] = value;
    return S_OK;
  }

 private:
  ~SectionObj() = default;

  template <class T>
  static HRESULT Out(T* p, T value) {
    if (!p) return DISP_E_PARAMNOTOPTIONAL;
    *p = value;
    return S_OK;
  }

  ULONG m_nRef = 1;
  SectionData m_d;
};

}  // namespace

HRESULT AnGeoGenerator::CreateObject(int nKind, REFIID iid, void** ppv) {
  if (!ppv) return DISP_E_PARAMNOTOPTIONAL;
  *ppv = nullptr;
  if (nKind != eSection) return E_INVALIDARG;
  auto* obj = new SectionObj;
  const HRESULT hr = obj->QueryInterface(iid, ppv);
  obj->Release();  // the query's reference is the caller's; an unknown iid frees the object
  return hr;
}
