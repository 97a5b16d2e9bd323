#include <znbl64/PCExBase.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <string>

namespace {

// What a class's PersistXML does: one routine for both directions.
bool PersistFrame(PCExBase& x, double* o) {
  if (!x.PersistElement("Fr", true)) return false;
  const bool ok = x.PersistData("O", o, 3);
  x.PopElement(false);
  return ok;
}

}  // namespace

TEST(PCExBase, RoundTripThroughStringAndFile) {
  double in[] = {0.1, 1e-300, -0.0, 4.9e-324, -1.0 / 3.0, 1.7976931348623157e308};
  PCExBase w;
  w.StartStoring();
  ASSERT_TRUE(w.PushElement("Obj"));
  ASSERT_TRUE(PersistFrame(w, in));
  ASSERT_TRUE(w.PushData("V", in, 6));
  EXPECT_TRUE(w.PopElement(false));
  EXPECT_FALSE(w.PopElement(false));  // already at the document level
  std::string xml;
  ASSERT_TRUE(w.SaveString(xml));
  EXPECT_NE(xml.find("<Fr O=\"0.1 1e-300 -0\" />"), std::string::npos) << xml;

  const char* dir = std::getenv("ZNMT64_TEST_TMP");
  const std::string path = (dir ? std::filesystem::path(dir) : std::filesystem::temp_directory_path()) / "pcex.xml";
  ASSERT_TRUE(w.SaveFile(path.c_str()));
  PCExBase r;
  ASSERT_TRUE(r.LoadFile(path.c_str()));
  std::filesystem::remove(path);
  ASSERT_TRUE(r.PersistElement("Obj", true));  // create means nothing when loading
  double out[6] = {};
  ASSERT_TRUE(PersistFrame(r, out));
  ASSERT_TRUE(r.ReadData("V", out, 6, true));
  EXPECT_EQ(std::memcmp(out, in, sizeof in), 0);  // bit for bit
  EXPECT_TRUE(!r.LoadFile(path.c_str()) && r.GetMode() == PCExBase::eNone && !PersistFrame(r, out));
}

TEST(PCExBase, LookupPushAndRemove) {
  PCExBase r;
  ASSERT_TRUE(r.LoadString(R"(<Obj><TP Sc="2 3" /><P /><P /></Obj>)"));
  ASSERT_TRUE(r.PersistElement("Obj", false));
  EXPECT_TRUE(r.GetChildCount() == 3 && r.GetChildCount("P") == 2);
  const PCElem obj = r.GetCurElem();
  EXPECT_FALSE(r.FindChildElem(obj, "Cr"));
  const PCElem tp = r.FindChildElem(obj, "TP");
  ASSERT_TRUE(r.Push(tp));
  double sc[2] = {};
  EXPECT_TRUE(r.ReadData("Sc", sc, 2, true) && sc[1] == 3.0);
  EXPECT_TRUE(r.PopElement(false) && r.GetCurElem() == obj);
  PCExBase other;  // a handle of another document is refused
  ASSERT_TRUE(other.LoadString("<Obj />"));
  EXPECT_FALSE(r.Push(other.FindChildElem(other.GetCurElem(), "Obj")));

  // Removing on the way out lets a loader take repeated elements one by one...
  int taken = 0;
  while (r.PersistElement("P", false) && r.PopElement(true)) ++taken;
  EXPECT_EQ(taken, 2);
  // ...but not an element inside which another is still open.
  ASSERT_TRUE(r.Push(tp));
  ASSERT_TRUE(r.Push(obj));
  EXPECT_TRUE(!r.PopElement(true) && r.GetCurElem() == tp);
}

TEST(PCExBase, BadInputFailsAndLeavesValues) {
  PCExBase r;
  for (const char* bad : {"", "<a>", "<a></b>", "hello", "<a x=1/>", "<?xml version=\"1.0\"?>"}) {
    EXPECT_FALSE(r.LoadString(bad)) << bad;
    EXPECT_FALSE(r.PersistElement("a", true));
  }
  ASSERT_TRUE(r.LoadString(R"(<D short="1 2" word="1 x 3" glued="1 2 3x" long="1 2 3 4" ok=" 4	5 6 " />)"));
  ASSERT_TRUE(r.PersistElement("D", false));
  double v[3] = {7, 7, 7};
  for (const char* item : {"absent", "short", "word", "glued", "long"})
    EXPECT_FALSE(r.ReadData(item, v, 3, true)) << item;
  EXPECT_FALSE(r.ReadData("word", v, 3, false));
  EXPECT_TRUE(v[0] == 7 && v[1] == 7 && v[2] == 7);
  EXPECT_TRUE(r.ReadData("long", v, 3, false) && v[2] == 3.0);  // not strict: the rest is ignored
  EXPECT_TRUE(r.ReadData("ok", v, 3, true) && v[0] == 4.0);
  EXPECT_FALSE(r.PushData("new", v, 3));  // a loaded document is not written

  PCExBase w;
  w.StartStoring();
  EXPECT_FALSE(w.PushData("V", v, 3));  // no element open
  EXPECT_FALSE(w.PushElement("1st"));   // would not read back
  ASSERT_TRUE(w.PushElement("E"));
  EXPECT_FALSE(w.PushData("a b", v, 3));
  EXPECT_TRUE(w.PushData("V", v, 3) && w.PushData("V", v, 1));  // the second replaces the item
  std::string s;
  ASSERT_TRUE(w.SaveString(s));
  EXPECT_NE(s.find("<E V=\"4\" />"), std::string::npos) << s;
}
