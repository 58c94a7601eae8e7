// The animation editor driven as a user drives it: its buttons clicked, its
// questions and dialogs answered, against a host that runs the new-animation
// command line as the module would.
#include "db/kovDbAnimation.h"
#include "db/kovDbTempBlockReference.h"
#include "db/kovEditingState.h"
#include "editor/kovAnimationEditorWidget.h"
#include "editor/kovAnimationModel.h"
#include "editor/kovAnimationNameDialog.h"
#include "host/api/IkovApplication.h"

#include "Db/OdDbBlockTableRecord.h"
#include "Db/OdDbDatabase.h"
#include "Db/OdDbModule.h"
#include "kovAnimationTestValues.h"
#include "kovTestHostDefaults.h"

#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QStandardItemModel>
#include <QTableView>
#include <QTimer>
#include <QtTest>

#include <functional>

// A host whose command line makes the animation the camera command makes:
// "New Camera Animation" with one camera track, now the editing one.
class TestHost : public QApplication, public kovTestHostDefaults {
  Q_OBJECT
  Q_INTERFACES(IkovApplication)
public:
  TestHost(int& argc, char** argv) : QApplication(argc, argv) {}

  bool executeCommand(const QString& line) override
  {
    commands << line;
    OdDbObjectId id = addAnimation(db, QStringLiteral("New Camera Animation"), { QStringLiteral("Camera") });
    kovEditingState::setEditingAnimation(id);
    return true;
  }
  OdDbDatabase* currentDatabase() const override { return db; }

  // An animation with a track per unique name ("Camera", "Environment"...).
  static OdDbObjectId addAnimation(OdDbDatabase* db, const QString& name, const QStringList& tracks)
  {
    kovDbAnimationPtr animation = kovDbAnimation::createObject();
    animation->setDatabaseDefaults(db);
    animation->setName(name);
    animation->setDescription(name);
    for (const QString& subject : tracks) {
      kovAnimationTrackPtr track(new kovAnimationTrack);
      track->setName(subject + QStringLiteral(" Track"));
      track->setEntityUniqueName(db, subject);
      addItem(*track, kovAnimationItem::LocationByPoints, { { 0, pointValue(0, 0, 2) }, { 4000, pointValue(8, 0, 2) } });
      animation->editTracks().push_back(track);
    }
    OdDbBlockTableRecordPtr space = db->getModelSpaceId().safeOpenObject(OdDb::kForWrite);
    return space->appendOdDbEntity(animation.get());
  }

  OdDbDatabase* db = nullptr;
  QStringList commands;
};

namespace {

TestHost* host()
{
  return static_cast<TestHost*>(QCoreApplication::instance());
}

QPushButton* button(QWidget* editor, const char* toolTip)
{
  for (QPushButton* b : editor->findChildren<QPushButton*>()) {
    if (b->toolTip() == QString::fromUtf8(toolTip))
      return b;
  }
  return nullptr;
}

// Answers the modal windows that come up, in order, one step each.
void answerModals(QList<std::function<bool(QWidget*)>> steps, int attemptsLeft = 600)
{
  QTimer::singleShot(10, [steps, attemptsLeft]() mutable {
    QWidget* modal = QApplication::activeModalWidget();
    if (modal && !steps.isEmpty() && steps.first()(modal))
      steps.removeFirst();
    if (!steps.isEmpty() && attemptsLeft > 0)
      answerModals(steps, attemptsLeft - 1);
  });
}

std::function<bool(QWidget*)> question(QMessageBox::StandardButton answer, QString* seen = nullptr)
{
  return [answer, seen](QWidget* modal) {
    auto* box = qobject_cast<QMessageBox*>(modal);
    if (!box)
      return false;
    if (seen)
      *seen = box->windowTitle() + QLatin1Char('|') + box->text();
    box->button(answer)->click();
    return true;
  };
}

std::function<bool(QWidget*)> nameDialog(const QString& name, bool accept)
{
  return [name, accept](QWidget* modal) {
    auto* dialog = qobject_cast<kovAnimationNameDialog*>(modal);
    if (!dialog)
      return false;
    dialog->findChild<QLineEdit*>(QStringLiteral("Name"))->setText(name);
    accept ? dialog->accept() : dialog->reject();
    return true;
  };
}

kovDbAnimationPtr open(const OdDbObjectId& id)
{
  return kovDbAnimation::cast(id.openObject(OdDb::kForRead).get());
}

} // namespace

