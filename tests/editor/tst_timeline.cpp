// The editor's timeline: its scale, the header's handle and wheel, the
// drags in the track tree checked in the entity, what the lanes show, and
// removing a row through its remove spot.
#include "db/kovDbAnimation.h"
#include "db/kovDbTempBlockReference.h"
#include "editor/kovAnimationEditorWidget.h"
#include "editor/kovAnimationModel.h"
#include "editor/kovAnimationModelDelegate.h"
#include "editor/kovAnimationTimelineHeaderWidget.h"
#include "editor/kovAnimationTreeView.h"

#include "Db/OdDbBlockTableRecord.h"
#include "Db/OdDbFileWriter.h"
#include "Db/OdDbDatabase.h"
#include "Db/OdDbModule.h"

#include <QApplication>
#include <QFontMetrics>
#include <QMessageBox>
#include <QPushButton>
#include <QtTest>

namespace {

const int kEditorWidth = 1000;
const int kEditorHeight = 600;
// The initial zoom shows 0.06 pixels a millisecond: 30 pixels are 500 ms.
const double kPixelsPerMs = 0.06;

const QColor kHandleOutline(128, 64, 64);
const QColor kSpanOutline(16, 16, 16);

void send(QWidget* widget, QEvent::Type type, const QPoint& pos, Qt::MouseButton button = Qt::LeftButton)
{
  const Qt::MouseButtons buttons = type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::MouseButtons(button);
  QMouseEvent event(type, pos, widget->mapToGlobal(pos), type == QEvent::MouseMove ? Qt::NoButton : button, buttons,
                    Qt::NoModifier);
  QApplication::sendEvent(widget, &event);
}

void drag(QWidget* widget, const QPoint& from, int dx)
{
  send(widget, QEvent::MouseMove, from, Qt::NoButton);
  send(widget, QEvent::MouseButtonPress, from);
  send(widget, QEvent::MouseMove, from + QPoint(dx, 0));
  send(widget, QEvent::MouseButtonRelease, from + QPoint(dx, 0));
}

// The columns of the image's row y that have that colour.
QList<int> columnsOf(const QImage& image, int y, const QColor& color)
{
  QList<int> columns;
  for (int x = 0; x < image.width(); ++x) {
    if (image.pixelColor(x, y) == color)
      columns << x;
  }
  return columns;
}

// Answers the next message box with that button once it is up, keeping its
// title and text.
void answerNextMessageBox(QMessageBox::StandardButton answer, QString* title, QString* text)
{
  QTimer::singleShot(0, [=] {
    auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    QVERIFY(box);
    *title = box->windowTitle();
    *text = box->text();
    box->button(answer)->click();
  });
}

} // namespace

class tst_Timeline : public QObject {
  Q_OBJECT
private slots:
  void initTestCase()
  {
    odInitialize();
    kovDbTempBlockReference::rxInit();
    kovDbAnimation::rxInit();
  }
  void cleanupTestCase()
  {
    kovDbAnimation::rxUninit();
    kovDbTempBlockReference::rxUninit();
    odUninitialize();
  }
  void init();
  void cleanup();

  void scaleStepsAndLabels_data();
  void scaleStepsAndLabels();
  void wheelZoomsAroundTheCursor_data();
  void wheelZoomsAroundTheCursor();
  void wheelPansThroughTime_data();
  void wheelPansThroughTime();
  void headerSetsThePosition_data();
  void headerSetsThePosition();
  void cursorShowsOnlyInTheVisibleRange_data();
  void cursorShowsOnlyInTheVisibleRange();
  void dragsChangeTheEntity_data();
  void dragsChangeTheEntity();
  void lanesShowKeyframesAndSpans_data();
  void lanesShowKeyframesAndSpans();
  void keysAtOneTimeDrawNoSpan_data();
  void keysAtOneTimeDrawNoSpan();
  void removeSpotAsksFirst_data();
  void removeSpotAsksFirst();
  void aWholeDragIsOneUndoStep();

private:
  kovDbAnimationPtr animation() const
  {
    return kovDbAnimation::cast(m_animationId.openObject(OdDb::kForRead).get());
  }
  // The point of the lane of that row (element -1: the track's row) at time t.
  QPoint lanePoint(int track, int element, int t) const
  {
    kovAnimationModel* model = m_editor->model();
    const QModelIndex row = element < 0 ? model->trackIndex(track, 1) : model->elementIndex(track, element, 1);
    return QPoint(m_tree->laneLeft() + m_editor->scale().xOf(t), m_tree->visualRect(row).center().y());
  }

