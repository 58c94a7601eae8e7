// Run-time classes: registration, queries, casts, creation by name, and
// reference counting.
#include "Rx/OdError.h"
#include "Rx/OdRxClass.h"
#include "Rx/OdRxDictionary.h"
#include "Rx/OdStaticRxObject.h"

#include <gtest/gtest.h>

// Test classes live at namespace scope: the run-time class macros define
// members that an anonymous namespace would flag as unused.
static int g_destroyed = 0;

class TstShape : public OdRxObject {
  ODRX_DECLARE_MEMBERS(TstShape);
  ~TstShape() override { ++g_destroyed; }
};
ODRX_CONS_DEFINE_MEMBERS(TstShape, OdRxObject, RXIMPL_CONSTR)

class TstCircle : public TstShape {
  ODRX_DECLARE_MEMBERS(TstCircle);
  double radius = 1.0;
};
ODRX_DEFINE_MEMBERS_EX(TstCircle, TstShape, RXIMPL_CONSTR, 33, 55, 0xBFF, OdString(L"TstCircle"),
                       OdString(L"TSTCIRCLE"), OdString(L"TstApp"), 7)

class TstAbstract : public TstShape {
  ODRX_DECLARE_MEMBERS(TstAbstract);
};
ODRX_NO_CONS_DEFINE_MEMBERS(TstAbstract, TstShape)

class TstUnrelated : public OdRxObject {
  ODRX_DECLARE_MEMBERS(TstUnrelated);
};
ODRX_CONS_DEFINE_MEMBERS(TstUnrelated, OdRxObject, RXIMPL_CONSTR)

namespace {

class RxClasses : public ::testing::Test {
protected:
  void SetUp() override
  {
    TstShape::rxInit();
    TstCircle::rxInit();
    TstAbstract::rxInit();
    TstUnrelated::rxInit();
    g_destroyed = 0;
  }
  void TearDown() override
  {
    TstUnrelated::rxUninit();
    TstAbstract::rxUninit();
    TstCircle::rxUninit();
    TstShape::rxUninit();
  }
};

OdResult codeOf(const std::function<void()>& action)
{
  try {
    action();
  } catch (const OdError& error) {
    return error.code();
  }
  return eOk;
}

} // namespace

TEST(RxRegistration, unregisteredClassRefusesCreationAndUnregistration)
{
  EXPECT_EQ(TstCircle::desc(), nullptr);
  EXPECT_EQ(codeOf([] { TstCircle::createObject(); }), eNotInitializedYet);
  EXPECT_EQ(codeOf([] { TstCircle::rxUninit(); }), eKeyNotFound);
}

TEST(RxRegistration, childOfUnregisteredParentIsRefused)
{
  EXPECT_EQ(codeOf([] { TstCircle::rxInit(); }), eNotInitializedYet);
  EXPECT_EQ(TstCircle::desc(), nullptr);
}

TEST_F(RxClasses, registeringTwiceRaisesAndKeepsTheFirstRegistration)
{
  OdRxClass* first = TstCircle::desc();
  EXPECT_EQ(codeOf([] { TstCircle::rxInit(); }), eDuplicateKey);
  EXPECT_EQ(TstCircle::desc(), first);
  EXPECT_EQ(odrxClassDictionary()->getAt(OdString(L"TstCircle")).get(), first);
}

TEST_F(RxClasses, nameTakenByAnotherClassIsRefused)
{
  EXPECT_EQ(codeOf([] { newOdRxClass(OdString(L"TstCircle"), OdRxObject::desc()); }), eDuplicateKey);
}

TEST_F(RxClasses, classCarriesItsRegistrationData)
{
  OdRxClass* cls = TstCircle::desc();
  EXPECT_EQ(cls->name(), OdString(L"TstCircle"));
  EXPECT_EQ(cls->dxfName(), OdString(L"TSTCIRCLE"));
  EXPECT_EQ(cls->appName(), OdString(L"TstApp"));
  int maint = 0;
  EXPECT_EQ(cls->getClassVersion(&maint), 33);
  EXPECT_EQ(maint, 55);
  EXPECT_EQ(cls->proxyFlags(), 0xBFF);
  EXPECT_EQ(cls->customFlags(), 7);
  EXPECT_EQ(cls->myParent(), TstShape::desc());
}

TEST_F(RxClasses, isKindOfFollowsTheParentChain)
{
  OdSmartPtr<TstCircle> circle = TstCircle::createObject();
  EXPECT_TRUE(circle->isKindOf(TstCircle::desc()));
  EXPECT_TRUE(circle->isKindOf(TstShape::desc()));
  EXPECT_TRUE(circle->isKindOf(OdRxObject::desc()));
  EXPECT_FALSE(circle->isKindOf(TstUnrelated::desc()));
  OdSmartPtr<TstShape> shape = TstShape::createObject();
  EXPECT_FALSE(shape->isKindOf(TstCircle::desc()));
  EXPECT_FALSE(shape->isKindOf(nullptr));
}

