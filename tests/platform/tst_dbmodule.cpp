// Registration of the database classes and the built-in "TD_Db" module.

#include "Db/OdDbDatabase.h"
#include "Db/OdDbEntity.h"
#include "Db/OdDbModule.h"
#include "Db/OdDbSpline.h"
#include "Rx/OdRxDictionary.h"
#include "Rx/OdRxDynamicLinker.h"

#include <gtest/gtest.h>

namespace {

template <class Fn>
OdResult raisedCode(Fn fn)
{
  try {
    fn();
  } catch (const OdError& error) {
    return error.code();
  }
  return eOk;
}

TEST(DbModule, InitializeNestsAndUninitializeBalances)
{
  ASSERT_FALSE(odIsInitialized());
  EXPECT_EQ(OdDbEntity::desc(), nullptr);
  odInitialize();
  odInitialize();
  odUninitialize();
  EXPECT_TRUE(odIsInitialized());
  EXPECT_NE(OdDbEntity::desc(), nullptr) << "still registered after the inner uninitialize";
  odUninitialize();
  EXPECT_FALSE(odIsInitialized());
  EXPECT_EQ(OdDbEntity::desc(), nullptr);
  EXPECT_FALSE(odrxClassDictionary()->has(OdString(L"OdDbEntity")));
  EXPECT_EQ(raisedCode([] { odUninitialize(); }), eNotInitializedYet);
}

TEST(DbModule, RegistersEveryClassUnderItsOwnName)
{
  odInitialize();
  for (const OdChar* name : { L"OdDbObject", L"OdDbEntity", L"OdDbCurve", L"OdDbSpline", L"OdDbBlockReference",
                              L"OdDbLight", L"OdDbSymbolTable", L"OdDbBlockTable", L"OdDbViewTable",
                              L"OdDbSymbolTableRecord", L"OdDbBlockTableRecord", L"OdDbViewTableRecord",
                              L"OdDbDatabase", L"OdDbFiler", L"OdDbDwgFiler", L"OdDbMemoryFiler" })
    EXPECT_TRUE(odrxClassDictionary()->has(OdString(name))) << OdString(name).toUtf8();
  EXPECT_TRUE(OdDbSpline::desc()->isDerivedFrom(OdDbEntity::desc()));
  EXPECT_TRUE(odrxCreateObject(OdString(L"OdDbEntity")).isNull()) << "abstract";
  EXPECT_FALSE(odrxCreateObject(OdString(L"OdDbSpline")).isNull());
  odUninitialize();
}

TEST(DbModule, RegistryRefusesDoubleAndUnknownRegistration)
{
  odInitialize();
  EXPECT_EQ(raisedCode([] { OdDbSpline::rxInit(); }), eDuplicateKey);
  odUninitialize();
  EXPECT_EQ(raisedCode([] { OdDbSpline::rxUninit(); }), eKeyNotFound);
  EXPECT_EQ(raisedCode([] { OdDbDatabase::createObject(); }), eNotInitializedYet);
}

TEST(DbModule, BuiltInModuleLoadsByName)
{
  odInitialize();
  OdRxModulePtr module = odrxDynamicLinker()->loadModule(OdString(L"TD_Db.dll"));
  ASSERT_FALSE(module.isNull());
  EXPECT_EQ(odrxDynamicLinker()->loadCount(OdString(L"TD_Db")), 1);
  module = nullptr;
  EXPECT_TRUE(odrxDynamicLinker()->unloadModule(OdString(L"TD_Db.dll")));
  odUninitialize();
  EXPECT_TRUE(odrxDynamicLinker()->loadModule(OdString(L"TD_Db.dll")).isNull())
      << "no database module after odUninitialize";
}

} // namespace
