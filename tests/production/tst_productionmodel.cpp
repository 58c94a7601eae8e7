// The camera-cut table: what each column shows and edits, the summaries of
// the output settings, writes that happen only on a change, cuts a drawing
// may hold but the widgets refuse, and the cells' editors.
#include "kovProductionTestHost.h"

#include "production/kovAnimationProductionModel.h"
#include "production/kovAnimationProductionModelDelegate.h"
#include "production/kovEncodingSettingsWidget.h"

#include "Db/OdDbDatabaseReactor.h"
#include "Db/OdDbMemoryFiler.h"

#include <QAbstractItemModelTester>
#include <QComboBox>
#include <QSpinBox>
#include <QStyleOptionViewItem>
#include <QTableView>
#include <QtTest>

namespace {

// Counts the animation's closes after a write.
class WriteCounter : public OdDbDatabaseReactor {
public:
  int writes = 0;
  void objectModified(const OdDbDatabase*, const OdDbObject*) override { ++writes; }
};

kovDbAnimationPtr open(const OdDbObjectId& id, OdDb::OpenMode mode = OdDb::kForRead)
{
  return kovDbAnimation::cast(id.openObject(mode).get());
}

TestHost* host()
{
  return static_cast<TestHost*>(QCoreApplication::instance());
}

} // namespace

class tst_ProductionModel : public QObject {
  Q_OBJECT

private:
  OdDbObjectId m_id;
  std::unique_ptr<kovAnimationProductionModel> m_model;

  // A cut of the first camera track from 1000 to 3000 ms, changed by edit.
  void addCut(const std::function<void(kovCameraCut&)>& edit = nullptr)
  {
    kovDbAnimationPtr animation = open(m_id, OdDb::kForWrite);
    kovCameraCut cut;
    cut.name = QStringLiteral("Scene 1");
    cut.track = animation->editTracks().front();
    cut.startMs = 1000;
    cut.endMs = 3000;
    if (edit)
      edit(cut);
    animation->sceneCuts().append(cut);
  }

  void showCuts()
  {
    m_model->setAnimation(OdDbObjectId());
    m_model->setAnimation(m_id);
  }

private slots:
  void init()
  {
    m_id = host()->startDrawing();
    m_model = std::make_unique<kovAnimationProductionModel>();
  }

  void cleanup()
  {
    m_model.reset();
    host()->endDrawing();
  }

  void passesTheItemModelTesterThroughInsertsEditsAndRemovals()
  {
    addCut();
    QAbstractItemModelTester tester(m_model.get(), QAbstractItemModelTester::FailureReportingMode::QtTest);
    m_model->setAnimation(m_id);
    QCOMPARE(m_model->rowCount(), 1);
    QCOMPARE(m_model->headerData(3, Qt::Horizontal).toString(), QStringLiteral("Settings"));
    open(m_id, OdDb::kForWrite)->setSelectedTrackIndex(1);
    QVERIFY(m_model->insertRows(0, 2));
    m_model->setData(m_model->index(2, 1), 1200);
    QVERIFY(m_model->removeRows(1, 2));
    QCOMPARE(m_model->rowCount(), 1);
    QCOMPARE(m_model->index(0, 0).data().toString(), QStringLiteral("Camera Track 1"));
    QVERIFY(!(m_model->flags(QModelIndex()) & Qt::ItemIsEditable));
    QVERIFY(m_model->flags(m_model->index(0, 2)) & Qt::ItemIsEditable);
  }

  void newCutsFilmTheSelectedCameraTrackOverItsKeyframes_data()
  {
    QTest::addColumn<int>("selected");
    QTest::addColumn<bool>("added");
    QTest::newRow("camera") << 1 << true;
    QTest::newRow("environment") << 2 << false;
    QTest::newRow("none") << -1 << false;
  }

  void newCutsFilmTheSelectedCameraTrackOverItsKeyframes()
  {
    QFETCH(int, selected);
    QFETCH(bool, added);
    addCut();
    showCuts();
    open(m_id, OdDb::kForWrite)->setSelectedTrackIndex(selected);
    QCOMPARE(m_model->insertRows(1, 1), added);
    QCOMPARE(m_model->rowCount(), added ? 2 : 1);
    if (!added)
      return;
    const kovDbAnimationPtr animation = open(m_id);
    const kovCameraCut& cut = std::as_const(*animation).sceneCuts().at(1);
    QCOMPARE(cut.track.get(), animation->constTracks().at(1).get());
    QCOMPARE(cut.startMs, 500);
    QCOMPARE(cut.endMs, 4500);
    QCOMPARE(cut.name, QStringLiteral("Scene 2"));
  }