TEST_F(RxClasses, castReturnsNullOnMismatchWhileSmartPointerRaises)
{
  OdRxObjectPtr object = TstShape::createObject();
  EXPECT_TRUE(TstCircle::cast(object.get()).isNull());
  EXPECT_FALSE(TstShape::cast(object.get()).isNull());
  EXPECT_TRUE(TstCircle::cast(nullptr).isNull());

  try {
    OdSmartPtr<TstCircle> circle = object;
    FAIL() << "converting a TstShape to a TstCircle must raise";
  } catch (const OdError_NotThatKindOfClass& error) {
    EXPECT_EQ(error.code(), eNotThatKindOfClass);
    EXPECT_NE(error.description().find(L"TstShape"), -1);
    EXPECT_NE(error.description().find(L"TstCircle"), -1);
  }

  OdRxObjectPtr none;
  OdSmartPtr<TstCircle> fromNull = none;
  EXPECT_TRUE(fromNull.isNull());
}

TEST_F(RxClasses, smartPointerFromBaseKeepsTheObjectAlive)
{
  {
    OdRxObjectPtr object = TstCircle::createObject();
    OdSmartPtr<TstCircle> circle = object;
    EXPECT_EQ(object->numRefs(), 2);
    object = nullptr;
    EXPECT_EQ(circle->numRefs(), 1);
    EXPECT_EQ(g_destroyed, 0);
  }
  EXPECT_EQ(g_destroyed, 1);
}

TEST_F(RxClasses, objectsAreCreatedByClassName)
{
  OdRxObjectPtr object = odrxCreateObject(OdString(L"TstCircle"));
  ASSERT_FALSE(object.isNull());
  EXPECT_EQ(object->isA(), TstCircle::desc());
  EXPECT_TRUE(odrxCreateObject(OdString(L"TstAbstract")).isNull());
  EXPECT_EQ(codeOf([] { odrxCreateObject(OdString(L"NoSuchClass")); }), eKeyNotFound);
}

TEST_F(RxClasses, unregisteredClassDisappearsFromTheDictionary)
{
  TstUnrelated::rxUninit();
  EXPECT_FALSE(odrxClassDictionary()->has(OdString(L"TstUnrelated")));
  EXPECT_EQ(codeOf([] { odrxCreateObject(OdString(L"TstUnrelated")); }), eKeyNotFound);
  TstUnrelated::rxInit();
}

TEST(RxRefCount, staticObjectSurvivesEveryRelease)
{
  static OdStaticRxObject<OdRxDictionary> dictionary;
  {
    OdRxDictionaryPtr first(&dictionary);
    OdRxDictionaryPtr second = first;
  }
  dictionary.putAt(OdString(L"still"), nullptr);
  EXPECT_TRUE(dictionary.has(OdString(L"still")));
}

TEST(RxRefCount, detachHandsTheReferenceOver)
{
  OdRxDictionaryPtr owner = OdRxDictionary::createObject();
  OdRxDictionary* raw = owner.detach();
  EXPECT_TRUE(owner.isNull());
  EXPECT_EQ(raw->numRefs(), 1);
  OdRxDictionaryPtr again(raw, kOdRxObjAttach);
  EXPECT_EQ(again->numRefs(), 1);
}

TEST(RxDictionary, putReplacesAndReturnsThePreviousEntry)
{
  OdRxDictionaryPtr dictionary = OdRxDictionary::createObject();
  OdRxDictionaryPtr a = OdRxDictionary::createObject();
  OdRxDictionaryPtr b = OdRxDictionary::createObject();
  EXPECT_TRUE(dictionary->putAt(OdString(L"k"), a.get()).isNull());
  EXPECT_EQ(dictionary->putAt(OdString(L"k"), b.get()).get(), a.get());
  EXPECT_EQ(dictionary->getAt(OdString(L"k")).get(), b.get());
  EXPECT_EQ(dictionary->remove(OdString(L"k")).get(), b.get());
  EXPECT_TRUE(dictionary->remove(OdString(L"k")).isNull());
  EXPECT_EQ(dictionary->numEntries(), 0u);
}

TEST(RxDictionary, systemRegistryHoldsTheClassDictionary)
{
  EXPECT_EQ(odrxSysRegistry()->getAt(OdString(L"ClassDictionary")).get(), odrxClassDictionary());
  EXPECT_TRUE(odrxClassDictionary()->has(OdString(L"OdRxObject")));
}
