// Value editing in the track tree: the context menu's entries and their
// enabling, each entry through its dialog answered as a user would, the
// keyframe tool tips, and the tracks the tracks header adds.
// With KOV_DIALOG_SHOTS set to a folder, the dialogs are saved there as
// pictures while they are answered.
#include "db/kovDbAnimation.h"
#include "db/kovDbTempBlockReference.h"
#include "editor/kovAddTrackMenu.h"
#include "editor/kovAnimationEditActions.h"
#include "editor/kovAnimationEditorWidget.h"
#include "editor/kovAnimationModel.h"
#include "editor/kovAnimationNameDialog.h"
#include "editor/kovAnimationTracksHeaderWidget.h"
#include "editor/kovAnimationTreeView.h"
#include "editor/kovKeyframeToolTip.h"
#include "editor/kovKeyframeValueDialog.h"
#include "editor/kovSubTrackClipboard.h"
#include "editor/kovSubTrackDialog.h"
#include "host/api/IkovSelectionSet.h"

#include "Db/OdDbBlockTableRecord.h"
#include "Db/OdDbDatabase.h"
#include "Db/OdDbModule.h"
#include "Rx/OdRxDictionary.h"
#include "Rx/OdStaticRxObject.h"
#include "kovAnimationTestValues.h"
#include "kovSampleDrawing.h"

#include <QApplication>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QInputDialog>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QSpinBox>
#include <QtTest>

#include <functional>
#include <memory>

namespace {

class TestSelection : public IkovSelectionSet {
public:
  OdDbObjectIdArray selectedIds(OdDbDatabase*) const override { return ids; }
  OdDbObjectIdArray ids;
};

OdStaticRxObject<TestSelection> s_selection;

// One answer to what comes up (a menu, a dialog, a message box); false when
// it is not there yet.
using Step = std::function<bool(QWidget*)>;

// Answers the menus and modal windows that come up, in order. The next look
// is due before a step runs: a step may bring up a question of its own (a
// combo's change asks before the dialog is done), which a later step answers.
// Steps left over when a test ends answer nothing of the next one.
int s_generation = 0;

void poll(const std::shared_ptr<QList<Step>>& steps, int attemptsLeft, int generation)
{
  QTimer::singleShot(5, [steps, attemptsLeft, generation] {
    if (steps->isEmpty() || generation != s_generation)
      return;
    if (attemptsLeft > 0)
      poll(steps, attemptsLeft - 1, generation);
    QWidget* up = QApplication::activePopupWidget();
    if (!up)
      up = QApplication::activeModalWidget();
    if (!up)
      return;
    const Step step = steps->takeFirst();
    if (!step(up))
      steps->prepend(step);
  });
}

void answer(const QList<Step>& steps)
{
  poll(std::make_shared<QList<Step>>(steps), 500, s_generation);
}

void shoot(QWidget* window, const char* name)
{
  const QString folder = qEnvironmentVariable("KOV_DIALOG_SHOTS");
  if (!folder.isEmpty())
    window->grab().save(folder + QLatin1Char('/') + QLatin1String(name) + QStringLiteral(".png"));
}

QStringList actionTexts(const QMenu* menu, bool enabledOnly)
{
  QStringList texts;
  for (const QAction* action : menu->actions()) {
    if (!enabledOnly || action->isEnabled())
      texts << action->text();
  }
  return texts;
}

Step choose(const QString& text, QStringList* enabled = nullptr)
{
  return [text, enabled](QWidget* up) {
    auto* menu = qobject_cast<QMenu*>(up);
    if (!menu)
      return false;
    if (enabled)
      *enabled = actionTexts(menu, true);
    for (QAction* action : menu->actions()) {
      if (action->text() == text && action->isEnabled()) {
        menu->setActiveAction(action);
        QTest::keyClick(menu, Qt::Key_Return);
        return true;
      }
    }
    menu->close();
    return true;
  };
}

Step messageBox(QMessageBox::StandardButton button, QString* seen = nullptr)
{
  return [button, seen](QWidget* up) {
    auto* box = qobject_cast<QMessageBox*>(up);
    if (!box)
      return false;
    if (seen)
      *seen = box->windowTitle() + QLatin1Char('|') + box->text();
    box->button(button)->click();
    return true;
  };
}

// Fills the dialog of type D through fill, then accepts or rejects it.
template <class D>
Step dialog(std::function<void(D*)> fill, bool accept, const char* shot = nullptr)
{
  return [fill, accept, shot](QWidget* up) {
    auto* window = qobject_cast<D*>(up);
    if (!window)
      return false;
    if (fill)
      fill(window);
    if (shot)
      shoot(window, shot);
    accept ? window->accept() : window->reject();
    return true;
  };
}

Step nameDialog(const char* name, bool accept)
{
  return dialog<kovAnimationNameDialog>(
      [name](kovAnimationNameDialog* d) {
        d->findChild<QLineEdit*>(QStringLiteral("Name"))->setText(QString::fromUtf8(name));
      },
      accept);
}

Step valueDialog(const char* name, double value, bool accept, const char* shot = nullptr)
{
  const QString field = QString::fromUtf8(name);
  return dialog<kovKeyframeValueDialog>(
      [field, value](kovKeyframeValueDialog* d) {
        if (auto* time = d->findChild<QSpinBox*>(field))
          time->setValue(static_cast<int>(value));
        else
          d->findChild<QDoubleSpinBox*>(field)->setValue(value);
      },
      accept, shot);
}

Step subTrackType(const char* name, bool accept)
{
  const QString type = QString::fromUtf8(name);
  return dialog<kovSubTrackDialog>(
      [type](kovSubTrackDialog* d) {
        auto* combo = d->findChild<QComboBox*>(QStringLiteral("AnimationType"));
        combo->setCurrentIndex(combo->findText(type));
      },
      accept, "subtrack-dialog");
}

Step speed(const QString& typed, bool accept, double* kept = nullptr)
{
  return dialog<QInputDialog>(
      [typed, kept](QInputDialog* d) {
        auto* field = d->findChild<QDoubleSpinBox*>();
        field->selectAll();
        QTest::keyClicks(field, typed);
        field->interpretText();
        if (kept)
          *kept = field->value();
        shoot(d, "speed-input");
      },
      accept);
}

Step pickItem(const QString& prefix)
{
  return dialog<QInputDialog>(
      [prefix](QInputDialog* d) {
        const QStringList items = d->comboBoxItems();
        for (const QString& item : items) {
          if (item.startsWith(prefix))
            d->setTextValue(item);
        }
      },
      true);
}

QString valueText(const QVariant& value)
{
  if (value.type() != QVariant::List)
    return value.toString();
  QStringList parts;
  for (const QVariant& part : value.toList())
    parts << part.toString();
  return QLatin1Char('(') + parts.join(QLatin1Char(' ')) + QLatin1Char(')');
}

} // namespace

