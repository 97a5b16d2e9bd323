#include <znbl64/DynaModule.h>

#include <gtest/gtest.h>

namespace {

// A sibling module answering command 7 by scaling its argument by the subject.
class FakeQuadrics : public DynaModule {
 public:
  explicit FakeQuadrics(EConfiguration config = eConfigServer) : DynaModule(&DMID_QUADR, config) {}
  int executed = 0;

 protected:
  HRESULT OnExecute(QC& qc) override {
    ++executed;
    if (qc.m_nCommand != 7) return E_INVALIDARG;
    *static_cast<double*>(qc.m_apArg[0]) *= *static_cast<double*>(qc.m_pSubject);
    return S_OK;
  }
};

}  // namespace

TEST(DynaModule, RoutesToTheRegisteredTarget) {
  DynaModule matr(&DMID_MATR, DynaModule::eConfigClient);
  ASSERT_TRUE(matr.IsRegistered());
  double subject = 3.0, arg = 1.5;
  QC qc(DMID_QUADR, 7, &subject);
  qc.m_apArg[0] = &arg;
  {
    FakeQuadrics quadr;
    FakeQuadrics twin;  // a second module of the identifier does not take it over
    EXPECT_FALSE(twin.IsRegistered());
    EXPECT_TRUE(matr.Execute(qc) == S_OK && arg == 4.5);
    QC other(DMID_QUADR, 8);
    EXPECT_EQ(matr.Execute(other), E_INVALIDARG);  // the target's own status comes back
    EXPECT_TRUE(quadr.executed == 2 && twin.executed == 0);
  }
  EXPECT_EQ(matr.Execute(qc), DM_E_NOTLOADED);  // unloaded with its object

  FakeQuadrics client(DynaModule::eConfigClient);  // registered, but answers nothing
  DynaModule local(&DMID_GEOM, DynaModule::eConfigLocal);
  EXPECT_EQ(DynaModule::Find(DMID_GEOM), nullptr);
  EXPECT_TRUE(local.Execute(qc) == DM_E_NOTHANDLED && client.executed == 0);
}
