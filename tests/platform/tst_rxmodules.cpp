// The dynamic linker: loading module files by path and by short name, load
// counting, unloading, and refusing files that are not modules.
#include "Rx/OdRxDictionary.h"
#include "Rx/OdRxDynamicLinker.h"

#include <gtest/gtest.h>

#include <dlfcn.h>

#include <cstdio>
#include <fstream>
#include <string>

namespace {

const OdString kModuleDir(KOV_TEST_MODULE_DIR);

OdString modulePath(const wchar_t* fileName)
{
  return kModuleDir + L"/" + fileName;
}

bool testModuleRunning()
{
  return odrxSysRegistry()->has(OdString(L"kovTestModule.running"));
}


} // namespace

TEST(RxModuleNames, canonicalNameDropsFolderExtensionAndVersion)
{
  struct Case { const wchar_t* given; const wchar_t* canonical; };
  const Case cases[] = {
    { L"TD_Db.dll", L"TD_Db" },
    { L"TD_Db", L"TD_Db" },
    { L"/opt/app/kovAnimationModule_24.1_16.tx", L"kovAnimationModule" },
    { L"kovAnimationModule.tx", L"kovAnimationModule" },
    { L"plain_24.1_15.tx", L"plain_24.1_15" },
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(OdString(c.given).toUtf8());
    EXPECT_EQ(OdRxDynamicLinker::canonicalName(OdString(c.given)), OdString(c.canonical));
  }
}

TEST(RxModules, loadsByPathOrShortNameStartsOnceAndCountsLoads)
{
  OdRxDynamicLinker* linker = odrxDynamicLinker();
  const OdString path = modulePath(L"kovTestModule_24.1_16.tx");
  OdRxModulePtr first = linker->loadModule(path, false);
  ASSERT_FALSE(first.isNull());
  EXPECT_TRUE(testModuleRunning());
  EXPECT_EQ(first->moduleName(), OdString(L"kovTestModule"));
  EXPECT_NE(first->sysData(), nullptr);

  OdRxModulePtr second = linker->loadModule(path, false);
  EXPECT_EQ(second.get(), first.get());
  EXPECT_EQ(linker->loadCount(OdString(L"kovTestModule")), 2);

  first = nullptr;
  second = nullptr;
  EXPECT_FALSE(linker->unloadModule(OdString(L"kovTestModule")));
  EXPECT_TRUE(testModuleRunning());
  EXPECT_TRUE(linker->unloadModule(OdString(L"kovTestModule.tx")));
  EXPECT_FALSE(testModuleRunning());
  EXPECT_FALSE(linker->isModuleLoaded(OdString(L"kovTestModule")));
  EXPECT_FALSE(linker->unloadModule(OdString(L"kovTestModule")));

  // A short name is found through the search path.
  linker->addSearchPath(kModuleDir);
  OdRxModulePtr module = linker->loadModule(OdString(L"kovTestModule"), false);
  ASSERT_FALSE(module.isNull());
  module = nullptr;
  EXPECT_TRUE(linker->unloadModule(OdString(L"kovTestModule")));
}

TEST(RxModules, entryPointCreatesOneObjectAndTakesTheHandleOver)
{
  const std::string path = modulePath(L"kovTestModule_24.1_16.tx").toUtf8();
  void* library = ::dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
  ASSERT_NE(library, nullptr);
  auto entry = reinterpret_cast<OdRxCreateModuleFn>(::dlsym(library, "odrxCreateModuleObject"));
  ASSERT_NE(entry, nullptr);

  void* handle = library;
  OdRxModule* first = entry(handle, L"kovTestModule");
  EXPECT_EQ(handle, nullptr);
  EXPECT_EQ(first->sysData(), library);
  void* again = library;
  EXPECT_EQ(entry(again, L"kovTestModule"), first);

  first->deleteModule();
  ::dlclose(library);
}

struct RefusedCase {
  const char* label;
  const wchar_t* file;
  OdResult code;
  const wchar_t* messagePart;
};

class RxModulesRefused : public ::testing::TestWithParam<RefusedCase> {
protected:
  static void SetUpTestSuite()
  {
    std::ofstream garbage(modulePath(L"kovGarbage_24.1_16.tx").toUtf8(), std::ios::binary);
    garbage << "this is a text file, not a shared object";
  }
  static void TearDownTestSuite() { std::remove(modulePath(L"kovGarbage_24.1_16.tx").toUtf8().c_str()); }
};

// The loud load comes second: a module whose start failed is loadable again.
TEST_P(RxModulesRefused, silentLoadReturnsNullAndLoudLoadRaises)
{
  const RefusedCase& c = GetParam();
  OdRxDynamicLinker* linker = odrxDynamicLinker();
  const OdString path = modulePath(c.file);

  EXPECT_TRUE(linker->loadModule(path, true).isNull());
  EXPECT_EQ(linker->lastError().code(), c.code);
  EXPECT_NE(linker->lastError().description().find(c.messagePart), -1)
      << linker->lastError().description().toUtf8();

  try {
    linker->loadModule(path, false);
    FAIL() << "a loud load must raise";
  } catch (const OdError& error) {
    EXPECT_EQ(error.code(), c.code);
  }
  EXPECT_FALSE(linker->isModuleLoaded(path));
}

INSTANTIATE_TEST_SUITE_P(
    Files, RxModulesRefused,
    ::testing::Values(RefusedCase { "missing", L"kovNoSuchModule_24.1_16.tx", eFileNotFound, L"was not found" },
                      RefusedCase { "noEntry", L"kovNoEntryModule_24.1_16.tx", eInvalidModule, L"is not a module" },
                      RefusedCase { "garbage", L"kovGarbage_24.1_16.tx", eDLLLoadFailed, L"could not be loaded" },
                      RefusedCase { "failingStart", L"kovFailingModule_24.1_16.tx", eNotInitializedYet,
                                    L"failed to start" }),
    [](const ::testing::TestParamInfo<RefusedCase>& info) { return std::string(info.param.label); });