Q_DECLARE_METATYPE(QList<Step>)

class tst_ValueEditing : public QObject {
  Q_OBJECT
private slots:
  void initTestCase();
  void cleanupTestCase();
  void init();
  void cleanup();

  void menuEnablesEntriesByRow_data();
  void menuEnablesEntriesByRow();
  void entriesChangeTheAnimation_data();
  void entriesChangeTheAnimation();
  void pasteTakesValuesOfTheSameTypeOnly_data();
  void pasteTakesValuesOfTheSameTypeOnly();
  void speedInputRefusesValuesOutOfRange_data();
  void speedInputRefusesValuesOutOfRange();
  void copySelectedNamesTheSelectedEntity();
  void subTrackDialogOffersTheTypesOfTheTrack_data();
  void subTrackDialogOffersTheTypesOfTheTrack();
  void keyframeToolTips_data();
  void keyframeToolTips();
  void laneToolTipIsTheKeyframeUnderTheMouse();
  void addTrackButtonAddsEveryKind_data();
  void addTrackButtonAddsEveryKind();
  void entriesDoNothingWithoutTheirTarget_data();
  void entriesDoNothingWithoutTheirTarget();

private:
  kovDbAnimationPtr animation() const { return kovDbAnimation::cast(m_animationId.openObject().get()); }
  // What a probe reads of the animation: "names" the track names, "items"
  // the types of a track's sub-tracks, "values" a sub-track's keyframes.
  QString probe(const QString& what, int track, int element) const;
  QPoint lanePoint(int track, int element, int t) const;
  // Right click on that row at time t and the steps answered.
  void rightClick(int track, int element, int t, const QList<Step>& steps);

  OdDbDatabasePtr m_db;
  OdDbObjectId m_animationId;
  OdDbObjectId m_chair;
  OdDbObjectId m_crate;
  kovAnimationEditorWidget* m_editor = nullptr;
};

void tst_ValueEditing::initTestCase()
{
  odInitialize();
  kovDbTempBlockReference::rxInit();
  kovDbAnimation::rxInit();
  odrxSysRegistry()->putAt(OdString(IkovSelectionSet::serviceId()), &s_selection);
}

void tst_ValueEditing::cleanupTestCase()
{
  odrxSysRegistry()->remove(OdString(IkovSelectionSet::serviceId()));
  kovDbAnimation::rxUninit();
  kovDbTempBlockReference::rxUninit();
  odUninitialize();
}

