// The track tree model over an animation entity: its shape under
// QAbstractItemModelTester while rows come and go, what each kind of row
// shows, rows written through to the entity, and values read afresh from the
// entity on every request.
#include "db/kovDbAnimation.h"
#include "db/kovDbTempBlockReference.h"
#include "editor/kovAnimationModel.h"

#include "Db/OdDbBlockTableRecord.h"
#include "Db/OdDbDatabase.h"
#include "Db/OdDbLight.h"
#include "Db/OdDbModule.h"
#include "kovAnimationTestValues.h"

#include <QAbstractItemModelTester>
#include <QApplication>
#include <QIcon>
#include <QPalette>
#include <QPixmap>
#include <QtTest>

namespace {

using Item = kovAnimationItem;

struct SampleTrack {
  const char* name;
  const char* description;
  // "Camera", "Environment", a spawned object's name, "light" for a track
  // bound to a light of the drawing, or empty.
  const char* subject;
  std::initializer_list<Item::AnimationType> subTracks;
};

// Camera with three sub-tracks, environment with a custom parameter, a
// spawned object without sub-tracks, a light, and a track of nothing.
const SampleTrack kTracks[] = {
  { "Camera", "Main camera", "Camera", { Item::LocationBySpline, Item::RotationToTarget, Item::CustomParameter } },
  { "Sun", "Sky", "Environment", { Item::CustomParameter } },
  { "Oak", "Tree", "Oak", {} },
  { "Lamp", "Desk lamp", "light", { Item::Scale } },
  { "Notes", "", "", { Item::RotationByAngles } },
};

const char* const kTypeNames[] = { "Custom Parameter", "Location By Points", "Location By Spline", "Scale",
                                   "Rotation By Angles", "Rotation To Target" };

QString typeName(Item::AnimationType type)
{
  return str(kTypeNames[type]);
}

bool nearColor(const QColor& actual, const QColor& expected)
{
  const QColor a = actual.toRgb();
  return qAbs(a.red() - expected.red()) <= 1 && qAbs(a.green() - expected.green()) <= 1
         && qAbs(a.blue() - expected.blue()) <= 1 && a.alpha() == 255;
}

} // namespace

class tst_AnimationModel : public QObject {
  Q_OBJECT

private slots:
  void init();
  void cleanup();

  void staysConsistentWhileRowsComeAndGo();
  void rowsShowTheEntity_data();
  void rowsShowTheEntity();
  void paleShadeLightensAndDesaturates_data();
  void paleShadeLightensAndDesaturates();
  void typeColourReadsRedFromTheLowByte();
  void foregroundStaysReadableOnTheLane_data();
  void foregroundStaysReadableOnTheLane();
  void tracksShowTheirSubjectsIcon_data();
  void tracksShowTheirSubjectsIcon();
  void widgetsFindTheAddMarkWithoutItsSuffix();
  void emptyAnimationAndEmptyTrackShowNoExpander();
  void insertedRowsAppearInTheEntity();
  void removeRowsChecksTheWholeRangeFirst();
  void readsTheEntityOnEveryRequest();

private:
  kovAnimationTrack& track(int index) { return *kovDbAnimationPtr(m_id.openObject())->constTracks()[index]; }
  int elementCount(int trackIndex) { return track(trackIndex).numElements(); }

  OdDbDatabasePtr m_db;
  OdDbObjectId m_id;
  kovAnimationModel* m_model = nullptr;
};

void tst_AnimationModel::init()
{
  odInitialize();
  kovDbTempBlockReference::rxInit();
  kovDbAnimation::rxInit();
  m_db = OdDbDatabase::createObject();
  OdDbBlockTableRecordPtr space = m_db->getModelSpaceId().safeOpenObject(OdDb::kForWrite);
  kovDbAnimationPtr animation = kovDbAnimation::createObject();
  for (const SampleTrack& sample : kTracks) {
    kovAnimationTrackPtr track(new kovAnimationTrack);
    track->setName(str(sample.name));
    track->setDescription(str(sample.description));
    if (qstrcmp(sample.subject, "light") == 0)
      track->setEntityId(space->appendOdDbEntity(OdDbLight::createObject()));
    else
      track->setEntityUniqueName(nullptr, str(sample.subject));
    for (Item::AnimationType type : sample.subTracks)
      addItem(*track, type, {}).setCustomParameterName(str("Turbidity"));
    animation->editTracks().push_back(track);
  }
  m_id = space->appendOdDbEntity(animation);
  m_model = new kovAnimationModel;
  m_model->setAnimation(m_id);
}