  void timesShowAsSeconds_data()
  {
    QTest::addColumn<int>("ms");
    QTest::addColumn<QString>("shown");
    QTest::newRow("fraction") << 1500 << "1.5s";
    QTest::newRow("zero") << 0 << "0s";
    QTest::newRow("six digits") << 123456789 << "123457s";
  }

  void timesShowAsSeconds()
  {
    QFETCH(int, ms);
    QFETCH(QString, shown);
    addCut([ms](kovCameraCut& cut) { cut.startMs = ms; });
    showCuts();
    QCOMPARE(m_model->index(0, 1).data().toString(), shown);
    QCOMPARE(m_model->index(0, 1).data(Qt::EditRole).toInt(), ms);
  }

  void settingsSummaryByOutputFormat_data()
  {
    QTest::addColumn<int>("format");
    QTest::addColumn<double>("rate");
    QTest::addColumn<int>("quality");
    QTest::addColumn<QString>("summary");
    QTest::newRow("still") << 1 << 24.0 << 1 << "1920x1080 Png Medium Quality";
    QTest::newRow("sequence") << 9 << 24.0 << 1 << "1920x1080 Png Sequence 24fps Medium Quality";
    QTest::newRow("clip") << 4 << 23.976 << 3 << "1920x1080 Mp4 23.976fps H265 Extreme Quality";
    QTest::newRow("outside the lists") << 42 << 30.0 << -1 << "1920x1080  30fps H265  Quality";
  }

  void settingsSummaryByOutputFormat()
  {
    QFETCH(int, format);
    QFETCH(double, rate);
    QFETCH(int, quality);
    QFETCH(QString, summary);
    addCut([=](kovCameraCut& cut) {
      cut.outputFormat = static_cast<kovOutputFormat>(format);
      cut.frameRate = rate;
      cut.quality = static_cast<kovQuality>(quality);
    });
    showCuts();
    QCOMPARE(m_model->index(0, 3).data().toString(), summary);
  }

  void setDataWritesOnlyChangesAndAlwaysSaysFalse_data()
  {
    QTest::addColumn<int>("column");
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<int>("writes");
    QTest::addColumn<QString>("shown");
    QTest::newRow("same start") << 1 << QVariant(1000) << 0 << "1s";
    QTest::newRow("new start") << 1 << QVariant(1500) << 1 << "1.5s";
    QTest::newRow("new end") << 2 << QVariant(2500) << 1 << "2.5s";
    QTest::newRow("same camera") << 0 << QVariant(0) << 0 << "Camera Track";
    QTest::newRow("other camera") << 0 << QVariant(1) << 1 << "Camera Track 1";
    QTest::newRow("track of no animation") << 0 << QVariant(-1) << 0 << "Camera Track";
  }

  void setDataWritesOnlyChangesAndAlwaysSaysFalse()
  {
    QFETCH(int, column);
    QFETCH(QVariant, value);
    QFETCH(int, writes);
    QFETCH(QString, shown);
    addCut();
    showCuts();
    if (column == 0) {
      const int track = value.toInt();
      value = QVariant::fromValue(track < 0 ? kovAnimationTrackPtr(new kovAnimationTrack)
                                            : open(m_id)->constTracks().at(static_cast<size_t>(track)));
    }
    WriteCounter counter;
    host()->db->addReactor(&counter);
    QVERIFY(!m_model->setData(m_model->index(0, column), value));
    host()->db->removeReactor(&counter);
    QCOMPARE(counter.writes, writes);
    QCOMPARE(m_model->index(0, column).data().toString(), shown);
  }

  void rowsPastTheCutsAreEmptyAndIgnoreEdits()
  {
    addCut();
    addCut();
    showCuts();
    const QModelIndex second = m_model->index(1, 1);
    // The cut goes behind the table's back, as a command of the host may do.
    open(m_id, OdDb::kForWrite)->sceneCuts().removeLast();
    for (int role : { Qt::DisplayRole, Qt::EditRole, Qt::ToolTipRole })
      QVERIFY(!second.data(role).isValid());
    WriteCounter counter;
    host()->db->addReactor(&counter);
    QVERIFY(!m_model->setData(second, 5));
    host()->db->removeReactor(&counter);
    QCOMPARE(counter.writes, 0);
  }