// Track 0, a camera: 0 a path by points through (0,0,0) at 0, (4,0,0) at
// 1000 and (4,3,0) at 3000 ms; 1 angles; 2 a closed path; 3 a turn to an
// entity. Track 1, a spawned crate: a path timed by its length. The drawing
// also holds a chair and a placed crate.
void tst_ValueEditing::init()
{
  m_db = OdDbDatabase::createObject();
  m_chair = kovAddReference(m_db.get(), kovAddBlock(m_db.get(), OdString(L"Chair")));
  m_crate = kovAddReference(m_db.get(), kovAddBlock(m_db.get(), OdString(L"Crate xblock")));
  s_selection.ids.clear();
  kovSubTrackClipboard::instance().clear();

  kovDbAnimationPtr entity = kovDbAnimation::createObject();
  entity->setDatabaseDefaults(m_db.get());
  kovAnimationTrackPtr camera(new kovAnimationTrack);
  camera->setName(QStringLiteral("Camera Track"));
  camera->setEntityUniqueName(m_db.get(), QStringLiteral("Camera"));
  addItem(*camera, kovAnimationItem::LocationByPoints,
          { { 0, pointValue(0, 0, 0) }, { 1000, pointValue(4, 0, 0) }, { 3000, pointValue(4, 3, 0) } });
  addItem(*camera, kovAnimationItem::RotationByAngles, { { 0, sixValue(1, 2, 3, 10, 20, 30) } });
  addItem(*camera, kovAnimationItem::LocationByPoints,
          { { 0, pointValue(0, 0, 0) }, { 1000, pointValue(1, 0, 0) }, { 2000, pointValue(1, 1, 0) },
            { 3000, pointValue(0, 0, 0) } });
  addItem(*camera, kovAnimationItem::RotationToEntity, { { 0, QVariantList { 0.0, 0.0, 0.0, QString() } } });
  kovAnimationTrackPtr crate(new kovAnimationTrack);
  crate->setName(QStringLiteral("Crate"));
  crate->setEntityUniqueName(m_db.get(), QStringLiteral("Crate xblock"));
  addItem(*crate, kovAnimationItem::LocationByPoints, { { 0, pointValue(0, 0, 0) }, { 2000, pointValue(2, 0, 0) } });
  entity->editTracks() = { camera, crate };
  OdDbBlockTableRecordPtr modelSpace = m_db->getModelSpaceId().safeOpenObject(OdDb::kForWrite);
  m_animationId = modelSpace->appendOdDbEntity(entity);
  entity = nullptr;
  modelSpace = nullptr;

  m_editor = new kovAnimationEditorWidget;
  m_editor->resize(1000, 700);
  m_editor->show();
  QVERIFY(QTest::qWaitForWindowExposed(m_editor));
  m_editor->selectAnimation(m_animationId);
  m_editor->setVisibleStart(-1000);
  m_editor->setCurrentPosition(500);
}

void tst_ValueEditing::cleanup()
{
  ++s_generation;
  delete m_editor;
  m_editor = nullptr;
  m_animationId = OdDbObjectId();
  m_db = nullptr;
}

QString tst_ValueEditing::probe(const QString& what, int track, int element) const
{
  const kovDbAnimationPtr a = animation();
  QStringList parts;
  if (what == QLatin1String("names")) {
    for (const kovAnimationTrackPtr& t : a->constTracks())
      parts << t->trackName();
  } else if (what == QLatin1String("items")) {
    for (const kovAnimationItem& item : a->constTracks().at(static_cast<size_t>(track))->animationElements())
      parts << kovAnimationItem::animationType2String(item.animationType());
  } else {
    const kovAnimationItem& item = a->constTracks().at(static_cast<size_t>(track))->elementAt(element);
    for (auto it = item.values().cbegin(); it != item.values().cend(); ++it)
      parts << QString::number(it.key()) + QLatin1Char('=') + valueText(it.value());
  }
  return parts.join(QLatin1Char(','));
}

QPoint tst_ValueEditing::lanePoint(int track, int element, int t) const
{
  kovAnimationTreeView* tree = m_editor->treeView();
  kovAnimationModel* model = m_editor->model();
  const QModelIndex row = element < 0 ? model->trackIndex(track, 1) : model->elementIndex(track, element, 1);
  return QPoint(tree->laneLeft() + m_editor->scale().xOf(t), tree->visualRect(row).center().y());
}

void tst_ValueEditing::rightClick(int track, int element, int t, const QList<Step>& steps)
{
  QWidget* viewport = m_editor->treeView()->viewport();
  const QPoint at = track < 0 ? QPoint(viewport->width() / 2, viewport->height() - 2) : lanePoint(track, element, t);
  QTest::mouseMove(viewport, at);
  answer(steps);
  QMouseEvent press(QEvent::MouseButtonPress, at, viewport->mapToGlobal(at), Qt::RightButton, Qt::RightButton,
                    Qt::NoModifier);
  QApplication::sendEvent(viewport, &press);
}