void tst_AnimationModel::cleanup()
{
  delete m_model;
  m_db = nullptr;
  kovDbAnimation::rxUninit();
  kovDbTempBlockReference::rxUninit();
  odUninitialize();
}

void tst_AnimationModel::staysConsistentWhileRowsComeAndGo()
{
  QAbstractItemModelTester tester(m_model, QAbstractItemModelTester::FailureReportingMode::Fatal);
  const QModelIndex camera = m_model->index(0, 0);
  QVERIFY(m_model->insertRows(1, 2, camera));
  QVERIFY(m_model->insertRows(1, 1));
  QVERIFY(m_model->insertRows(m_model->rowCount(), 2));
  QVERIFY(m_model->removeRows(2, 3, camera));
  QVERIFY(m_model->removeRows(3, 2));
  QVERIFY(m_model->removeRows(1, 1));
  m_model->rebuild();
  QCOMPARE(m_model->rowCount(), 5);
  QCOMPARE(m_model->rowCount(m_model->index(0, 0)), 2);
}

void tst_AnimationModel::rowsShowTheEntity_data()
{
  QTest::addColumn<int>("trackRow");
  QTest::addColumn<int>("elementRow");
  QTest::addColumn<int>("column");
  QTest::addColumn<int>("role");
  QTest::addColumn<QVariant>("expected");

  const QVariant none;
  const QColor spline = kovAnimationModel::typeColor(Item::LocationBySpline);
  QTest::newRow("track name") << 0 << -1 << 0 << int(Qt::DisplayRole) << QVariant(str("Camera"));
  QTest::newRow("track name to edit") << 1 << -1 << 0 << int(Qt::EditRole) << QVariant(str("Sun"));
  QTest::newRow("camera tip") << 0 << -1 << 0 << int(Qt::ToolTipRole) << QVariant(str("Main camera"));
  QTest::newRow("environment tip") << 1 << -1 << 0 << int(Qt::ToolTipRole) << QVariant(str("Sky"));
  QTest::newRow("spawned tip") << 2 << -1 << 0 << int(Qt::ToolTipRole) << QVariant(str("Tree Oak"));
  QTest::newRow("entity tip") << 3 << -1 << 0 << int(Qt::ToolTipRole) << QVariant(str("Desk lamp OdDbLight"));
  QTest::newRow("track height") << 0 << -1 << 0 << int(Qt::SizeHintRole) << QVariant(QSize(0, 35));
  QTest::newRow("track lane") << 0 << -1 << 1 << int(Qt::DisplayRole) << none;
  QTest::newRow("track no background") << 0 << -1 << 0 << int(Qt::BackgroundRole) << none;
  QTest::newRow("sub-track type") << 0 << 0 << 0 << int(Qt::DisplayRole) << QVariant(typeName(Item::LocationBySpline));
  QTest::newRow("sub-track type to edit")
      << 0 << 1 << 0 << int(Qt::EditRole) << QVariant(typeName(Item::RotationToTarget));
  QTest::newRow("parameter name") << 1 << 0 << 0 << int(Qt::DisplayRole) << QVariant(str("Turbidity"));
  QTest::newRow("parameter type to edit")
      << 1 << 0 << 0 << int(Qt::EditRole) << QVariant(typeName(Item::CustomParameter));
  QTest::newRow("sub-track background") << 0 << 0 << 0 << int(Qt::BackgroundRole) << QVariant(spline);
  QTest::newRow("lane background") << 0 << 0 << 1 << int(Qt::BackgroundRole) << QVariant(spline);
  QTest::newRow("sub-track height") << 0 << 0 << 0 << int(Qt::SizeHintRole) << QVariant(QSize(0, 30));
  QTest::newRow("lane height") << 0 << 0 << 1 << int(Qt::SizeHintRole) << none;
  QTest::newRow("lane text") << 0 << 0 << 1 << int(Qt::DisplayRole) << none;
  QTest::newRow("lane tip without a view") << 0 << 0 << 1 << int(Qt::ToolTipRole) << none;
  QTest::newRow("sub-track no icon") << 0 << 0 << 0 << int(Qt::DecorationRole) << none;
  QTest::newRow("user role") << 0 << -1 << 0 << int(Qt::UserRole) << none;
}

