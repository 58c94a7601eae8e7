#ifndef KOV_DB_FIXTURE_H
#define KOV_DB_FIXTURE_H

#include "Db/OdDbDatabase.h"
#include "Db/OdDbModule.h"

#include <gtest/gtest.h>

// Tests of the database classes: the classes are registered for each test and
// unregistered after it, so that every test starts from the same registry,
// with a new drawing to work in.
class kovDbFixture : public ::testing::Test {
protected:
  void SetUp() override
  {
    odInitialize();
    db = OdDbDatabase::createObject();
  }
  void TearDown() override
  {
    db = nullptr;
    odUninitialize();
  }

  OdDbDatabasePtr db;
};

#endif