void tst_ValueEditing::menuEnablesEntriesByRow_data()
{
  QTest::addColumn<int>("track");
  QTest::addColumn<int>("element");
  QTest::addColumn<int>("at");
  QTest::addColumn<int>("position");
  QTest::addColumn<bool>("clipboard");
  QTest::addColumn<QStringList>("enabled");

  const QString editTrack = QStringLiteral("Edit Track"), copy = QStringLiteral("Copy Sub-Track Values"),
                paste = QStringLiteral("Paste Sub-Track Values"), removeSub = QStringLiteral("Remove Sub-Track"),
                editSub = QStringLiteral("Edit Sub-Track"), recompute = QStringLiteral("ReCompute KF Times by Distance"),
                add = QStringLiteral("Add KeyFrame"), append = QStringLiteral("Append KeyFrame"),
                removeKey = QStringLiteral("Remove KeyFrame"), editKey = QStringLiteral("Edit KeyFrame"),
                duplicate = QStringLiteral("Duplicate KeyFrame");
  QTest::newRow("track row") << 0 << -1 << 500 << 500 << false
                             << QStringList { QStringLiteral("Rename Track"), QStringLiteral("Remove Track"),
                                              QStringLiteral("Add Sub-Track") };
  QTest::newRow("path, no keyframe under the mouse")
      << 0 << 0 << 500 << 500 << false << QStringList { editTrack, copy, removeSub, editSub, recompute, add, append };
  QTest::newRow("path, keyframe under the mouse at the current position")
      << 0 << 0 << 1000 << 1000 << false
      << QStringList { editTrack, copy, removeSub, editSub, recompute, append, removeKey, editKey, duplicate };
  QTest::newRow("current position on a keyframe adds none")
      << 0 << 0 << 500 << 0 << false << QStringList { editTrack, copy, removeSub, editSub, recompute, append };
  QTest::newRow("closed path") << 0 << 2 << 500 << 500 << false
                               << QStringList { editTrack, copy, removeSub, editSub, add, append };
  QTest::newRow("angles, with values in the clipboard")
      << 0 << 1 << 500 << 500 << true << QStringList { editTrack, copy, paste, removeSub, editSub, add, append };
  QTest::newRow("spawned object's path timed by distance")
      << 1 << 0 << 2000 << 500 << false
      << QStringList { editTrack, copy, removeSub, editSub, recompute, append, removeKey, editKey };
  QTest::newRow("below the rows") << -1 << -1 << 0 << 500 << false << QStringList();
}

void tst_ValueEditing::menuEnablesEntriesByRow()
{
  QFETCH(int, track);
  QFETCH(int, element);
  QFETCH(int, at);
  QFETCH(int, position);
  QFETCH(bool, clipboard);
  QFETCH(QStringList, enabled);

  if (clipboard)
    kovSubTrackClipboard::instance().copy(animation()->constTracks().front()->elementAt(1));
  m_editor->setCurrentPosition(position);
  QStringList all;
  QStringList shown;
  const Step look = [&](QWidget* up) {
    auto* menu = qobject_cast<QMenu*>(up);
    if (!menu)
      return false;
    all = actionTexts(menu, false);
    shown = actionTexts(menu, true);
    menu->close();
    return true;
  };
  rightClick(track, element, at, { look });
  QTRY_COMPARE(all.size(), int(kovAnimationTrackMenu::EntryCount));
  for (int entry = 0; entry < kovAnimationTrackMenu::EntryCount; ++entry)
    QCOMPARE(all.at(entry), kovAnimationTrackMenu::text(static_cast<kovAnimationTrackMenu::Entry>(entry)));
  QCOMPARE(shown, enabled);
}