void tst_AnimationModel::rowsShowTheEntity()
{
  QFETCH(int, trackRow);
  QFETCH(int, elementRow);
  QFETCH(int, column);
  QFETCH(int, role);
  QFETCH(QVariant, expected);

  const QModelIndex index = elementRow < 0 ? m_model->index(trackRow, column)
                                           : m_model->index(elementRow, column, m_model->index(trackRow, 0));
  QVERIFY(index.isValid());
  QCOMPARE(m_model->data(index, role), expected);
}

void tst_AnimationModel::paleShadeLightensAndDesaturates_data()
{
  QTest::addColumn<QColor>("color");
  QTest::addColumn<QColor>("expected");

  QTest::newRow("azure") << QColor(0, 127, 255) << QColor(159, 191, 223);
  QTest::newRow("dark red") << QColor(128, 0, 0) << QColor(144, 48, 48);
  QTest::newRow("grey keeps no hue") << QColor(65, 65, 65) << QColor(97, 97, 97);
  QTest::newRow("too light to lighten") << QColor(255, 200, 200) << QColor(255, 200, 200);
}

void tst_AnimationModel::paleShadeLightensAndDesaturates()
{
  QFETCH(QColor, color);
  QFETCH(QColor, expected);
  const QColor shade = kovAnimationModel::paleShade(color);
  QVERIFY2(nearColor(shade, expected), qPrintable(shade.toRgb().name()));
}

void tst_AnimationModel::typeColourReadsRedFromTheLowByte()
{
  // Custom parameters have colour index 30, packed as 0xFF7F00.
  const QColor color = kovAnimationModel::typeColor(Item::CustomParameter);
  QVERIFY2(nearColor(color, QColor(159, 191, 223)), qPrintable(color.toRgb().name()));
}

void tst_AnimationModel::foregroundStaysReadableOnTheLane_data()
{
  QTest::addColumn<QColor>("window");
  QTest::addColumn<QColor>("text");
  QTest::addColumn<QColor>("expected");

  QTest::newRow("light lane, light window") << QColor(240, 240, 240) << QColor(10, 20, 30) << QColor(10, 20, 30);
  QTest::newRow("light lane, dark window") << QColor(40, 40, 40) << QColor(230, 230, 230) << QColor(32, 32, 32);
}

void tst_AnimationModel::foregroundStaysReadableOnTheLane()
{
  QFETCH(QColor, window);
  QFETCH(QColor, text);
  QFETCH(QColor, expected);

  const QPalette saved = QApplication::palette();
  QPalette palette = saved;
  palette.setColor(QPalette::Window, window);
  palette.setColor(QPalette::Text, text);
  QApplication::setPalette(palette);
  const QVariant foreground = m_model->data(m_model->index(0, 0, m_model->index(0, 0)), Qt::ForegroundRole);
  QApplication::setPalette(saved);
  QCOMPARE(foreground.value<QColor>(), expected);
}

void tst_AnimationModel::tracksShowTheirSubjectsIcon_data()
{
  QTest::addColumn<int>("trackRow");
  QTest::addColumn<QString>("icon");

  QTest::newRow("camera") << 0 << str(":/animation/icons/img_015.png");
  QTest::newRow("environment") << 1 << str(":/animation/icons/sun-black-512.png");
  QTest::newRow("spawned object") << 2 << str(":/animation/icons/_0051_add-mark.png");
  QTest::newRow("entity") << 3 << str(":/animation/icons/running-man.png");
  QTest::newRow("nothing") << 4 << QString();
}

void tst_AnimationModel::tracksShowTheirSubjectsIcon()
{
  QFETCH(int, trackRow);
  QFETCH(QString, icon);

  const QVariant decoration = m_model->data(m_model->index(trackRow, 0), Qt::DecorationRole);
  if (icon.isEmpty()) {
    QVERIFY(!decoration.isValid());
    return;
  }
  const QPixmap source(icon);
  QVERIFY(!source.isNull());
  const QImage shown = decoration.value<QPixmap>().toImage();
  QCOMPARE(shown.size(), QSize(32, 32));
  QCOMPARE(shown, source.scaled(32, 32, Qt::KeepAspectRatio, Qt::SmoothTransformation).toImage());
}