  OdDbDatabasePtr m_db;
  OdDbObjectId m_animationId;
  kovAnimationEditorWidget* m_editor = nullptr;
  kovAnimationTreeView* m_tree = nullptr;
  kovAnimationTimelineHeaderWidget* m_header = nullptr;
};

// Track 0 spans 0 to 4000 ms with two sub-tracks; track 1's keys all lie at
// 1500 ms.
void tst_Timeline::init()
{
  m_db = OdDbDatabase::createObject();
  kovDbAnimationPtr animation = kovDbAnimation::createObject();
  const QList<QList<QList<int>>> tracks = { { { 0, 1000, 2000, 4000 }, { 500, 3000 } }, { { 1500 }, { 1500 } } };
  for (const QList<QList<int>>& keysOfTrack : tracks) {
    kovAnimationTrackPtr track(new kovAnimationTrack);
    track->setName(QStringLiteral("Track %1").arg(animation->constTracks().size()));
    for (const QList<int>& keys : keysOfTrack) {
      track->addElement();
      kovAnimationItem& item = track->elementAt(track->numElements() - 1);
      item.setAnimationType(kovAnimationItem::Scale, OdGePoint3d::kOrigin);
      for (int key : keys)
        item.setValue(key, 1.0 + key / 1000.0);
    }
    animation->editTracks().push_back(track);
  }
  OdDbBlockTableRecordPtr modelSpace = m_db->getModelSpaceId().safeOpenObject(OdDb::kForWrite);
  m_animationId = modelSpace->appendOdDbEntity(animation);
  animation = nullptr;
  modelSpace = nullptr;

  m_editor = new kovAnimationEditorWidget;
  m_editor->resize(kEditorWidth, kEditorHeight);
  m_editor->show();
  QVERIFY(QTest::qWaitForWindowExposed(m_editor));
  m_editor->selectAnimation(m_animationId);
  m_tree = m_editor->treeView();
  m_header = m_editor->timelineHeader();
  // Time 0 away from the lane's edge.
  m_editor->setVisibleStart(-1000);
  m_editor->setCurrentPosition(1000);
}

void tst_Timeline::cleanup()
{
  delete m_editor;
  m_editor = nullptr;
  m_animationId = OdDbObjectId();
  m_db = nullptr;
}

void tst_Timeline::scaleStepsAndLabels_data()
{
  QTest::addColumn<double>("zoom");
  QTest::addColumn<int>("visibleStart");
  QTest::addColumn<double>("labelWidth");
  QTest::addColumn<double>("pixelsPerMs");
  QTest::addColumn<int>("step");
  QTest::addColumn<int>("labelAt");
  QTest::addColumn<QString>("label");

  // A step must leave a third of the label's width: 42 px at 2 px/ms needs 7 ms.
  QTest::newRow("closest in") << 1.0 << 0 << 42.0 << 2.0 << 10 << 50 << "50ms";
  QTest::newRow("initial zoom") << 0.03 << 1234 << 42.0 << 0.06 << 500 << 2500 << "2.50s";
  QTest::newRow("tens of seconds") << 0.003 << -700 << 42.0 << 0.006 << 6000 << 30000 << "30.0s";
  QTest::newRow("farthest out") << 1e-5 << 0 << 42.0 << 2e-5 << 720000 << 7200000 << "120m";
  // Even the largest step is too fine for so wide a label: it is the one taken.
  QTest::newRow("beyond the largest step") << 1e-5 << 0 << 60.0 << 2e-5 << 720000 << 3600000 << "60m";
}