void tst_ValueEditing::entriesChangeTheAnimation_data()
{
  QTest::addColumn<int>("track");
  QTest::addColumn<int>("element");
  QTest::addColumn<int>("at");
  QTest::addColumn<QString>("entry");
  QTest::addColumn<QList<Step>>("answers");
  QTest::addColumn<QString>("what");
  QTest::addColumn<QString>("expected");

  const QString names = QStringLiteral("names"), items = QStringLiteral("items"), values = QStringLiteral("values");
  const QString path = QStringLiteral("0=(0 0 0),1000=(4 0 0),3000=(4 3 0)");
  const QString cameraItems =
      QStringLiteral("Location By Points,Rotation By Angles,Location By Points,Rotation To Entity");
  const auto yes = messageBox(QMessageBox::Yes);
  const auto no = messageBox(QMessageBox::No);

  QTest::newRow("rename track") << 0 << -1 << 500 << "Rename Track" << QList<Step> { nameDialog("Path", true) }
                                << names << "Path,Crate";
  QTest::newRow("rename track cancelled")
      << 0 << -1 << 500 << "Rename Track" << QList<Step> { nameDialog("Path", false) } << names << "Camera Track,Crate";
  QTest::newRow("edit track from its sub-track")
      << 1 << 0 << 500 << "Edit Track" << QList<Step> { nameDialog("Box", true) } << names << "Camera Track,Box";
  QTest::newRow("remove track") << 0 << -1 << 500 << "Remove Track" << QList<Step> { yes } << names << "Crate";
  QTest::newRow("remove track declined")
      << 0 << -1 << 500 << "Remove Track" << QList<Step> { no } << names << "Camera Track,Crate";
  QTest::newRow("add sub-track") << 0 << -1 << 500 << "Add Sub-Track" << QList<Step>() << items
                                 << cameraItems + QStringLiteral(",Location By Points");
  QTest::newRow("remove sub-track") << 0 << 1 << 500 << "Remove Sub-Track" << QList<Step> { yes } << items
                                    << "Location By Points,Location By Points,Rotation To Entity";
  QTest::newRow("remove sub-track declined")
      << 0 << 1 << 500 << "Remove Sub-Track" << QList<Step> { no } << items << cameraItems;
  QTest::newRow("sub-track to a type of the same kind keeps the keyframes")
      << 0 << 2 << 500 << "Edit Sub-Track" << QList<Step> { subTrackType("Location By Spline", true) } << items
      << "Location By Points,Rotation By Angles,Location By Spline,Rotation To Entity";
  QTest::newRow("sub-track to another kind, confirmed, drops the keyframes")
      << 0 << 1 << 500 << "Edit Sub-Track"
      << QList<Step> { subTrackType("Rotation To Target", true), yes } << values << "";
  QTest::newRow("sub-track to another kind, declined, keeps its type")
      << 0 << 1 << 500 << "Edit Sub-Track" << QList<Step> { subTrackType("Rotation To Target", true), no } << items
      << cameraItems;
  QTest::newRow("sub-track dialog cancelled after confirming")
      << 0 << 1 << 500 << "Edit Sub-Track" << QList<Step> { subTrackType("Rotation To Target", false), yes }
      << values << "0=(1 2 3 10 20 30)";
  QTest::newRow("recompute at the initial speed")
      << 0 << 0 << 500 << "ReCompute KF Times by Distance" << QList<Step> { speed(QString(), true) } << values
      << "0=(0 0 0),2000=(4 0 0),3500=(4 3 0)";
  QTest::newRow("recompute at a typed speed")
      << 0 << 0 << 500 << "ReCompute KF Times by Distance" << QList<Step> { speed(QStringLiteral("4"), true) } << values
      << "0=(0 0 0),1000=(4 0 0),1750=(4 3 0)";
  QTest::newRow("recompute cancelled") << 0 << 0 << 500 << "ReCompute KF Times by Distance"
                                       << QList<Step> { speed(QStringLiteral("4"), false) } << values << path;
  QTest::newRow("add keyframe at the current position, its value blended")
      << 0 << 0 << 500 << "Add KeyFrame" << QList<Step>() << values
      << "0=(0 0 0),500=(2 0 0),1000=(4 0 0),3000=(4 3 0)";
  QTest::newRow("append keyframe") << 0 << 0 << 500 << "Append KeyFrame" << QList<Step>() << values
                                   << path + QStringLiteral(",4000=(4 3 0)");
  QTest::newRow("remove keyframe") << 0 << 0 << 1000 << "Remove KeyFrame" << QList<Step> { yes } << values
                                   << "0=(0 0 0),3000=(4 3 0)";
  QTest::newRow("remove keyframe declined")
      << 0 << 0 << 1000 << "Remove KeyFrame" << QList<Step> { no } << values << path;
  QTest::newRow("edit keyframe's position")
      << 0 << 0 << 1000 << "Edit KeyFrame" << QList<Step> { valueDialog("PositionX", 5, true) } << values
      << "0=(0 0 0),1000=(5 0 0),3000=(4 3 0)";
  QTest::newRow("edit keyframe's time stops short of the next keyframe")
      << 0 << 0 << 1000 << "Edit KeyFrame" << QList<Step> { valueDialog("KFTime", 5000, true) } << values
      << "0=(0 0 0),2999=(4 0 0),3000=(4 3 0)";
  QTest::newRow("edit keyframe cancelled")
      << 0 << 0 << 1000 << "Edit KeyFrame" << QList<Step> { valueDialog("PositionX", 5, false) } << values << path;
  QTest::newRow("edit angles") << 0 << 1 << 0 << "Edit KeyFrame"
                               << QList<Step> { valueDialog("Yaw", 45, true, "value-dialog") } << values
                               << "0=(1 2 3 10 20 45)";
  QTest::newRow("duplicate keyframe goes halfway to the next")
      << 0 << 0 << 1000 << "Duplicate KeyFrame" << QList<Step>() << values
      << "0=(0 0 0),1000=(4 0 0),2000=(4 0 0),3000=(4 3 0)";
  QTest::newRow("duplicate of the last keyframe goes a step later")
      << 0 << 0 << 3000 << "Duplicate KeyFrame" << QList<Step>() << values << path + QStringLiteral(",4000=(4 3 0)");
}

void tst_ValueEditing::entriesChangeTheAnimation()
{
  QFETCH(int, track);
  QFETCH(int, element);
  QFETCH(int, at);
  QFETCH(QString, entry);
  QFETCH(QList<Step>, answers);
  QFETCH(QString, what);
  QFETCH(QString, expected);

  rightClick(track, element, at, QList<Step> { choose(entry) } + answers);
  QTRY_VERIFY(!QApplication::activeModalWidget() && !QApplication::activePopupWidget());
  QCOMPARE(probe(what, track, element), expected);
  // The tree shows what the entity holds.
  kovAnimationModel* model = m_editor->model();
  QCOMPARE(model->rowCount(), int(animation()->constTracks().size()));
}