void tst_AnimationModel::widgetsFindTheAddMarkWithoutItsSuffix()
{
  const QString name = str(":/animation/icons/_0051_add-mark");
  QCOMPARE(QPixmap(name).size(), QSize(64, 64));
  QCOMPARE(QIcon(name).pixmap(32).toImage(), QIcon(name + str(".png")).pixmap(32).toImage());
}

void tst_AnimationModel::emptyAnimationAndEmptyTrackShowNoExpander()
{
  const QModelIndex oak = m_model->index(2, 0);
  QCOMPARE(m_model->rowCount(oak), 1);
  QVERIFY(!m_model->hasChildren(oak));
  QVERIFY(!m_model->index(0, 0, oak).isValid());

  OdDbBlockTableRecordPtr space = m_db->getModelSpaceId().safeOpenObject(OdDb::kForWrite);
  m_model->setAnimation(space->appendOdDbEntity(kovDbAnimation::createObject()));
  QCOMPARE(m_model->rowCount(), 0);
  QVERIFY(!m_model->hasChildren());
}

void tst_AnimationModel::insertedRowsAppearInTheEntity()
{
  QVERIFY(m_model->insertRows(1, 2));
  QCOMPARE(kovDbAnimationPtr(m_id.openObject())->constTracks().size(), size_t(7));
  QCOMPARE(track(1).trackName(), QString());
  QCOMPARE(track(3).trackName(), str("Sun"));
  QCOMPARE(m_model->data(m_model->index(3, 0)), QVariant(str("Sun")));
  const QModelIndex parameter = m_model->index(0, 0, m_model->index(3, 0));
  QCOMPARE(m_model->parent(parameter).row(), 3);
  QCOMPARE(m_model->data(parameter), QVariant(str("Turbidity")));

  QVERIFY(m_model->insertRows(1, 1, m_model->index(0, 0)));
  QCOMPARE(elementCount(0), 4);
  QCOMPARE(track(0).elementAt(2).animationType(), Item::RotationToTarget);
  QCOMPARE(m_model->data(m_model->index(2, 0, m_model->index(0, 0))), QVariant(typeName(Item::RotationToTarget)));

  QVERIFY(!m_model->insertRows(0, 1, m_model->index(0, 0, m_model->index(0, 0))));
  QCOMPARE(elementCount(0), 4);
}

void tst_AnimationModel::removeRowsChecksTheWholeRangeFirst()
{
  const QModelIndex camera = m_model->index(0, 0);
  QVERIFY(!m_model->removeRows(2, 2, camera));
  QCOMPARE(elementCount(0), 3);
  QCOMPARE(m_model->rowCount(camera), 3);

  QVERIFY(m_model->removeRows(0, 2, camera));
  QCOMPARE(elementCount(0), 1);
  QCOMPARE(track(0).elementAt(0).animationType(), Item::CustomParameter);

  QVERIFY(m_model->removeRows(1, 1));
  QCOMPARE(track(1).trackName(), str("Oak"));
  QCOMPARE(m_model->data(m_model->index(2, 0)), QVariant(str("Lamp")));
  QCOMPARE(m_model->parent(m_model->index(0, 0, m_model->index(2, 0))).row(), 2);
}

void tst_AnimationModel::readsTheEntityOnEveryRequest()
{
  const QModelIndex lamp = m_model->index(3, 0);
  const QModelIndex scale = m_model->index(0, 0, lamp);
  {
    kovDbAnimationPtr animation = m_id.openObject(OdDb::kForWrite);
    animation->editTracks()[3]->setName(str("Spot"));
    animation->editTracks()[3]->elementAt(0).setAnimationType(Item::RotationByAngles, OdGePoint3d::kOrigin);
  }
  QCOMPARE(m_model->data(lamp), QVariant(str("Spot")));
  QCOMPARE(m_model->data(scale), QVariant(typeName(Item::RotationByAngles)));
}

QTEST_MAIN(tst_AnimationModel)
#include "tst_animationmodel.moc"
