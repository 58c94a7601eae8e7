// The animation's properties in the host's palette: the definition of
// representative animations against texts written by hand, every writable
// property changing the entity and reading back, refused values changing
// nothing, and the provider's registration with the entity's global objects.
#include "props/OdDbXmlPropAnimation.h"

#include "db/kovDbAnimation.h"
#include "db/kovDbTempBlockReference.h"

#include "Db/OdDbBlockTableRecord.h"
#include "Db/OdDbLight.h"
#include "Prop/OdPropServices.h"
#include "kovAnimationTestValues.h"
#include "kovDbFixture.h"

#include <QFile>
#include <QVariantList>

#include <functional>

namespace {

using Item = kovAnimationItem;
using Scene = void (*)(kovDbAnimation&);

kovAnimationTrack& addTrack(kovDbAnimation& animation, const char* subject)
{
  kovAnimationTrackPtr track(new kovAnimationTrack);
  track->setEntityUniqueName(nullptr, str(subject));
  animation.editTracks().push_back(track);
  animation.setSelectedTrackIndex(0);
  return *track;
}

void cameraScene(kovDbAnimation& animation)
{
  animation.setName(str("Fly-through"));
  animation.setDescription(str("Low & slow"));
  kovAnimationTrack& camera = addTrack(animation, "Camera");
  addItem(camera, Item::LocationBySpline, { { 0, sixValue(0, 0, 2, 1, 0, 0) }, { 2500, sixValue(10, 5, 2, 0, -1, 0) } });
  addItem(camera, Item::RotationByAngles, { { 2500, sixValue(10, 5, 2, 15, 30, 45) } });
  camera.addElement();
  Item::setSpecialCustomParamType(camera.elementAt(2), str("Fov"));
  camera.elementAt(2).setValue(0, 45.0);
}

void spawnedObjectScene(kovDbAnimation& animation)
{
  animation.setName(str("Walker path"));
  kovAnimationTrack& walker = addTrack(animation, "Walker");
  addItem(walker, Item::Scale, { { 0, 2.0 } });
  addItem(walker, Item::RotationToTarget, { { 0, sixValue(1, 2, 3, 4, 5, 6) } });
  addItem(walker, Item::RotationToEntity, { { 1000, QVariantList { 1.0, 2.0, 3.0, str("1F") } } });
  addItem(walker, Item::LocationBySplineAndRotation, {});
  Item& points = addItem(walker, Item::LocationByPoints, { { 0, pointValue(1, 1, 0) }, { 750, pointValue(2, 2, 0) } });
  points.setFaceDirection(true);
  points.setDurationByAnimationSpeed(false);
}

Item& plainParameter(kovAnimationTrack& track, const char* name, Item::ParameterType type)
{
  track.addElement();
  Item& item = track.elementAt(track.numElements() - 1);
  item.setAnimationType(Item::CustomParameter, OdGePoint3d::kOrigin);
  item.setCustomParameterName(str(name));
  item.setParamsType(type);
  return item;
}

void environmentScene(kovDbAnimation& animation)
{
  animation.setName(str("Day <long>"));
  animation.setDescription(str("Sun\nand sky"));
  kovAnimationTrack& environment = addTrack(animation, "Environment");
  environment.addElement();
  Item::setSpecialCustomParamType(environment.elementAt(0), str("Sky Sequence"));
  environment.elementAt(0).setValue(0, str("Cumulus"));
  plainParameter(environment, "Lights", Item::OnOff).setValues({ { 250, true }, { 750, false } });
  plainParameter(environment, "Sun Target", Item::Point).setValue(0, pointValue(-1.5, 2, 30));
}

void noTrackShownScene(kovDbAnimation& animation)
{
  cameraScene(animation);
  animation.setName(str("Unselected"));
  animation.setDescription(QString());
  animation.setSelectedTrackIndex(-1);
}

QString expectedText(const char* file)
{
  QFile golden(QStringLiteral(KOV_TEST_DATA_DIR "/props/") + QLatin1String(file));
  if (!golden.open(QIODevice::ReadOnly))
    return QStringLiteral("missing ") + golden.fileName();
  // The files keep plain line ends; every node ends with "/>\r\n".
  return QString::fromUtf8(golden.readAll()).replace(QLatin1Char('\n'), QLatin1String("\r\n"));
}

class AnimationProps : public kovDbFixtureWith<kovDbTempBlockReference, kovDbAnimation, OdDbXmlPropAnimation> {
protected:
  void SetUp() override
  {
    kovDbFixtureWith::SetUp();
    kovDbAnimation::initializeGlobalObjects();
  }
  void TearDown() override
  {
    kovDbAnimation::uninitializeGlobalObjects();
    kovDbFixtureWith::TearDown();
  }