  void aFiledCutTheWidgetsWouldRefuseOpensMarked_data()
  {
    QTest::addColumn<int>("endMs");
    QTest::addColumn<double>("rate");
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("markedColumn");
    QTest::newRow("fine") << 3000 << 24.0 << 1920 << -1;
    QTest::newRow("end before start") << 999 << 24.0 << 1920 << 2;
    QTest::newRow("no frame rate") << 3000 << 0.0 << 1920 << 3;
    QTest::newRow("no width") << 3000 << 24.0 << 0 << 3;
    QTest::newRow("too wide") << 3000 << 24.0 << 16385 << 3;
  }

  void aFiledCutTheWidgetsWouldRefuseOpensMarked()
  {
    QFETCH(int, endMs);
    QFETCH(double, rate);
    QFETCH(int, width);
    QFETCH(int, markedColumn);
    addCut([=](kovCameraCut& cut) {
      cut.endMs = endMs;
      cut.frameRate = rate;
      cut.imageWidth = width;
    });
    OdDbMemoryFiler filer(host()->db.get());
    open(m_id)->dwgOutFields(&filer);
    filer.rewind();
    kovDbAnimationPtr read = kovDbAnimation::createObject();
    QCOMPARE(read->dwgInFields(&filer), eOk);
    OdDbBlockTableRecordPtr space = host()->db->getModelSpaceId().safeOpenObject(OdDb::kForWrite);
    m_model->setAnimation(space->appendOdDbEntity(read.get()));
    read = nullptr;
    space = nullptr;

    QCOMPARE(m_model->rowCount(), 1);
    for (int column = 0; column < 4; ++column) {
      const bool marked = !m_model->index(0, column).data(Qt::DecorationRole).value<QIcon>().isNull();
      QCOMPARE(marked, column == markedColumn);
    }
  }

  void delegateOffersCameraTracksAndRefusesAnEndBeforeTheStart()
  {
    addCut();
    showCuts();
    QTableView view;
    view.setModel(m_model.get());
    kovAnimationProductionModelDelegate delegate;
    const QStyleOptionViewItem option;

    std::unique_ptr<QWidget> editor(delegate.createEditor(view.viewport(), option, m_model->index(0, 0)));
    auto* tracks = qobject_cast<QComboBox*>(editor.get());
    QCOMPARE(tracks->count(), 2);
    delegate.setEditorData(tracks, m_model->index(0, 0));
    QCOMPARE(tracks->currentText(), QStringLiteral("Camera Track"));
    tracks->setCurrentIndex(1);
    delegate.setModelData(tracks, m_model.get(), m_model->index(0, 0));
    QCOMPARE(m_model->index(0, 0).data().toString(), QStringLiteral("Camera Track 1"));

    editor.reset(delegate.createEditor(view.viewport(), option, m_model->index(0, 2)));
    auto* ms = qobject_cast<QSpinBox*>(editor.get());
    QCOMPARE(ms->maximum(), 9999999);
    ms->setValue(999);
    const QString told = messageDuring([&] { delegate.setModelData(ms, m_model.get(), m_model->index(0, 2)); });
    QCOMPARE(told, QStringLiteral("The end time of a camera cut must not be before its start time."));
    QCOMPARE(m_model->index(0, 2).data(Qt::EditRole).toInt(), 3000);
  }

  void settingsWindowOpensUpAndLeftOfThePointerByItsHeight()
  {
    addCut();
    showCuts();
    QTableView view;
    view.setModel(m_model.get());
    kovAnimationProductionModelDelegate delegate;
    std::unique_ptr<QWidget> editor(delegate.createEditor(view.viewport(), QStyleOptionViewItem(), m_model->index(0, 3)));
    QVERIFY(qobject_cast<kovEncodingSettingsWidget*>(editor.get()));
    QCursor::setPos(900, 700);
    delegate.updateEditorGeometry(editor.get(), QStyleOptionViewItem(), m_model->index(0, 3));
    const int height = editor->height();
    QVERIFY(height > 100);
    QCOMPARE(editor->pos(), QCursor::pos() - QPoint(height, height));
  }
};

int main(int argc, char** argv)
{
  TestHost app(argc, argv);
  tst_ProductionModel test;
  return QTest::qExec(&test, argc, argv);
}

#include "moc_kovProductionTestHost.cpp"
#include "tst_productionmodel.moc"
