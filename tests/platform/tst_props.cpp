#include "Prop/OdPropServices.h"
#include "Rx/OdRxDictionary.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

// A provider with a category, a bool and a combo.
class LampProps : public OdPropBase {
public:
  static OdPropBasePtr create() { return OdPropBasePtr(new LampProps); }

  bool getPropertyValues(OdPropContext& ctx) override
  {
    ctx.beginCategory(OdString(L"General"), OdString(L"General"));
    ctx.addBool(OdString(L"On"), OdString(L"On"), m_on);
    ctx.addCombo(OdString(L"Kind"), OdString(L"Kind"), m_kind);
    ctx.endCategory();
    return true;
  }
  bool setPropertyValue(const OdString&, const OdString&, Action&) override { return false; }
  bool getPropertyPossibleValues(const OdString& path, OdStringArray& values, OdStringArray& iconPaths) override
  {
    if (path != L"General/Kind")
      return OdPropBase::getPropertyPossibleValues(path, values, iconPaths);
    values = { OdString(L"Spot"), OdString(L"Point") };
    iconPaths = { OdString(), OdString() };
    return true;
  }

private:
  bool m_on = true;
  OdString m_kind = OdString(L"Spot");
};

} // namespace

TEST(PropContext, WritesNodesAttributesAndClosingExactly)
{
  OdPropContext ctx;
  ctx.beginCategory(OdString(L"General"), OdString(L"General"));
  ctx.addString(OdString(L"Name"), OdString(L"Name"), OdString(L"Walk through"));
  ctx.addBool(OdString(L"Loop"), OdString(L"Loop"), false).attribute(OdString(L"ReadOnly"), true);
  ctx.beginCategory(OdString(L"Timing"), OdString(L"Timing"));
  ctx.addDouble(OdString(L"Duration"), OdString(L"Duration (s)"), 12.5);
  ctx.endCategory();
  ctx.addButton(OdString(L"Play"), OdString(L"Play"));
  ctx.endCategory();
  ctx.addCombo(OdString(L"Style"), OdString(L"Style"), OdString(L"Smooth"));

  const OdString expected(
      L"<Prop Name=\"General\" Type=\"category\" VisibleName=\"General\" />\r\n"
      L"<Prop Name=\"Name\" Type=\"string\" VisibleName=\"Name\" Path=\"General\" Value=\"Walk through\" />\r\n"
      L"<Prop Name=\"Loop\" Type=\"bool\" VisibleName=\"Loop\" Path=\"General\" Value=\"false\" ReadOnly=\"true\" />\r\n"
      L"<Prop Name=\"Timing\" Type=\"category\" VisibleName=\"Timing\" Path=\"General\" />\r\n"
      L"<Prop Name=\"Duration\" Type=\"double\" VisibleName=\"Duration (s)\" Path=\"General/Timing\" Value=\"12.5\" />\r\n"
      L"<Prop Name=\"Play\" Type=\"button\" VisibleName=\"Play\" Path=\"General\" />\r\n"
      L"<Prop Name=\"Style\" Type=\"combo\" VisibleName=\"Style\" Value=\"Smooth\" />\r\n");
  EXPECT_EQ(ctx.text(), expected);

  // Escaped values keep every node one parseable line.
  OdPropContext escaped;
  escaped.addString(OdString(L"Note"), OdString(L"<Note> & \"more\""), OdString(L"line 1\r\nline 2\ttab"));
  EXPECT_EQ(escaped.text(),
            OdString(L"<Prop Name=\"Note\" Type=\"string\" VisibleName=\"&lt;Note&gt; &amp; &quot;more&quot;\" "
                     L"Value=\"line 1&#13;&#10;line 2&#9;tab\" />\r\n"));
}

TEST(PropContext, DoublesReadBackExactly)
{
  struct Case {
    double value;
    const OdChar* text;
  };
  const Case cases[] = { { 5.0, L"5" }, { 0.1, L"0.1" }, { -2.25, L"-2.25" }, { 1e-300, L"1e-300" },
                         { 0.30000000000000004, L"0.30000000000000004" } };
  for (const Case& c : cases)
    EXPECT_EQ(OdPropContext::formatDouble(c.value), OdString(c.text)) << c.value;
}

class PropServices : public ::testing::Test {
protected:
  void TearDown() override
  {
    odpropServices()->unregisterXmlProp(OdString(L"Lamp"));
    odpropServices()->unregisterXmlProp(OdString(L"Other"));
  }
};

TEST_F(PropServices, RegisterCreateAndUnregisterProviders)
{
  const OdPropServicesPtr services = odpropServices();
  EXPECT_EQ(services->registerXmlProp(OdString(L"Lamp"), &LampProps::create), eOk);
  EXPECT_TRUE(services->hasPropForClass(OdString(L"Lamp")));

  OdPropBasePtr props = services->createPropForClass(OdString(L"Lamp"));
  ASSERT_FALSE(props.isNull());
  OdPropContext ctx;
  EXPECT_TRUE(props->getPropertyValues(ctx));
  EXPECT_NE(ctx.text().find(L"Name=\"On\" Type=\"bool\" VisibleName=\"On\" Path=\"General\" Value=\"true\" "), -1);

  EXPECT_EQ(services->unregisterXmlProp(OdString(L"Lamp")), eOk);
  EXPECT_TRUE(services->createPropForClass(OdString(L"Lamp")).isNull());
}

TEST_F(PropServices, ObjectsFindTheProviderOfTheirNearestClass)
{
  const OdPropServicesPtr services = odpropServices();
  EXPECT_TRUE(services->createPropForObject(services.get()).isNull());
  ASSERT_EQ(services->registerXmlProp(OdString(L"OdRxObject"), &LampProps::create), eOk);
  EXPECT_FALSE(services->createPropForObject(services.get()).isNull());
  EXPECT_TRUE(services->createPropForObject(nullptr).isNull());
  services->unregisterXmlProp(OdString(L"OdRxObject"));

  // A provider named otherwise names the class it describes; one per class.
  ASSERT_EQ(services->registerXmlProp(OdString(L"Lamp"), &LampProps::create, OdPropServices::desc()), eOk);
  EXPECT_FALSE(services->createPropForObject(services.get()).isNull());
  EXPECT_EQ(services->registerXmlProp(OdString(L"Other"), &LampProps::create, OdPropServices::desc()), eDuplicateKey);
  EXPECT_FALSE(services->hasPropForClass(OdString(L"Other")));
}