  OdDbObjectId add(Scene scene)
  {
    kovDbAnimationPtr animation = kovDbAnimation::createObject();
    animation->setDatabaseDefaults(db);
    scene(*animation);
    return OdDbBlockTableRecordPtr(db->getModelSpaceId().safeOpenObject(OdDb::kForWrite))
        ->appendOdDbEntity(animation.get());
  }

  static OdPropBasePtr providerOf(const OdDbObjectId& id)
  {
    const OdPropBasePtr provider = odpropServices()->createPropForObject(id.openObject().get());
    if (!provider.isNull())
      provider->setObjectId(id);
    return provider;
  }

  static std::vector<OdUInt8> filed(const OdDbObjectId& id)
  {
    const OdDbObjectPtr object = id.openObject();
    return kovFiled([&object](OdDbDwgFiler* filer) { object->dwgOutFields(filer); });
  }
};

kovDbAnimationPtr opened(const OdDbObjectId& id)
{
  return kovDbAnimation::cast(id.openObject().get());
}

const Item& element(const kovDbAnimation& animation, int index)
{
  return animation.selectedTrack()->elementAt(index);
}

QVariantList listAt(const kovDbAnimation& animation, int index, int key)
{
  return element(animation, index).values().value(key).toList();
}

} // namespace

TEST_F(AnimationProps, DefinitionsAreTheHandWrittenTexts)
{
  const struct {
    Scene scene;
    const char* file;
  } cases[] = {
    { cameraScene, "camera-track.txt" },
    { spawnedObjectScene, "spawned-object-track.txt" },
    { environmentScene, "environment-track.txt" },
    { noTrackShownScene, "no-track-shown.txt" },
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.file);
    const OdPropBasePtr provider = providerOf(add(c.scene));
    ASSERT_FALSE(provider.isNull());
    OdPropContext ctx;
    ASSERT_TRUE(provider->getPropertyValues(ctx));
    EXPECT_EQ(odToQString(ctx.text()), expectedText(c.file));
  }
}

TEST_F(AnimationProps, CombosOfferTheirLabels)
{
  const OdPropBasePtr provider = providerOf(add(cameraScene));
  OdStringArray labels;
  OdStringArray icons;
  ASSERT_TRUE(provider->getPropertyPossibleValues(OdString(L"Element1/AnimationType"), labels, icons));
  EXPECT_EQ(labels, OdStringArray({ OdString(L"Custom Parameter"), OdString(L"Location By Points"),
                                    OdString(L"Location By Spline"), OdString(L"Rotation By Angles"),
                                    OdString(L"Rotation To Entity"), OdString(L"Rotation To Target") }));
  EXPECT_EQ(icons.size(), labels.size());
  ASSERT_TRUE(provider->getPropertyPossibleValues(OdString(L"Element3/ParameterType"), labels, icons));
  EXPECT_EQ(labels, OdStringArray({ OdString(L"Number"), OdString(L"On/Off"), OdString(L"Point"), OdString(L"Text") }));
  EXPECT_FALSE(provider->getPropertyPossibleValues(OdString(L"Animation/Name"), labels, icons));
}