void tst_ValueEditing::pasteTakesValuesOfTheSameTypeOnly_data()
{
  QTest::addColumn<int>("into");
  QTest::addColumn<QString>("warning");
  QTest::addColumn<QString>("expected");

  QTest::newRow("path into path") << 2 << QString() << "0=(0 0 0),1000=(4 0 0),3000=(4 3 0)";
  QTest::newRow("path into rotation")
      << 1 << "Invalid Operation|Sub-Track Animation Type not matching the values in clipboard."
      << "0=(1 2 3 10 20 30)";
}

void tst_ValueEditing::pasteTakesValuesOfTheSameTypeOnly()
{
  QFETCH(int, into);
  QFETCH(QString, warning);
  QFETCH(QString, expected);

  const QString copied = probe(QStringLiteral("values"), 0, 0);
  rightClick(0, 0, 500, { choose(QStringLiteral("Copy Sub-Track Values")) });
  QString seen;
  rightClick(0, into, 500, { choose(QStringLiteral("Paste Sub-Track Values")), messageBox(QMessageBox::Ok, &seen) });
  QTRY_VERIFY(!QApplication::activeModalWidget() && !QApplication::activePopupWidget());
  QCOMPARE(seen, warning);
  QCOMPARE(probe(QStringLiteral("values"), 0, into), expected);
  QCOMPARE(probe(QStringLiteral("values"), 0, 0), copied);
}

void tst_ValueEditing::speedInputRefusesValuesOutOfRange_data()
{
  QTest::addColumn<QString>("typed");
  QTest::addColumn<double>("lowest");
  QTest::addColumn<double>("highest");

  QTest::newRow("below 0.1") << "0.05" << 0.1 << 100.0;
  QTest::newRow("above 100") << "150" << 0.1 << 100.0;
  QTest::newRow("far above") << "1000" << 0.1 << 100.0;
  QTest::newRow("in range") << "12.5" << 12.5 << 12.5;
}

void tst_ValueEditing::speedInputRefusesValuesOutOfRange()
{
  QFETCH(QString, typed);
  QFETCH(double, lowest);
  QFETCH(double, highest);

  double kept = 0.0;
  rightClick(0, 0, 500, { choose(QStringLiteral("ReCompute KF Times by Distance")), speed(typed, true, &kept) });
  QTRY_VERIFY(!QApplication::activeModalWidget() && !QApplication::activePopupWidget());
  QVERIFY2(kept >= lowest && kept <= highest, qPrintable(QString::number(kept)));
  // The path is 7 units long: its last keyframe lies where the kept speed puts it.
  const int last = animation()->constTracks().front()->elementAt(0).values().lastKey();
  QVERIFY2(qAbs(last - 7000.0 / kept) <= 1.0, qPrintable(QString::number(last)));
}

void tst_ValueEditing::copySelectedNamesTheSelectedEntity()
{
  s_selection.ids.append(m_chair);
  const Step copy = dialog<kovKeyframeValueDialog>(
      [](kovKeyframeValueDialog* d) { d->findChild<QPushButton*>(QStringLiteral("CopySelected"))->click(); }, true,
      "value-dialog-entity");
  rightClick(0, 3, 0, { choose(QStringLiteral("Edit KeyFrame")), copy });
  QTRY_VERIFY(!QApplication::activeModalWidget() && !QApplication::activePopupWidget());
  QCOMPARE(probe(QStringLiteral("values"), 0, 3),
           QStringLiteral("0=(0 0 0 %1)").arg(odToQString(m_chair.getHandle().ascii())));
}

void tst_ValueEditing::subTrackDialogOffersTheTypesOfTheTrack_data()
{
  QTest::addColumn<QString>("kind");
  QTest::addColumn<int>("count");
  QTest::addColumn<bool>("scale");

  QTest::newRow("environment: parameters only") << "Environment" << 1 << false;
  QTest::newRow("unbound: parameters only") << "" << 1 << false;
  QTest::newRow("camera: all but scale") << "Camera" << 7 << false;
  QTest::newRow("entity: all") << "Entity" << 8 << true;
}

void tst_ValueEditing::subTrackDialogOffersTheTypesOfTheTrack()
{
  QFETCH(QString, kind);
  QFETCH(int, count);
  QFETCH(bool, scale);

  kovAnimationItem item;
  item.setAnimationType(kovAnimationItem::CustomParameter, OdGePoint3d::kOrigin);
  const kovSubTrackDialog dialog(item, kind);
  const auto* types = dialog.findChild<QComboBox*>(QStringLiteral("AnimationType"));
  QCOMPARE(types->count(), count);
  QCOMPARE(types->findText(QStringLiteral("Scale")) >= 0, scale);
}