void tst_Timeline::scaleStepsAndLabels()
{
  QFETCH(double, zoom);
  QFETCH(int, visibleStart);
  QFETCH(double, labelWidth);
  QFETCH(double, pixelsPerMs);
  QFETCH(int, step);
  QFETCH(int, labelAt);
  QFETCH(QString, label);

  const kovTimelineScale scale = kovTimelineScale::compute(visibleStart, zoom, 600, labelWidth, 3000);
  QCOMPARE(scale.pixelsPerMs, pixelsPerMs);
  QCOMPARE(scale.step, step);
  QCOMPARE(scale.label(labelAt), label);
  QVERIFY(scale.firstTick <= visibleStart && scale.firstTick % scale.step == 0);
  // What is drawn at x is what a click at x takes, off the ticks too.
  QCOMPARE(scale.xOf(visibleStart), 0);
  QCOMPARE(scale.xOf(scale.timeAt(40)), 40);
}

void tst_Timeline::wheelZoomsAroundTheCursor_data()
{
  QTest::addColumn<double>("startZoom");
  QTest::addColumn<int>("delta");
  QTest::addColumn<double>("zoom");

  QTest::newRow("in") << 0.03 << 120 << 0.03 * 1.12;
  QTest::newRow("out") << 0.03 << -120 << 0.03 / 1.12;
  QTest::newRow("no delta") << 0.03 << 0 << 0.03;
  QTest::newRow("at most 1") << 0.8 << 1000 << 1.0;
  QTest::newRow("at least the editor's least") << 2e-5 << -5000 << 1e-5;
}

void tst_Timeline::wheelZoomsAroundTheCursor()
{
  QFETCH(double, startZoom);
  QFETCH(int, delta);
  QFETCH(double, zoom);
  m_editor->setZoom(startZoom);
  // The cursor about 100 px into the lane, the visible start off the ticks
  // so that the cursor's pixel depends on it.
  m_editor->setVisibleStart(m_editor->currentPosition() - static_cast<int>(100 / (2 * startZoom)) - 7);
  const int y = m_header->height() / 2;
  const QList<int> before = columnsOf(m_header->grab().toImage(), y, kHandleOutline);
  QCOMPARE(before.size(), 2);

  QWheelEvent event(QPointF(100, y), m_header->mapToGlobal(QPoint(100, y)), QPoint(), QPoint(0, delta), Qt::NoButton,
                    Qt::NoModifier, Qt::NoScrollPhase, false);
  event.ignore();
  QApplication::sendEvent(m_header, &event);
  QVERIFY(event.isAccepted());
  QVERIFY(qFuzzyCompare(m_editor->zoom(), zoom));
  const QList<int> after = columnsOf(m_header->grab().toImage(), y, kHandleOutline);
  QCOMPARE(after.size(), 2);
  QVERIFY(std::abs(after.first() - before.first()) <= 1);
}

void tst_Timeline::wheelPansThroughTime_data()
{
  QTest::addColumn<bool>("onTree");
  QTest::addColumn<QPoint>("delta");
  QTest::addColumn<int>("modifiers");
  QTest::addColumn<int>("tenths");

  QTest::newRow("header, Shift and wheel up goes back") << false << QPoint(0, 120) << int(Qt::ShiftModifier) << -1;
  QTest::newRow("header, sideways wheel goes on") << false << QPoint(-240, 0) << int(Qt::NoModifier) << 2;
  QTest::newRow("tree, Shift and wheel down goes on") << true << QPoint(0, -120) << int(Qt::ShiftModifier) << 1;
  QTest::newRow("tree, plain wheel scrolls rows only") << true << QPoint(0, -120) << int(Qt::NoModifier) << 0;
}