TEST_F(AnimationProps, WritesChangeTheEntityAndReadBack)
{
  using Check = std::function<void(const kovDbAnimation&)>;
  const OdDbObjectId lamp = OdDbBlockTableRecordPtr(db->getModelSpaceId().safeOpenObject(OdDb::kForWrite))
                                ->appendOdDbEntity(OdDbLight::createObject().get());
  const QString lampHandle = odToQString(lamp.getHandle().ascii());
  const struct {
    Scene scene;
    const char* path;
    QString value;
    // What reading the property gives afterwards; null for a button.
    const char* readBack;
    Check check;
  } cases[] = {
    { cameraScene, "Animation/Name", str("Orbit"), "Orbit",
      [](const kovDbAnimation& a) { EXPECT_EQ(a.animationName(), str("Orbit")); } },
    { cameraScene, "Animation/Description", str("Two laps"), "Two laps",
      [](const kovDbAnimation& a) { EXPECT_EQ(a.animationDescription(), str("Two laps")); } },
    { cameraScene, "Element1/AnimationType", str("Location By Points"), "Location By Points",
      [](const kovDbAnimation& a) {
        EXPECT_EQ(element(a, 0).animationType(), Item::LocationByPoints);
        EXPECT_EQ(listAt(a, 0, 2500), sixValue(10, 5, 2, 0, -1, 0).toList());
      } },
    { cameraScene, "Element3/AnimationType", str("Location By Points"), "Location By Points",
      [](const kovDbAnimation& a) { EXPECT_EQ(listAt(a, 2, 0), pointValue(0, 0, 0).toList()); } },
    { cameraScene, "Element3/ParameterType", str("On/Off"), "On/Off",
      [](const kovDbAnimation& a) {
        EXPECT_EQ(element(a, 2).paramsType(), Item::OnOff);
        EXPECT_EQ(element(a, 2).values().value(0), QVariant(true));
      } },
    { cameraScene, "Element3/CustomParameter", str("Depth Of Field"), "Depth Of Field",
      [](const kovDbAnimation& a) { EXPECT_EQ(element(a, 2).maxValue(), 10000.0); } },
    { cameraScene, "Element3/CustomParameter", str("Wind"), "Wind",
      [](const kovDbAnimation& a) {
        EXPECT_FALSE(element(a, 2).isFactoryParameter());
        EXPECT_EQ(element(a, 2).maxValue(), 999999.0);
      } },
    { cameraScene, "Element1/FaceDirection", str("true"), "true",
      [](const kovDbAnimation& a) { EXPECT_TRUE(element(a, 0).faceDirection()); } },
    { spawnedObjectScene, "Element1/ConstrainAnimationDuration", str("false"), "false",
      [](const kovDbAnimation& a) { EXPECT_FALSE(element(a, 0).durationByAnimationSpeed()); } },
    { cameraScene, "Element1/Start Tangent/ValueY", str("0.5"), "0.5",
      [](const kovDbAnimation& a) { EXPECT_EQ(listAt(a, 0, 0), sixValue(0, 0, 2, 1, 0.5, 0).toList()); } },
    { cameraScene, "Element1/End Tangent/ValueZ", str("2"), "2",
      [](const kovDbAnimation& a) { EXPECT_EQ(listAt(a, 0, 2500), sixValue(10, 5, 2, 0, -1, 2).toList()); } },
    { cameraScene, "Element1/Row2/DeltaTime", str("4"), "4",
      [](const kovDbAnimation& a) { EXPECT_EQ(element(a, 0).values().keys(), QList<int>({ 0, 4000 })); } },
    { cameraScene, "Element1/Row1/DeltaTime", str("1.0004"), "1",
      [](const kovDbAnimation& a) { EXPECT_EQ(element(a, 0).values().keys(), QList<int>({ 1000, 3500 })); } },
    { cameraScene, "Element1/Row2/ValueX", str(" 12.5 "), "12.5",
      [](const kovDbAnimation& a) { EXPECT_EQ(listAt(a, 0, 2500), sixValue(12.5, 5, 2, 0, -1, 0).toList()); } },
    { cameraScene, "Element1/Row1/ValueZ", str("3"), "3",
      [](const kovDbAnimation& a) { EXPECT_EQ(listAt(a, 0, 0), sixValue(0, 0, 3, 1, 0, 0).toList()); } },
    { cameraScene, "Element2/Row1/Pitch", str("5"), "5",
      [](const kovDbAnimation& a) { EXPECT_EQ(listAt(a, 1, 2500), sixValue(10, 5, 2, 5, 30, 45).toList()); } },
    { cameraScene, "Element2/Row1/Yaw", str("6"), "6",
      [](const kovDbAnimation& a) { EXPECT_EQ(listAt(a, 1, 2500), sixValue(10, 5, 2, 15, 30, 6).toList()); } },
    { cameraScene, "Element2/Row1/Roll", str("7"), "7",
      [](const kovDbAnimation& a) { EXPECT_EQ(listAt(a, 1, 2500), sixValue(10, 5, 2, 15, 7, 45).toList()); } },
    { cameraScene, "Element2/Row1/ValueY", str("-8"), "-8",
      [](const kovDbAnimation& a) { EXPECT_EQ(listAt(a, 1, 2500), sixValue(10, -8, 2, 15, 30, 45).toList()); } },
    { cameraScene, "Element3/Row1/NumberValue", str("60"), "60",
      [](const kovDbAnimation& a) { EXPECT_EQ(element(a, 2).values().value(0), QVariant(60.0)); } },
    { spawnedObjectScene, "Element1/Row1/Scale", str("0.5"), "0.5",
      [](const kovDbAnimation& a) { EXPECT_EQ(element(a, 0).values().value(0), QVariant(0.5)); } },
    { spawnedObjectScene, "Element2/Row1/DirX", str("7"), "7",
      [](const kovDbAnimation& a) { EXPECT_EQ(listAt(a, 1, 0), sixValue(1, 2, 3, 7, 5, 6).toList()); } },
    { spawnedObjectScene, "Element2/Row1/DirY", str("8"), "8",
      [](const kovDbAnimation& a) { EXPECT_EQ(listAt(a, 1, 0), sixValue(1, 2, 3, 4, 8, 6).toList()); } },
    { spawnedObjectScene, "Element2/Row1/DirZ", str("9"), "9",
      [](const kovDbAnimation& a) { EXPECT_EQ(listAt(a, 1, 0), sixValue(1, 2, 3, 4, 5, 9).toList()); } },
    { spawnedObjectScene, "Element3/Row1/TargetEntity", str("2A"), "2A",
      [](const kovDbAnimation& a) { EXPECT_EQ(listAt(a, 2, 1000).value(3), QVariant(str("2A"))); } },
    { spawnedObjectScene, "Element3/Row1/SelectEntity", lampHandle.toLower(), nullptr,
      [lampHandle](const kovDbAnimation& a) { EXPECT_EQ(listAt(a, 2, 1000).value(3), QVariant(lampHandle)); } },
    { spawnedObjectScene, "Element5/Row2/ValueX", str("2.25"), "2.25",
      [](const kovDbAnimation& a) { EXPECT_EQ(listAt(a, 4, 750), pointValue(2.25, 2, 0).toList()); } },
    { environmentScene, "Element1/Row1/TextValue", str("Cirrus"), "Cirrus",
      [](const kovDbAnimation& a) { EXPECT_EQ(element(a, 0).values().value(0), QVariant(str("Cirrus"))); } },
    { environmentScene, "Element2/Row2/BoolValue", str("True"), "true",
      [](const kovDbAnimation& a) { EXPECT_EQ(element(a, 1).values().value(750), QVariant(true)); } },
    { environmentScene, "Element3/Row1/ValueY", str("4"), "4",
      [](const kovDbAnimation& a) { EXPECT_EQ(listAt(a, 2, 0), pointValue(-1.5, 4, 30).toList()); } },
    { cameraScene, "Element1/AddRow", QString(), nullptr,
      [](const kovDbAnimation& a) {
        EXPECT_EQ(element(a, 0).values().keys(), QList<int>({ 0, 2500, 3500 }));
        EXPECT_EQ(listAt(a, 0, 3500), listAt(a, 0, 2500));
      } },
    { spawnedObjectScene, "Element4/AddRow", QString(), nullptr,
      [](const kovDbAnimation& a) { EXPECT_EQ(listAt(a, 3, 0), sixValue(0, 0, 0, 0, 0, 0).toList()); } },
    { cameraScene, "Element1/Row1/RemoveValue", QString(), nullptr,
      [](const kovDbAnimation& a) { EXPECT_EQ(element(a, 0).values().keys(), QList<int>({ 2500 })); } },
    { cameraScene, "Animation/AddElement", QString(), nullptr,
      [](const kovDbAnimation& a) {
        ASSERT_EQ(a.selectedTrack()->numElements(), 4);
        EXPECT_EQ(element(a, 3).animationType(), Item::LocationByPoints);
      } },
    { environmentScene, "Animation/AddElement", QString(), nullptr,
      [](const kovDbAnimation& a) { EXPECT_EQ(element(a, 3).animationType(), Item::CustomParameter); } },
    { cameraScene, "Element2/RemoveElement", QString(), nullptr,
      [](const kovDbAnimation& a) {
        ASSERT_EQ(a.selectedTrack()->numElements(), 2);
        EXPECT_EQ(element(a, 1).customParameterName(), str("Fov"));
      } },
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(std::string(c.path) + " = " + c.value.toStdString());
    const OdDbObjectId id = add(c.scene);
    const OdPropBasePtr provider = providerOf(id);
    OdPropBase::Action action = OdPropBase::kNone;
    ASSERT_TRUE(provider->setPropertyValue(odFromQString(str(c.path)), odFromQString(c.value), action))
        << odToQString(provider->lastErrorMessage()).toStdString();
    EXPECT_NE(action, OdPropBase::kNone);
    c.check(*opened(id));
    OdString value;
    if (c.readBack) {
      ASSERT_TRUE(provider->getPropertyValue(odFromQString(str(c.path)), value));
      EXPECT_EQ(odToQString(value), str(c.readBack));
    } else {
      EXPECT_FALSE(provider->getPropertyValue(odFromQString(str(c.path)), value));
    }
  }
}