class tst_EditorWidget : public QObject {
  Q_OBJECT

private:
  OdDbDatabasePtr m_db;
  std::unique_ptr<kovAnimationEditorWidget> m_editor;

  // A cut from 1000 to 3000 ms of the animation's first track.
  void addCut(const OdDbObjectId& id, double frameRate)
  {
    kovDbAnimationPtr animation = kovDbAnimation::cast(id.openObject(OdDb::kForWrite).get());
    kovCameraCut cut;
    cut.name = QStringLiteral("Cut");
    cut.track = animation->editTracks().front();
    cut.startMs = 1000;
    cut.endMs = 3000;
    cut.frameRate = frameRate;
    animation->sceneCuts().append(cut);
  }

private slots:
  void init()
  {
    odInitialize();
    kovDbTempBlockReference::rxInit();
    kovDbAnimation::rxInit();
    m_db = OdDbDatabase::createObject();
    host()->db = m_db.get();
    host()->commands.clear();
    kovEditingState::setEditingAnimation(OdDbObjectId());
    kovEditingState::isPlaying() = false;
    m_editor = std::make_unique<kovAnimationEditorWidget>();
    m_editor->resize(900, 400);
    m_editor->show();
  }

  void cleanup()
  {
    m_editor.reset();
    host()->db = nullptr;
    m_db = nullptr;
    kovDbAnimation::rxUninit();
    kovDbTempBlockReference::rxUninit();
    odUninitialize();
  }

  void createAsksToCopyOnlyTracksThereAre_data()
  {
    QTest::addColumn<QStringList>("shownTracks");
    QTest::addColumn<int>("copyAnswer");
    QTest::addColumn<bool>("nameAccepted");
    QTest::addColumn<QStringList>("newTracks");
    QTest::addColumn<QString>("newName");
    const QStringList none;
    QTest::newRow("nothing shown") << QStringList { QStringLiteral("-") } << 0 << true
                                   << QStringList { QStringLiteral("Camera Track") } << "Flight";
    QTest::newRow("shown without tracks") << none << 0 << true << QStringList { QStringLiteral("Camera Track") }
                                          << "Flight";
    QTest::newRow("copy accepted") << QStringList { QStringLiteral("Environment") } << int(QMessageBox::Yes) << true
                                   << QStringList { QStringLiteral("Environment Track") } << "Flight";
    QTest::newRow("copy declined") << QStringList { QStringLiteral("Environment") } << int(QMessageBox::No) << true
                                   << QStringList { QStringLiteral("Camera Track") } << "Flight";
    QTest::newRow("name cancelled") << none << 0 << false << QStringList { QStringLiteral("Camera Track") }
                                    << "New Camera Animation";
  }

  void createAsksToCopyOnlyTracksThereAre()
  {
    QFETCH(QStringList, shownTracks);
    QFETCH(int, copyAnswer);
    QFETCH(bool, nameAccepted);
    QFETCH(QStringList, newTracks);
    QFETCH(QString, newName);
    if (shownTracks != QStringList { QStringLiteral("-") })
      m_editor->selectAnimation(TestHost::addAnimation(m_db.get(), QStringLiteral("Shown"), shownTracks));

    QString asked;
    QList<std::function<bool(QWidget*)>> steps;
    if (copyAnswer)
      steps << question(QMessageBox::StandardButton(copyAnswer), &asked);
    steps << nameDialog(QStringLiteral("Flight"), nameAccepted);
    answerModals(steps);
    button(m_editor.get(), "Create New Animation")->click();
    QCOMPARE(host()->commands, QStringList { QStringLiteral("createcameraanimation 10,0,1.8 20,10,1.8 30,0,1.8 Finish") });
    QTRY_VERIFY_WITH_TIMEOUT(!m_editor->animationId().isNull(), 3000);
    QTRY_VERIFY_WITH_TIMEOUT(!QApplication::activeModalWidget(), 3000);
    QCOMPARE(asked, copyAnswer ? QStringLiteral("Copy Animation Tracks?|Do you want to copy the current animation "
                                                "tracks on the new animation?")
                               : QString());

    const kovDbAnimationPtr created = open(m_editor->animationId());
    QCOMPARE(created->animationName(), newName);
    QStringList names;
    for (const kovAnimationTrackPtr& track : created->constTracks())
      names << track->trackName();
    QCOMPARE(names, newTracks);
    auto* combo = m_editor->findChild<QComboBox*>(QStringLiteral("Animations"));
    QCOMPARE(combo->currentText(), newName);
    QCOMPARE(combo->itemText(0), QStringLiteral("None"));
  }

