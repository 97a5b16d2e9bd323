#include <znmt64/DynaModuleMatr.h>

#include <gtest/gtest.h>

TEST(ModuleEntry, RegisteredAsClientOfTheRegistry) {
  EXPECT_EQ(DynaModule::Find(DMID_MATR), &dynaModuleMatr);
  EXPECT_EQ(dynaModuleMatr.GetConfiguration(), DynaModule::eConfigClient);
  // A client answers no request, even one addressed to the library itself.
  QC self(DMID_MATR, 1);
  EXPECT_EQ(dynaModuleMatr.Execute(self), DM_E_NOTHANDLED);
  QC sphere(DMID_SPHERE, 1);
  EXPECT_EQ(dynaModuleMatr.Execute(sphere), DM_E_NOTLOADED);
}