void tst_Timeline::wheelPansThroughTime()
{
  QFETCH(bool, onTree);
  QFETCH(QPoint, delta);
  QFETCH(int, modifiers);
  QFETCH(int, tenths);
  m_editor->setVisibleStart(5000);
  const kovTimelineScale before = m_editor->scale();
  QWidget* target = onTree ? m_tree->viewport() : static_cast<QWidget*>(m_header);
  const QPoint at(m_tree->laneLeft() + 50, 5);
  QWheelEvent event(at, target->mapToGlobal(at), QPoint(), delta, Qt::NoButton, Qt::KeyboardModifiers(modifiers),
                    Qt::NoScrollPhase, false);
  QApplication::sendEvent(target, &event);
  const int width = before.lastVisible - before.visibleStart;
  QVERIFY2(std::abs(m_editor->visibleStart() - (5000 + tenths * width / 10)) <= 1,
           qPrintable(QString::number(m_editor->visibleStart())));
  QCOMPARE(m_editor->scale().pixelsPerMs, before.pixelsPerMs);
}

void tst_Timeline::headerSetsThePosition_data()
{
  QTest::addColumn<QString>("gesture");
  QTest::addColumn<int>("fromX");
  QTest::addColumn<int>("toX");
  QTest::addColumn<int>("position");

  // The handle of 1000 ms sits at x 120 (visible start -1000 ms).
  QTest::newRow("drag the handle") << "drag" << 121 << 300 << 4000;
  QTest::newRow("drag beside the handle") << "drag" << 140 << 300 << 1000;
  QTest::newRow("double click") << "double" << 0 << 90 << 500;
}

void tst_Timeline::headerSetsThePosition()
{
  QFETCH(QString, gesture);
  QFETCH(int, fromX);
  QFETCH(int, toX);
  QFETCH(int, position);
  const int y = m_header->height() / 2;
  if (gesture == QLatin1String("drag"))
    drag(m_header, QPoint(fromX, y), toX - fromX);
  else
    send(m_header, QEvent::MouseButtonDblClick, QPoint(toX, y));
  QCOMPARE(m_editor->currentPosition(), position);
  QCOMPARE(animation()->currentPositionMs(), m_editor->currentPosition());
}

void tst_Timeline::cursorShowsOnlyInTheVisibleRange_data()
{
  QTest::addColumn<int>("visibleStart");
  QTest::addColumn<int>("position");
  QTest::addColumn<int>("x");

  QTest::newRow("inside") << -1000 << 1000 << 120;
  QTest::newRow("left of the range") << 2000 << 1000 << -1;
  QTest::newRow("right of the range") << -1000 << 60000 << -1;
}

void tst_Timeline::cursorShowsOnlyInTheVisibleRange()
{
  QFETCH(int, position);
  QFETCH(int, visibleStart);
  QFETCH(int, x);
  m_editor->setCurrentPosition(position);
  m_editor->setVisibleStart(visibleStart);

  const QList<int> handle = columnsOf(m_header->grab().toImage(), m_header->height() / 2, kHandleOutline);
  // Below the rows only the grid and the cursor line are drawn: the line is
  // the one reddish column.
  const QImage tree = m_tree->viewport()->grab().toImage();
  QList<int> line;
  for (int column = 0; column < tree.width(); ++column) {
    const QColor color = tree.pixelColor(column, tree.height() - 5);
    if (color.red() - color.green() > 10)
      line << column;
  }
  if (x < 0) {
    QVERIFY(handle.isEmpty());
    QVERIFY(line.isEmpty());
    return;
  }
  QCOMPARE(handle, QList<int>({ x - 5, x + 5 }));
  const int lineX = m_tree->laneLeft() + x;
  QCOMPARE(line, QList<int>({ lineX - 1, lineX, lineX + 1 }));
  // The handle stands above the line.
  QCOMPARE(m_header->mapTo(m_editor, QPoint(x, 0)).x(), m_tree->viewport()->mapTo(m_editor, QPoint(lineX, 0)).x());
}