TEST_F(AnimationProps, RefusedValuesChangeNothing)
{
  const struct {
    Scene scene;
    const char* path;
    const char* value;
    OdResult code;
  } cases[] = {
    { cameraScene, "Element1/Row1/ValueX", "abc", eInvalidInput },
    { cameraScene, "Element1/Row1/ValueX", "nan", eInvalidInput },
    { cameraScene, "Element1/Row2/DeltaTime", "1.5s", eInvalidInput },
    { cameraScene, "Element1/FaceDirection", "yes", eInvalidInput },
    { cameraScene, "Element1/AnimationType", "Teleport", eInvalidInput },
    { cameraScene, "Element1/AnimationType", "Scale", eInvalidInput },
    { cameraScene, "Element3/ParameterType", "Colour", eInvalidInput },
    { environmentScene, "Element1/Row1/TextValue", "Sunny", eInvalidInput },
    { spawnedObjectScene, "Element3/Row1/SelectEntity", "ZZ", eInvalidInput },
    { spawnedObjectScene, "Element3/Row1/SelectEntity", "FFFF", eInvalidInput },
    { cameraScene, "Element3/Row1/NumberValue", "200", eOutOfRange },
    { cameraScene, "Element1/Row2/DeltaTime", "0", eOutOfRange },
    { cameraScene, "Element1/Row1/DeltaTime", "-1", eOutOfRange },
    { cameraScene, "Element1/Row2/DeltaTime", "1e9", eOutOfRange },
    { cameraScene, "Element4/AnimationType", "Scale", eInvalidIndex },
    { cameraScene, "Element0/FaceDirection", "true", eInvalidIndex },
    { cameraScene, "Element1/Row3/ValueX", "1", eInvalidIndex },
    { cameraScene, "Element2/Row0/Pitch", "1", eInvalidIndex },
    { spawnedObjectScene, "Element4/Start Tangent/ValueX", "1", eInvalidIndex },
    { noTrackShownScene, "Element1/FaceDirection", "true", eInvalidIndex },
    { cameraScene, "Element1/Colour", "red", eKeyNotFound },
    { cameraScene, "Animation/Length", "1", eKeyNotFound },
    { cameraScene, "Element1/Row1/Pitch", "1", eKeyNotFound },
    { cameraScene, "Element1/ConstrainAnimationDuration", "false", eKeyNotFound },
    { cameraScene, "Element2/Start Tangent/ValueX", "1", eKeyNotFound },
    { cameraScene, "Element1/Row1", "1", eKeyNotFound },
    { noTrackShownScene, "Animation/AddElement", "", eKeyNotFound },
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(std::string(c.path) + " = " + c.value);
    // A drawing of its own, so that the undo history holds this case alone.
    db = OdDbDatabase::createObject();
    const OdDbObjectId id = add(c.scene);
    const std::vector<OdUInt8> before = filed(id);
    db->startUndoRecord();
    const OdPropBasePtr provider = providerOf(id);
    OdPropBase::Action action = OdPropBase::kNone;
    EXPECT_FALSE(provider->setPropertyValue(odFromQString(str(c.path)), odFromQString(str(c.value)), action));
    EXPECT_EQ(provider->lastError(), c.code);
    EXPECT_FALSE(provider->lastErrorMessage().isEmpty());
    EXPECT_EQ(filed(id), before);
    EXPECT_FALSE(db->hasUndo());
  }
}

