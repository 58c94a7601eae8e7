#ifndef KOV_DB_FIXTURE_H
#define KOV_DB_FIXTURE_H

#include "Db/OdDbDatabase.h"
#include "Db/OdDbMemoryFiler.h"
#include "Db/OdDbModule.h"

#include <gtest/gtest.h>

#include <functional>
#include <vector>

// The bytes a writer files.
inline std::vector<OdUInt8> kovFiled(const std::function<void(OdDbDwgFiler*)>& write)
{
  OdDbMemoryFiler filer;
  write(&filer);
  return std::vector<OdUInt8>(filer.data(), filer.data() + filer.size());
}

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

// The same with classes of the layers above the platform, registered in the
// order given and unregistered in the reverse order.
template <class... Classes>
class kovDbFixtureWith : public kovDbFixture {
protected:
  void SetUp() override
  {
    kovDbFixture::SetUp();
    (Classes::rxInit(), ...);
  }
  void TearDown() override
  {
    db = nullptr;
    uninit<Classes...>();
    kovDbFixture::TearDown();
  }

private:
  template <class First, class... Rest>
  static void uninit()
  {
    if constexpr (sizeof...(Rest) > 0)
      uninit<Rest...>();
    First::rxUninit();
  }
};

#endif