  void removeAsksFirst_data()
  {
    QTest::addColumn<int>("answer");
    QTest::addColumn<int>("animationsLeft");
    QTest::newRow("yes") << int(QMessageBox::Yes) << 1;
    QTest::newRow("no") << int(QMessageBox::No) << 2;
  }

  void removeAsksFirst()
  {
    QFETCH(int, answer);
    QFETCH(int, animationsLeft);
    const OdDbObjectId kept = TestHost::addAnimation(m_db.get(), QStringLiteral("Kept"), { QStringLiteral("Camera") });
    const OdDbObjectId shown = TestHost::addAnimation(m_db.get(), QStringLiteral("Doomed"), { QStringLiteral("Camera") });
    m_editor->refresh(QStringLiteral("<event-refresh:database_changed>"), QString());
    m_editor->selectAnimation(shown);
    QString asked;
    answerModals({ question(QMessageBox::StandardButton(answer), &asked) });
    button(m_editor.get(), "Remove Current Animation")->click();
    QCOMPARE(asked, QStringLiteral("Remove Confirmation|Do you really want to remove Doomed"));
    auto* combo = m_editor->findChild<QComboBox*>(QStringLiteral("Animations"));
    QCOMPARE(combo->count() - 1, animationsLeft);
    QCOMPARE(m_editor->animationId(), animationsLeft == 1 ? kept : shown);
  }

  void stopRewindsAndPlayRunsTheCutAtItsFrameRate()
  {
    const OdDbObjectId id = TestHost::addAnimation(m_db.get(), QStringLiteral("A"), { QStringLiteral("Camera") });
    addCut(id, 25.0);
    m_editor->selectAnimation(id);
    QStandardItemModel cuts(1, 4);
    m_editor->setCutModel(&cuts);
    QPushButton* stop = button(m_editor.get(), "Stop Camera Cut Preview");
    QPushButton* play = button(m_editor.get(), "Play/Pause Camera Cut Preview");

    m_editor->setCurrentPosition(1234);
    m_editor->cutTable()->setCurrentIndex(cuts.index(0, 0));
    stop->setEnabled(true);
    stop->click();
    QCOMPARE(m_editor->currentPosition(), 0);
    QCOMPARE(open(id)->currentPositionMs(), 0);

    // Before the cut: playing starts where the position is; past its end:
    // from the cut's start.
    for (const auto& run : { std::make_pair(0, 0), std::make_pair(3500, 1000) }) {
      m_editor->setCurrentPosition(run.first);
      play->click();
      QVERIFY(kovEditingState::isPlaying());
      QCOMPARE(m_editor->playbackTimer()->interval(), 40);
      QVERIFY(m_editor->playbackTimer()->isActive());
      QCOMPARE(m_editor->currentPosition(), run.second);
      QCOMPARE(open(id)->selectedSceneCutIndex(), 0);
      play->click();
      QVERIFY(!kovEditingState::isPlaying());
      QVERIFY(!m_editor->playbackTimer()->isActive());
    }
  }

