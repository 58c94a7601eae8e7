// Run-time classes: registering a class twice, and casts.
#include "kovChecks.h"
#include "Rx/OdError.h"
#include "Rx/OdRxClass.h"
#include "Rx/OdRxDictionary.h"

#include <gtest/gtest.h>

// Test classes live at namespace scope: the run-time class macros define
// members that an anonymous namespace would flag as unused.
class TstShape : public OdRxObject {
  ODRX_DECLARE_MEMBERS(TstShape);
};
ODRX_CONS_DEFINE_MEMBERS(TstShape, OdRxObject, RXIMPL_CONSTR)

class TstCircle : public TstShape {
  ODRX_DECLARE_MEMBERS(TstCircle);
};
ODRX_DEFINE_MEMBERS_EX(TstCircle, TstShape, RXIMPL_CONSTR, 33, 55, 0xBFF, OdString(L"TstCircle"),
                       OdString(L"TSTCIRCLE"), OdString(L"TstApp"), 7)

namespace {

class RxClasses : public ::testing::Test {
protected:
  void SetUp() override
  {
    TstShape::rxInit();
    TstCircle::rxInit();
  }
  void TearDown() override
  {
    TstCircle::rxUninit();
    TstShape::rxUninit();
  }
};

} // namespace

TEST_F(RxClasses, registeringTwiceRaisesAndKeepsTheFirstRegistration)
{
  OdRxClass* first = TstCircle::desc();
  EXPECT_EQ(raisedCode([] { TstCircle::rxInit(); }), eDuplicateKey);
  EXPECT_EQ(TstCircle::desc(), first);
  EXPECT_EQ(odrxClassDictionary()->getAt(OdString(L"TstCircle")).get(), first);
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