void tst_ValueEditing::keyframeToolTips_data()
{
  QTest::addColumn<int>("type");
  QTest::addColumn<int>("paramsType");
  QTest::addColumn<QVariant>("value");
  QTest::addColumn<QString>("expected");

  using Item = kovAnimationItem;
  QTest::newRow("number to 6 digits") << int(Item::CustomParameter) << int(Item::Number) << QVariant(3.14159265)
                                      << " Value:3.14159";
  QTest::newRow("on") << int(Item::CustomParameter) << int(Item::OnOff) << QVariant(true) << " Value: True";
  QTest::newRow("off") << int(Item::CustomParameter) << int(Item::OnOff) << QVariant(false) << " Value: False";
  QTest::newRow("text") << int(Item::CustomParameter) << int(Item::Text) << QVariant(QStringLiteral("Rainy"))
                        << " Value:Rainy";
  QTest::newRow("point, free tangent") << int(Item::LocationByPoints) << 0 << pointValue(1.5, 2, 1234567)
                                       << " X:1.5 Y:2 Z:1.23457e+06";
  QTest::newRow("spline point with tangent") << int(Item::LocationBySpline) << 0 << sixValue(1, 2, 3, 0.5, -1, 0)
                                             << " X:1 Y:2 Z:3 - Tangent: X:0.5 Y:-1";
  QTest::newRow("scale") << int(Item::Scale) << 0 << QVariant(2.5) << " Scale: X:2.5 Y:2.5 Z:2.5";
  QTest::newRow("angles") << int(Item::RotationByAngles) << 0 << sixValue(1, 2, 3, 10, 20, 30)
                          << " Pivot (X:1 Y:2 Z:3 Pitch:10 Yaw:30 Roll:20";
  QTest::newRow("target") << int(Item::RotationToTarget) << 0 << sixValue(1, 2, 3, 4, 5, 6)
                          << " Pivot (X:1 Y:2 Z:3 Target (X:4 Y:5 Z:6";
  QTest::newRow("entity") << int(Item::RotationToEntity) << 0
                          << QVariant(QVariantList { 1.0, 2.0, 3.0, QStringLiteral("2A") })
                          << " Pivot (X:1 Y:2 Z:3 Target Entity:2A";
}

void tst_ValueEditing::keyframeToolTips()
{
  QFETCH(int, type);
  QFETCH(int, paramsType);
  QFETCH(QVariant, value);
  QFETCH(QString, expected);

  kovAnimationItem item;
  item.setAnimationType(static_cast<kovAnimationItem::AnimationType>(type), OdGePoint3d::kOrigin);
  item.setParamsType(static_cast<kovAnimationItem::ParameterType>(paramsType));
  QCOMPARE(kovKeyframeToolTip::text(item, value), expected);
}

void tst_ValueEditing::laneToolTipIsTheKeyframeUnderTheMouse()
{
  const QModelIndex lane = m_editor->model()->elementIndex(0, 0, 1);
  QTest::mouseMove(m_editor->treeView()->viewport(), lanePoint(0, 0, 1000));
  QCOMPARE(lane.data(Qt::ToolTipRole).toString(), QStringLiteral(" X:4 Y:0 Z:0"));
  QTest::mouseMove(m_editor->treeView()->viewport(), lanePoint(0, 0, 500));
  QVERIFY(!lane.data(Qt::ToolTipRole).isValid());
}

void tst_ValueEditing::addTrackButtonAddsEveryKind_data()
{
  QTest::addColumn<int>("kind");
  QTest::addColumn<QString>("selected");
  QTest::addColumn<bool>("bareDrawing");
  QTest::addColumn<QList<Step>>("answers");
  QTest::addColumn<QString>("expected");

  using Menu = kovAddTrackMenu;
  QTest::newRow("camera") << int(Menu::CameraTrack) << "" << false << QList<Step>()
                          << "Camera:Location By Spline,Rotation By Angles";
  QTest::newRow("entity") << int(Menu::EntityTrack) << "chair" << false << QList<Step>() << "Entity:Location By Points";
  QTest::newRow("entity, nothing selected")
      << int(Menu::EntityTrack) << "" << false << QList<Step>() << "Entity Track|No Entity selected";
  QTest::newRow("environment") << int(Menu::EnvironmentTrack) << "" << false << QList<Step>()
                               << "Environment:Longitude,Latitude,North,Time";
  QTest::newRow("spawned object") << int(Menu::SpawnedObjectTrack) << "" << false
                                  << QList<Step> { pickItem(QStringLiteral("Crate")) }
                                  << "SpawnedObject:Location By Points";
  QTest::newRow("spawned object, no xBlocks")
      << int(Menu::SpawnedObjectTrack) << "" << true << QList<Step>() << "Spawned Object Track|No xBlocks in project";
  QTest::newRow("placed object picked") << int(Menu::DbObjectTrack) << "" << false
                                        << QList<Step> { pickItem(QStringLiteral("Crate")) }
                                        << "Object:Location By Points";
  QTest::newRow("placed object selected")
      << int(Menu::DbObjectTrack) << "crate" << false << QList<Step>() << "Object:Location By Points";
  QTest::newRow("placed object, no xBlocks")
      << int(Menu::DbObjectTrack) << "" << true << QList<Step>() << "Db Object Track|No xBlocks in project";
}