void tst_Timeline::dragsChangeTheEntity_data()
{
  QTest::addColumn<int>("element");
  QTest::addColumn<int>("pressAt");
  QTest::addColumn<int>("dx");
  QTest::addColumn<int>("start");
  QTest::addColumn<QList<int>>("keys");

  // 30 px are 500 ms; the keys are those of the first sub-track.
  QTest::newRow("span's left end") << -1 << 0 << 30 << 0 << QList<int>({ 500, 1375, 2250, 4000 });
  QTest::newRow("span's right end") << -1 << 4000 << -60 << 0 << QList<int>({ 0, 750, 1500, 3000 });
  QTest::newRow("whole span") << -1 << 2500 << 30 << 500 << QList<int>({ 0, 1000, 2000, 4000 });
  QTest::newRow("keyframe") << 0 << 1000 << 30 << 0 << QList<int>({ 0, 1500, 2000, 4000 });
  QTest::newRow("keyframe back") << 0 << 2000 << -24 << 0 << QList<int>({ 0, 1000, 1600, 4000 });
  QTest::newRow("keyframe onto its neighbour") << 0 << 1000 << 60 << 0 << QList<int>({ 0, 1000, 2000, 4000 });
  QTest::newRow("keyframe past its neighbour") << 0 << 2000 << -90 << 0 << QList<int>({ 0, 1000, 2000, 4000 });
}

void tst_Timeline::dragsChangeTheEntity()
{
  QFETCH(int, element);
  QFETCH(int, pressAt);
  QFETCH(int, dx);
  QFETCH(int, start);
  QFETCH(QList<int>, keys);
  drag(m_tree->viewport(), lanePoint(0, element, pressAt), dx);

  const kovAnimationTrack& track = *animation()->constTracks().at(0);
  QCOMPARE(track.startMillisecond(), start);
  QCOMPARE(track.elementAt(0).values().keys(), keys);
  QCOMPARE(track.elementAt(0).values().size(), 4);
}

void tst_Timeline::lanesShowKeyframesAndSpans_data()
{
  QTest::addColumn<int>("track");
  QTest::addColumn<int>("element");
  QTest::addColumn<int>("time");
  QTest::addColumn<int>("dx");
  QTest::addColumn<int>("dy");
  QTest::addColumn<QColor>("color");

  // The current position is 1000 ms; the cursor line covers x - 1 to x + 1.
  QTest::newRow("current keyframe's ring") << 0 << 0 << 1000 << 4 << 0 << QColor(255, 0, 0);
  QTest::newRow("current keyframe's inside") << 0 << 0 << 1000 << 3 << 3 << QColor(255, 128, 128);
  QTest::newRow("other keyframe") << 0 << 0 << 2000 << 3 << -3 << QColor(64, 32, 32);
  QTest::newRow("other keyframe's edge") << 0 << 0 << 2000 << 4 << 0
                                         << QColor(kovAnimationModel::typeColor(kovAnimationItem::Scale).rgb());
  QTest::newRow("span's outline") << 0 << -1 << 2500 << 0 << -10 << kSpanOutline;
}

void tst_Timeline::lanesShowKeyframesAndSpans()
{
  QFETCH(int, track);
  QFETCH(int, element);
  QFETCH(int, time);
  QFETCH(int, dx);
  QFETCH(int, dy);
  QFETCH(QColor, color);
  const QPoint at = lanePoint(track, element, time) + QPoint(dx, dy);
  QCOMPARE(m_tree->viewport()->grab().toImage().pixelColor(at), color);
}

void tst_Timeline::keysAtOneTimeDrawNoSpan_data()
{
  QTest::addColumn<int>("track");
  QTest::addColumn<bool>("span");

  QTest::newRow("keys from 0 to 4000 ms") << 0 << true;
  QTest::newRow("all keys at 1500 ms") << 1 << false;
}

void tst_Timeline::keysAtOneTimeDrawNoSpan()
{
  QFETCH(int, track);
  QFETCH(bool, span);
  const QRect lane = m_tree->visualRect(m_editor->model()->trackIndex(track, 1));
  const QImage image = m_tree->viewport()->grab(lane).toImage();
  int outline = 0;
  for (int y = 0; y < image.height(); ++y)
    outline += columnsOf(image, y, kSpanOutline).size();
  QCOMPARE(outline > 0, span);
}