  void previewAdvancesByTheClockAndStopsAtTheCutsEnd()
  {
    const OdDbObjectId id = TestHost::addAnimation(m_db.get(), QStringLiteral("A"), { QStringLiteral("Camera") });
    addCut(id, 24.0);
    m_editor->selectAnimation(id);
    QStandardItemModel cuts(1, 4);
    m_editor->setCutModel(&cuts);
    m_editor->cutTable()->setCurrentIndex(cuts.index(0, 0));
    m_editor->setCurrentPosition(1000);
    button(m_editor.get(), "Play/Pause Camera Cut Preview")->click();
    QTimer* timer = m_editor->playbackTimer();
    timer->stop();
    timer->setProperty("LastFrameTime", QDateTime::currentDateTime().addMSecs(-500));
    m_editor->onPlaybackTimer();
    QVERIFY2(m_editor->currentPosition() >= 1500 && m_editor->currentPosition() < 1700,
             qPrintable(QString::number(m_editor->currentPosition())));
    timer->setProperty("LastFrameTime", QDateTime::currentDateTime().addMSecs(-5000));
    m_editor->onPlaybackTimer();
    QCOMPARE(m_editor->currentPosition(), 3000);
    QVERIFY(!kovEditingState::isPlaying());
  }

  void previousAndNextStopAtTheEndsOfTheCutList_data()
  {
    QTest::addColumn<int>("row");
    QTest::addColumn<bool>("previous");
    QTest::addColumn<bool>("next");
    QTest::newRow("first") << 0 << false << true;
    QTest::newRow("middle") << 1 << true << true;
    QTest::newRow("last") << 2 << true << false;
  }

  void previousAndNextStopAtTheEndsOfTheCutList()
  {
    QFETCH(int, row);
    QFETCH(bool, previous);
    QFETCH(bool, next);
    m_editor->selectAnimation(TestHost::addAnimation(m_db.get(), QStringLiteral("A"), { QStringLiteral("Camera") }));
    QStandardItemModel cuts(3, 4);
    m_editor->setCutModel(&cuts);
    m_editor->cutTable()->setCurrentIndex(cuts.index(row, 1));
    QCOMPARE(button(m_editor.get(), "Previous Camera Cut")->isEnabled(), previous);
    QCOMPARE(button(m_editor.get(), "Next Camera Cut")->isEnabled(), next);
    if (next) {
      button(m_editor.get(), "Next Camera Cut")->click();
      QCOMPARE(m_editor->cutTable()->currentIndex(), cuts.index(row + 1, 1));
    }
  }

  void eachDrawingKeepsItsAnimationAndClosingEmptiesTheEditor()
  {
    const OdDbObjectId first = TestHost::addAnimation(m_db.get(), QStringLiteral("First"), { QStringLiteral("Camera") });
    m_editor->selectAnimation(first);
    OdDbDatabasePtr other = OdDbDatabase::createObject();
    const OdDbObjectId second = TestHost::addAnimation(other.get(), QStringLiteral("Second"), { QStringLiteral("Camera") });
    auto* combo = m_editor->findChild<QComboBox*>(QStringLiteral("Animations"));

    host()->db = other.get();
    m_editor->refresh(QStringLiteral("<event-refresh:database_changed>"), QString());
    QCOMPARE(m_editor->animationId(), OdDbObjectId());
    combo->setCurrentIndex(combo->findText(QStringLiteral("Second")));
    QCOMPARE(m_editor->animationId(), second);

    host()->db = m_db.get();
    m_editor->refresh(QStringLiteral("<event-refresh:database_changed>"), QString());
    QCOMPARE(m_editor->animationId(), first);
    QCOMPARE(combo->currentText(), QStringLiteral("First"));

    // A command makes another animation the editing one: the editor follows.
    const OdDbObjectId made = TestHost::addAnimation(m_db.get(), QStringLiteral("Made"), { QStringLiteral("Camera") });
    kovEditingState::setEditingAnimation(made);
    m_editor->refresh(QStringLiteral("<event-refresh:database_changed>"), QString());
    QCOMPARE(m_editor->animationId(), made);
    QCOMPARE(combo->currentText(), QStringLiteral("Made"));

    m_editor->refresh(QStringLiteral("<event-refresh:database_closed>"), QString());
    QCOMPARE(m_editor->animationId(), OdDbObjectId());
    QCOMPARE(combo->count(), 0);
    QCOMPARE(m_editor->model()->rowCount(), 0);
    host()->db = nullptr;
    other = nullptr;
  }
};

int main(int argc, char** argv)
{
  TestHost app(argc, argv);
  tst_EditorWidget test;
  return QTest::qExec(&test, argc, argv);
}

#include "tst_editorwidget.moc"