TEST_F(AnimationProps, ButtonsHaveNoValueToRead)
{
  const OdPropBasePtr provider = providerOf(add(cameraScene));
  OdString value;
  EXPECT_FALSE(provider->getPropertyValue(OdString(L"Element1/Row1/RemoveValue"), value));
  EXPECT_EQ(provider->lastError(), eNotApplicable);
}

TEST_F(AnimationProps, TheEntitysGlobalObjectsRegisterTheProvider)
{
  EXPECT_TRUE(odpropServices()->hasPropForClass(OdString(L"kovDbEntityAnimation")));
  const OdDbObjectId id = add(cameraScene);
  EXPECT_FALSE(OdDbXmlPropAnimation::cast(providerOf(id).get()).isNull());

  // Without the class that the layer above registers, the palette shows the
  // entity as any other.
  OdDbXmlPropAnimation::rxUninit();
  EXPECT_TRUE(providerOf(id).isNull());
  OdDbXmlPropAnimation::rxInit();

  kovDbAnimation::uninitializeGlobalObjects();
  EXPECT_TRUE(providerOf(id).isNull());
  kovDbAnimation::initializeGlobalObjects();
}

TEST_F(AnimationProps, AnErasedAnimationIsDescribedNoMore)
{
  const OdDbObjectId id = add(cameraScene);
  const OdPropBasePtr provider = providerOf(id);
  ASSERT_EQ(OdDbObjectPtr(id.openObject(OdDb::kForWrite))->erase(), eOk);
  OdPropContext ctx;
  EXPECT_FALSE(provider->getPropertyValues(ctx));
  EXPECT_EQ(provider->lastError(), eWasErased);
  EXPECT_TRUE(ctx.text().isEmpty());
}