void tst_Timeline::removeSpotAsksFirst_data()
{
  QTest::addColumn<int>("element");
  QTest::addColumn<int>("answer");
  QTest::addColumn<QString>("title");
  QTest::addColumn<QString>("text");
  QTest::addColumn<QList<int>>("elementsPerTrack");

  QTest::newRow("sub-track, yes") << 1 << int(QMessageBox::Yes) << "Confirm Remove SubTrack"
                                  << "Do you really want to remove this animation sub-track?" << QList<int>({ 1, 2 });
  QTest::newRow("sub-track, no") << 1 << int(QMessageBox::No) << "Confirm Remove SubTrack"
                                 << "Do you really want to remove this animation sub-track?" << QList<int>({ 2, 2 });
  QTest::newRow("track, yes") << -1 << int(QMessageBox::Yes) << "Confirm Remove Track"
                              << "Do you really want to remove this animation track?" << QList<int>({ 2 });
}

void tst_Timeline::removeSpotAsksFirst()
{
  QFETCH(int, element);
  QFETCH(int, answer);
  QFETCH(QString, title);
  QFETCH(QString, text);
  QFETCH(QList<int>, elementsPerTrack);
  kovAnimationModel* model = m_editor->model();
  const std::vector<OdUInt8> before = OdDbFileWriter::fileImage(m_db);
  const QModelIndex row = element < 0 ? model->trackIndex(0) : model->elementIndex(0, element);
  const QPoint spot = kovAnimationModelDelegate::removeSpot(m_tree->visualRect(row)).center();
  QString shownTitle, shownText;
  answerNextMessageBox(QMessageBox::StandardButton(answer), &shownTitle, &shownText);
  send(m_tree->viewport(), QEvent::MouseButtonPress, spot);
  send(m_tree->viewport(), QEvent::MouseButtonRelease, spot);
  QCOMPARE(shownTitle, title);
  QCOMPARE(shownText, text);

  QList<int> entity, rows;
  for (const kovAnimationTrackPtr& track : animation()->constTracks())
    entity << track->numElements();
  for (int t = 0; t < model->rowCount(); ++t)
    rows << model->rowCount(model->trackIndex(t));
  QCOMPARE(entity, elementsPerTrack);
  QCOMPARE(rows, elementsPerTrack);
  // A removal is taken back whole; a declined one left nothing to take back.
  QCOMPARE(m_db->hasUndo(), answer == QMessageBox::Yes);
  m_db->undo();
  QVERIFY(OdDbFileWriter::fileImage(m_db) == before);
}

void tst_Timeline::aWholeDragIsOneUndoStep()
{
  const std::vector<OdUInt8> before = OdDbFileWriter::fileImage(m_db);
  const QPoint from = lanePoint(0, 0, 1000);
  send(m_tree->viewport(), QEvent::MouseMove, from, Qt::NoButton);
  send(m_tree->viewport(), QEvent::MouseButtonPress, from);
  for (int dx = 6; dx <= 30; dx += 6)
    send(m_tree->viewport(), QEvent::MouseMove, from + QPoint(dx, 0));
  send(m_tree->viewport(), QEvent::MouseButtonRelease, from + QPoint(30, 0));
  QCOMPARE(animation()->constTracks()[0]->elementAt(0).values().firstKey(), 0);
  QVERIFY(!animation()->constTracks()[0]->elementAt(0).values().contains(1000));
  const std::vector<OdUInt8> after = OdDbFileWriter::fileImage(m_db);
  m_db->undo();
  QVERIFY(!m_db->hasUndo());
  QVERIFY(OdDbFileWriter::fileImage(m_db) == before);
  m_db->redo();
  QVERIFY(OdDbFileWriter::fileImage(m_db) == after);
}

QTEST_MAIN(tst_Timeline)
#include "tst_timeline.moc"