void tst_ValueEditing::addTrackButtonAddsEveryKind()
{
  QFETCH(int, kind);
  QFETCH(QString, selected);
  QFETCH(bool, bareDrawing);
  QFETCH(QList<Step>, answers);
  QFETCH(QString, expected);

  OdDbDatabasePtr bare;
  if (bareDrawing) {
    bare = OdDbDatabase::createObject();
    kovDbAnimationPtr empty = kovDbAnimation::createObject();
    empty->setDatabaseDefaults(bare.get());
    OdDbBlockTableRecordPtr modelSpace = bare->getModelSpaceId().safeOpenObject(OdDb::kForWrite);
    m_animationId = modelSpace->appendOdDbEntity(empty);
    m_editor->selectAnimation(m_animationId);
  }
  if (selected == QLatin1String("chair"))
    s_selection.ids.append(m_chair);
  if (selected == QLatin1String("crate"))
    s_selection.ids.append(m_crate);
  const size_t before = animation()->constTracks().size();

  QString warning;
  answer(QList<Step> { choose(kovAddTrackMenu::text(static_cast<kovAddTrackMenu::Kind>(kind))) } + answers
         + QList<Step> { messageBox(QMessageBox::Ok, &warning) });
  QTest::mouseClick(m_editor->tracksHeader()->addTrackButton(), Qt::LeftButton);
  if (expected.contains(QLatin1Char('|'))) {
    QTRY_COMPARE(warning, expected);
    QCOMPARE(animation()->constTracks().size(), before);
    return;
  }
  QTRY_VERIFY(!QApplication::activeModalWidget() && !QApplication::activePopupWidget());
  QCOMPARE(animation()->constTracks().size(), before + 1);
  const kovAnimationTrack& added = *animation()->constTracks().back();
  QStringList items;
  for (const kovAnimationItem& item : added.animationElements())
    items << (item.animationType() == kovAnimationItem::CustomParameter
                  ? item.customParameterName()
                  : kovAnimationItem::animationType2String(item.animationType()));
  QCOMPARE(added.trackTypeIdentifier() + QLatin1Char(':') + items.join(QLatin1Char(',')), expected);
  QCOMPARE(m_editor->model()->rowCount(), int(before + 1));
  QVERIFY(warning.isEmpty());
}

void tst_ValueEditing::entriesDoNothingWithoutTheirTarget_data()
{
  QTest::addColumn<int>("entry");
  for (int entry = 0; entry < kovAnimationTrackMenu::EntryCount; ++entry)
    QTest::newRow(qPrintable(kovAnimationTrackMenu::text(static_cast<kovAnimationTrackMenu::Entry>(entry)))) << entry;
}

// Rows and keyframes that are not there, and no animation at all: no
// question comes up and nothing changes.
void tst_ValueEditing::entriesDoNothingWithoutTheirTarget()
{
  QFETCH(int, entry);

  kovSubTrackClipboard::instance().copy(animation()->constTracks().front()->elementAt(0));
  auto* actions = m_editor->findChild<kovAnimationEditActions*>();
  QVERIFY(actions);
  QString asked;
  const Step any = [&asked](QWidget* up) {
    asked = up->windowTitle();
    up->close();
    return true;
  };
  const auto state = [this] {
    QStringList all;
    for (int t = 0; t < int(animation()->constTracks().size()); ++t) {
      all << probe(QStringLiteral("items"), t, -1);
      for (int e = 0; e < animation()->constTracks().at(size_t(t))->numElements(); ++e)
        all << probe(QStringLiteral("values"), t, e);
    }
    return probe(QStringLiteral("names"), -1, -1) + QLatin1Char('|') + all.join(QLatin1Char('|'));
  };
  const QString before = state();
  using Target = kovAnimationTrackMenu::Target;
  const QList<Target> bad { { 7, -1, std::nullopt }, { 7, 0, 0 }, { 0, 9, 0 }, { -1, -1, std::nullopt },
                            { 0, 0, 999 } };
  const auto which = static_cast<kovAnimationTrackMenu::Entry>(entry);
  for (const Target& target : bad) {
    // A missing keyframe is bad input only for the entries that act on one.
    if (target.key == 999 && which < kovAnimationTrackMenu::RemoveKeyframe)
      continue;
    answer({ any });
    actions->run(which, target);
  }
  m_editor->selectAnimation(OdDbObjectId());
  for (const Target& target : QList<Target> { { 0, -1, std::nullopt }, { 0, 0, 1000 } }) {
    answer({ any });
    actions->run(which, target);
  }
  QTest::qWait(20);
  QCOMPARE(asked, QString());
  QCOMPARE(state(), before);
}

QTEST_MAIN(tst_ValueEditing)
#include "tst_valueediting.moc"
