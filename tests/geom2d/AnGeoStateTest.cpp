#include <znag64/AnGeoState.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace {

template <class I>
I* As(IUnknown* object, REFIID iid) {
  void* p = nullptr;
  object->QueryInterface(iid, &p);
  return static_cast<I*>(p);
}

// A section filled the way the 3D line's debug dump fills one: four vertices (the two arrow-head
// ones coincide) strung by the index list 0, 1, 2, 1, 3.
ISection* MakeArrow(const char* caption) {
  void* p = nullptr;
  AnGeoState::GetGenerator()->CreateObject(AnGeoGenerator::eSection, IID_ISection, &p);
  auto* sec = static_cast<ISection*>(p);
  IVertexArray* v = As<IVertexArray>(sec, IID_IVertexArray);
  IIndexArray* ix = As<IIndexArray>(sec, IID_IIndexArray);
  const double x[4] = {0.0, 2.0, 0.9, 0.9};
  for (int i = 0; i < 4; ++i) v->SetCoord(i, 0, x[i]);  // y and z of the added vertices are 0
  const LONG idx[5] = {0, 1, 2, 1, 3};
  for (int k = 0; k < 5; ++k) ix->SetEntry(k, idx[k]);
  sec->SetCaption(caption);
  v->Release();
  ix->Release();
  return sec;
}

// Any component object that is not a section.
struct Plain : IUnknown {
  ULONG n = 1;
  HRESULT QueryInterface(REFIID, void** ppv) override { *ppv = nullptr; return E_NOINTERFACE; }
  ULONG AddRef() override { return ++n; }
  ULONG Release() override { return --n; }
};

}  // namespace

TEST(AnGeoState, GeneratorMakesSections) {
  void* p = &p;
  EXPECT_EQ(AnGeoState::GetGenerator()->CreateObject(3, IID_ISection, &p), E_INVALIDARG);
  EXPECT_EQ(p, nullptr);
  EXPECT_EQ(AnGeoState::GetGenerator()->CreateObject(9, GUID_NULL, &p), E_NOINTERFACE);
  EXPECT_EQ(AnGeoState::GetGenerator()->CreateObject(9, IID_ISection, nullptr), DISP_E_PARAMNOTOPTIONAL);

  ISection* sec = MakeArrow("CLineal 0000abcd");
  int n = 0;
  double len = 0, lo[3], hi[3];
  EXPECT_TRUE(sec->GetStripCount(&n) == S_OK && n == 1);
  sec->GetLength(&len);
  EXPECT_DOUBLE_EQ(len, 2.0 + 3 * 1.1);
  const double move[12] = {1, 0, 0, 1, 0, 1, 0, 2, 0, 0, 1, 3};
  sec->Transform(move);
  EXPECT_TRUE(sec->GetBox(lo, hi) == S_OK && lo[1] == 2.0 && hi[0] == 3.0);
  char buf[8];
  EXPECT_EQ(sec->GetCaption(buf, sizeof buf), S_FALSE);  // cut to the buffer
  EXPECT_STREQ(buf, "CLineal");

  // A gap in the index list is filled with -1 and breaks the polyline; a lone entry draws nothing.
  IIndexArray* ix = As<IIndexArray>(sec, IID_IIndexArray);
  EXPECT_TRUE(ix->SetEntry(7, 3) == S_OK && ix->SetEntry(-1, 0) == E_INVALIDARG);
  ix->SetEntry(2, -1);
  sec->GetStripCount(&n);
  EXPECT_EQ(n, 2);  // 0-1 and 1-3
  EXPECT_EQ(ix->Release(), 1u);
  sec->Clear();
  EXPECT_EQ(sec->GetBox(lo, hi), S_FALSE);
  EXPECT_EQ(sec->Release(), 0u);
}

TEST(AnGeoState, DebuggerRecordsAndWritesSvg) {
  Dbg3D& dbg = *AnGeoState::GetDbg();
  dbg.Clear();
  ISection* sec = MakeArrow("CLineal 0000abcd");
  Plain plain;
  EXPECT_EQ(dbg.Show(sec), S_OK);
  AnGeoState::Set3DPush(false);
  EXPECT_EQ(dbg.Show(sec, 65535, 1), S_OK);
  AnGeoState::Set3DPush(true);
  EXPECT_EQ(dbg.Show(&plain), S_OK);
  EXPECT_TRUE(AnGeoState::PopStream() && AnGeoState::PopStream() && !AnGeoState::PopStream());
  EXPECT_EQ(dbg.Show(nullptr), E_POINTER);
  EXPECT_EQ(plain.n, 1u);  // the debugger keeps no reference
  sec->SetCaption("changed after showing");
  EXPECT_EQ(sec->Release(), 0u);  // the records are copies

  ASSERT_EQ(dbg.m_items.size(), 3u);
  const Dbg3D::Item& a = dbg.m_items[0];
  EXPECT_EQ(a.data.caption, "CLineal 0000abcd");
  EXPECT_TRUE(a.data.idx == (std::vector<LONG>{0, 1, 2, 1, 3}) && a.data.xyz[3] == 2.0);
  EXPECT_TRUE(a.b3D && a.bSection && !dbg.m_items[1].b3D && !dbg.m_items[2].bSection);
  EXPECT_EQ(dbg.m_items[2].nStream, dbg.m_items[1].nStream + 1);

  ISection* amp = MakeArrow("a&b<c>");
  dbg.Show(amp);
  amp->Release();
  const char* env = std::getenv("ZNMT64_TEST_TMP");
  const std::filesystem::path dir = env && *env ? env : std::filesystem::temp_directory_path();
  const std::filesystem::path file = dir / "znag64_debugger.svg";
  std::filesystem::remove(file);
  ASSERT_TRUE(dbg.WriteSvg(file.c_str()));
  std::ifstream in(file);
  const std::string svg{std::istreambuf_iterator<char>(in), {}};
  // The polygon is the filled one, 65535 is red and green, and the flat stream's top view keeps x:
  // its arrow runs from x 0 to x 2 on the picture.
  for (const char* part : {">CLineal 0000abcd</text>", ">a&amp;b&lt;c&gt;</text>", "<polygon",
                           "stroke=\"#ffff00\"", "points=\"0,0 2,0 0.9,0 2,0 0.9,0 \"", "</svg>"})
    EXPECT_NE(svg.find(part), std::string::npos) << part;
  EXPECT_FALSE(dbg.WriteSvg((dir / "no such dir" / "x.svg").c_str()));
  dbg.Clear();
}
