#ifndef KOV_DB_FIXTURE_H
#define KOV_DB_FIXTURE_H

#include "Db/OdDbModule.h"

#include <gtest/gtest.h>

// Tests of the database classes: the classes are registered for each test and
// unregistered after it, so that every test starts from the same registry.
class kovDbFixture : public ::testing::Test {
protected:
  void SetUp() override { odInitialize(); }
  void TearDown() override { odUninitialize(); }
};

#endif
