#include <znag64/AnGeoState.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <fstream>
#include <locale>

namespace {
int g_starts = 0;
}

void InitAnGeoDll() {
  if (g_starts == 0) ++g_starts;
}

int AnGeoStartCount() { return g_starts; }

AnGeoState theStateAnGeo;

AnGeoGenerator* AnGeoState::GetGenerator() { return &theStateAnGeo.m_generator; }
Dbg3D* AnGeoState::GetDbg() { return &theStateAnGeo.m_dbg; }
void AnGeoState::Set3DPush(bool b3D) { theStateAnGeo.m_dbg.PushStream(b3D); }
bool AnGeoState::PopStream() { return theStateAnGeo.m_dbg.PopStream(); }

HRESULT Dbg3D::Show(IUnknown* pObj, DWORD color, int nMode) {
  if (!pObj) return E_POINTER;
  Item item{};
  item.color = color;
  item.nMode = nMode;
  item.nStream = m_streams.empty() ? 0 : m_streams.back().nId;
  item.b3D = m_streams.empty() || m_streams.back().b3D;
  ISection* sec = nullptr;
  if (SUCCEEDED(pObj->QueryInterface(IID_ISection, reinterpret_cast<void**>(&sec))) && sec) {
    item.bSection = true;
    SectionData& d = item.data;
    // Any implementation of ISection may be shown, so everything is read through the interface
    // and its counts are not trusted beyond the limit the module's own sections keep.
    std::string buf(64, '\0');
    HRESULT hr;
    while ((hr = sec->GetCaption(buf.data(), static_cast<UINT>(buf.size()))) == S_FALSE && buf.size() < 65536)
      buf.resize(buf.size() * 4);
    if (SUCCEEDED(hr)) d.caption = buf.c_str();
    int n = 0;
    if (SUCCEEDED(sec->GetVertexCount(&n)))
      for (int i = 0; i < std::min(n, SectionData::kMaxEntries); ++i) {
        double v[3] = {0.0, 0.0, 0.0};
        sec->GetVertex(i, v);
        d.xyz.insert(d.xyz.end(), v, v + 3);
      }
    n = 0;
    if (SUCCEEDED(sec->GetIndexCount(&n)))
      for (int i = 0; i < std::min(n, SectionData::kMaxEntries); ++i) {
        LONG e = -1;
        sec->GetIndex(i, &e);
        d.idx.push_back(e);
      }
    sec->Release();
  }
  m_items.push_back(std::move(item));
  return S_OK;
}

void Dbg3D::PushStream(bool b3D) { m_streams.push_back({++m_nStreams, b3D}); }

bool Dbg3D::PopStream() {
  if (m_streams.empty()) return false;
  m_streams.pop_back();
  return true;
}

void Dbg3D::Clear() {
  m_items.clear();
  m_streams.clear();
}

namespace {

struct P2 {
  double x, y;
};

P2 Project(const double* v, bool b3D) {
  // The picture's y grows downwards. 0 - y rather than -y: a zero stays +0 and is written "0".
  if (!b3D) return {v[0], 0.0 - v[1]};
  constexpr double kCos30 = 0.86602540378443864676;
  return {(v[0] - v[1]) * kCos30, (v[0] + v[1]) * 0.5 - v[2]};
}

std::string Escape(const std::string& s) {
  std::string out;
  for (const char c : s) {
    switch (c) {
      case '&': out += "&amp;"; break;
      case '<': out += "&lt;"; break;
      case '>': out += "&gt;"; break;
      case '"': out += "&quot;"; break;
      // XML has no place for control characters but tab and line breaks.
      default: out += (static_cast<unsigned char>(c) < 0x20 && c != '\t' && c != '\n' && c != '\r') ? '?' : c;
    }
  }
  return out;
}

std::string ColorText(DWORD bgr) {
  char buf[8];
  std::snprintf(buf, sizeof buf, "#%02x%02x%02x", static_cast<unsigned>(bgr & 0xFF),
                static_cast<unsigned>((bgr >> 8) & 0xFF), static_cast<unsigned>((bgr >> 16) & 0xFF));
  return buf;
}

}  // namespace

bool Dbg3D::WriteSvg(const char* path) const {
  if (!path) return false;
  // Project first: the view box is fitted to what is drawn.
  std::vector<std::vector<std::vector<P2>>> lines(m_items.size());
  double x0 = 1e307, y0 = 1e307, x1 = -1e307, y1 = -1e307;
  for (size_t k = 0; k < m_items.size(); ++k)
    for (const auto& strip : m_items[k].data.GetStrips()) {
      auto& line = lines[k].emplace_back();
      for (const int v : strip) {
        const P2 p = Project(m_items[k].data.GetVertex(v), m_items[k].b3D);
        line.push_back(p);
        x0 = std::min(x0, p.x);
        y0 = std::min(y0, p.y);
        x1 = std::max(x1, p.x);
        y1 = std::max(y1, p.y);
      }
    }
  if (x0 > x1) {  // nothing drawn
    x0 = y0 = 0.0;
    x1 = y1 = 1.0;
  }
  // A picture of a single point or a line along an axis still needs an extent in both directions.
  const double span = std::max({x1 - x0, y1 - y0, 1e-9 * std::max({std::fabs(x0), std::fabs(y0), 1.0})});
  const double margin = 0.08 * span;
  const double vx = x0 - margin, vy = y0 - margin;
  const double vw = std::max(x1 - x0, span * 0.25) + 2 * margin,
               vh = std::max(y1 - y0, span * 0.25) + 2 * margin;
  const int width = 800, height = std::clamp(static_cast<int>(800.0 * vh / vw), 200, 1600);

  std::ofstream out(path);
  if (!out) return false;
  out.imbue(std::locale::classic());  // a host's locale must not write decimal commas
  out.precision(10);
  out << "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
      << "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" << width << "\" height=\"" << height
      << "\" viewBox=\"" << vx << ' ' << vy << ' ' << vw << ' ' << vh << "\">\n"
      << "<rect x=\"" << vx << "\" y=\"" << vy << "\" width=\"" << vw << "\" height=\"" << vh
      << "\" fill=\"#202428\"/>\n";
  const double fontSize = 0.03 * std::max(vw, vh);
  // Strokes 1.5 pixels wide at the picture's own size, in view-box units: viewers that ignore
  // non-scaling strokes would otherwise draw them as wide as a unit of the scene.
  const double strokeWidth = 1.5 * vw / width;
  for (size_t k = 0; k < m_items.size(); ++k) {
    const Item& it = m_items[k];
    if (lines[k].empty()) continue;
    const std::string color = ColorText(it.color);
    out << "<g data-stream=\"" << it.nStream << "\">\n";
    for (const auto& line : lines[k]) {
      out << (it.nMode == 1 ? "<polygon" : "<polyline") << " points=\"";
      for (const P2& p : line) out << p.x << ',' << p.y << ' ';
      out << "\" stroke=\"" << color << "\" stroke-width=\"" << strokeWidth << "\" ";
      if (it.nMode == 1)
        out << "fill=\"" << color << "\" fill-opacity=\"0.25\"/>\n";
      else
        out << "fill=\"none\"/>\n";
    }
    if (!it.data.caption.empty())
      out << "<text x=\"" << lines[k][0][0].x << "\" y=\"" << lines[k][0][0].y << "\" font-size=\""
          << fontSize << "\" font-family=\"monospace\" fill=\"" << color << "\">" << Escape(it.data.caption)
          << "</text>\n";
    out << "</g>\n";
  }
  out << "</svg>\n";
  out.close();
  return !out.fail();
}
