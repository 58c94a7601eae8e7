// Production as the user meets it: the camera-cut table with its summaries,
// its writes only on a change and its marks on cuts the widgets would refuse;
// the cells' editors; the output settings window; the confirmation; and all
// of it in the editor, from adding a cut to confirming its production.
#include "db/kovDbTempBlockReference.h"
#include "db/kovEditingState.h"
#include "editor/kovAnimationEditorWidget.h"
#include "editor/kovAnimationModel.h"
#include "editor/kovAnimationTreeView.h"
#include "production/kovAnimationProductionModel.h"
#include "production/kovAnimationProductionModelDelegate.h"
#include "production/kovConfirmStartProductionWidget.h"
#include "production/kovEncodingSettingsWidget.h"
#include "production/kovProductionPanel.h"

#include "Db/OdDbBlockTableRecord.h"
#include "Db/OdDbDatabase.h"
#include "Db/OdDbDatabaseReactor.h"
#include "Db/OdDbMemoryFiler.h"
#include "Db/OdDbModule.h"
#include "kovAnimationTestValues.h"
#include "kovTestHostDefaults.h"

#include <QAbstractItemModelTester>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QDoubleSpinBox>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QSpinBox>
#include <QTableView>
#include <QtTest>

// Settings in memory and path variables expanded to fixed folders.
class TestHost : public QApplication, public kovTestHostDefaults {
  Q_OBJECT
  Q_INTERFACES(IkovApplication)
public:
  TestHost(int& argc, char** argv) : QApplication(argc, argv) {}

  QVariant setting(const QString& key, const QVariant& def) const override { return settings.value(key, def); }
  void setSetting(const QString& key, const QVariant& value) override { settings.insert(key, value); }
  QString expandPath(const QString& path) const override
  {
    return QString(path).replace(QStringLiteral("{Video}"), QStringLiteral("/home/u/Videos"));
  }
  OdDbDatabase* currentDatabase() const override { return db.get(); }

  OdDbDatabasePtr db;
  QVariantMap settings;
};

namespace {

TestHost* host()
{
  return static_cast<TestHost*>(QCoreApplication::instance());
}

kovDbAnimationPtr open(const OdDbObjectId& id, OdDb::OpenMode mode = OdDb::kForRead)
{
  return kovDbAnimation::cast(id.openObject(mode).get());
}

// Counts the closes after a write.
class WriteCounter : public OdDbDatabaseReactor {
public:
  int writes = 0;
  void objectModified(const OdDbDatabase*, const OdDbObject*) override { ++writes; }
};

template <class T = QWidget>
T* child(QWidget* parent, const char* name)
{
  T* found = parent->findChild<T*>(QLatin1String(name));
  if (!found)
    qFatal("no child %s", name);
  return found;
}

QPushButton* button(QWidget* parent, const QString& textOrToolTip)
{
  for (QPushButton* b : parent->findChildren<QPushButton*>()) {
    if (b->text() == textOrToolTip || b->toolTip() == textOrToolTip)
      return b;
  }
  if (auto* box = parent->findChild<QDialogButtonBox*>(); box && textOrToolTip == QLatin1String("OK"))
    return box->button(QDialogButtonBox::Ok);
  qFatal("no button %s", qPrintable(textOrToolTip));
}

QStringList itemsOf(const QComboBox* combo)
{
  QStringList items;
  for (int row = 0; row < combo->count(); ++row)
    items << combo->itemText(row);
  return items;
}

// The text of the message box that comes up while action runs (closed at
// once), or empty when none does.
QString messageDuring(const std::function<void()>& action)
{
  QString text;
  QTimer poll;
  QObject::connect(&poll, &QTimer::timeout, [&text] {
    if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
      text = box->text();
      box->close();
    }
  });
  poll.start(10);
  action();
  QTest::qWait(50);
  return text;
}

const QString kEndBeforeStart = QStringLiteral("The end time of a camera cut must not be before its start time.");

} // namespace

class tst_Production : public QObject {
  Q_OBJECT

private:
  OdDbObjectId m_id;
  std::unique_ptr<kovAnimationProductionModel> m_model;

  // A cut of the first camera track from 1000 to 3000 ms, changed by edit;
  // the table shows it.
  kovCameraCut addCut(const std::function<void(kovCameraCut&)>& edit = nullptr)
  {
    kovCameraCut cut;
    cut.name = QStringLiteral("Scene 1");
    cut.track = open(m_id)->constTracks().front();
    cut.startMs = 1000;
    cut.endMs = 3000;
    if (edit)
      edit(cut);
    open(m_id, OdDb::kForWrite)->sceneCuts().append(cut);
    m_model->setAnimation(m_id);
    return cut;
  }

private slots:
  // Two camera tracks and an environment track, keyed from 500 to 4500 ms.
  void init()
  {
    odInitialize();
    kovDbTempBlockReference::rxInit();
    kovDbAnimation::rxInit();
    host()->settings.clear();
    host()->db = OdDbDatabase::createObject();
    kovDbAnimationPtr animation = kovDbAnimation::createObject();
    animation->setDatabaseDefaults(host()->db.get());
    for (const char* subject : { "Camera", "Camera", "Environment" }) {
      kovAnimationTrackPtr track(new kovAnimationTrack);
      track->setName(QLatin1String(subject) + QStringLiteral(" Track"));
      track->setEntityUniqueName(host()->db.get(), QLatin1String(subject));
      track->setStartMillisecond(500);
      addItem(*track, kovAnimationItem::LocationByPoints,
              { { 0, pointValue(0, 0, 2) }, { 4000, pointValue(8, 0, 2) } });
      animation->editTracks().push_back(track);
      animation->makeTrackNameUnique(track.get());
    }
    OdDbBlockTableRecordPtr space = host()->db->getModelSpaceId().safeOpenObject(OdDb::kForWrite);
    m_id = space->appendOdDbEntity(animation.get());
    m_model = std::make_unique<kovAnimationProductionModel>();
  }

  void cleanup()
  {
    m_model.reset();
    host()->db = nullptr;
    kovDbAnimation::rxUninit();
    kovDbTempBlockReference::rxUninit();
    odUninitialize();
  }

  void tablePassesTheItemModelTesterThroughInsertsEditsAndRemovals()
  {
    QAbstractItemModelTester tester(m_model.get(), QAbstractItemModelTester::FailureReportingMode::QtTest);
    addCut();
    open(m_id, OdDb::kForWrite)->setSelectedTrackIndex(1);
    QVERIFY(m_model->insertRows(0, 2));
    m_model->setData(m_model->index(2, 1), 1200);
    QVERIFY(m_model->removeRows(1, 2));
    QCOMPARE(m_model->index(0, 0).data().toString(), QStringLiteral("Camera Track 1"));
    QVERIFY(!(m_model->flags(QModelIndex()) & Qt::ItemIsEditable));
    QVERIFY(m_model->flags(m_model->index(0, 2)) & Qt::ItemIsEditable);
  }

  void newCutsFilmTheSelectedCameraTrackOverItsKeyframes()
  {
    addCut();
    open(m_id, OdDb::kForWrite)->setSelectedTrackIndex(1);
    QVERIFY(m_model->insertRows(1, 1));
    const kovCameraCut cut = std::as_const(*open(m_id)).sceneCuts().at(1);
    QCOMPARE(cut.track.get(), open(m_id)->constTracks().at(1).get());
    QCOMPARE(std::make_pair(cut.startMs, cut.endMs), std::make_pair(500, 4500));
    QCOMPARE(cut.name, QStringLiteral("Scene 2"));
    for (int notCamera : { 2, -1 }) {
      open(m_id, OdDb::kForWrite)->setSelectedTrackIndex(notCamera);
      QVERIFY(!m_model->insertRows(0, 1));
    }
    QCOMPARE(m_model->rowCount(), 2);
  }

  void cellsShowTimesAndSettingsSummaries_data()
  {
    QTest::addColumn<int>("startMs");
    QTest::addColumn<int>("format");
    QTest::addColumn<double>("rate");
    QTest::addColumn<int>("quality");
    QTest::addColumn<QString>("start");
    QTest::addColumn<QString>("summary");
    QTest::newRow("still") << 1500 << 1 << 24.0 << 1 << "1.5s" << "1920x1080 Png Medium Quality";
    QTest::newRow("sequence") << 0 << 9 << 24.0 << 1 << "0s" << "1920x1080 Png Sequence 24fps Medium Quality";
    QTest::newRow("clip") << 123456789 << 4 << 23.976 << 3 << "123457s"
                          << "1920x1080 Mp4 23.976fps H265 Extreme Quality";
    QTest::newRow("outside the lists") << 0 << 42 << 30.0 << -1 << "0s" << "1920x1080  30fps H265  Quality";
  }

  void cellsShowTimesAndSettingsSummaries()
  {
    QFETCH(int, startMs);
    QFETCH(int, format);
    QFETCH(double, rate);
    QFETCH(int, quality);
    QFETCH(QString, start);
    QFETCH(QString, summary);
    addCut([=](kovCameraCut& cut) {
      cut.startMs = startMs;
      cut.outputFormat = static_cast<kovOutputFormat>(format);
      cut.frameRate = rate;
      cut.quality = static_cast<kovQuality>(quality);
    });
    QCOMPARE(m_model->index(0, 1).data().toString(), start);
    QCOMPARE(m_model->index(0, 1).data(Qt::EditRole).toInt(), startMs);
    QCOMPARE(m_model->index(0, 3).data().toString(), summary);
  }

  void setDataWritesOnlyChangesAndAlwaysSaysFalse_data()
  {
    QTest::addColumn<int>("column");
    QTest::addColumn<int>("value");
    QTest::addColumn<int>("writes");
    QTest::addColumn<QString>("shown");
    QTest::newRow("same start") << 1 << 1000 << 0 << "1s";
    QTest::newRow("new start") << 1 << 1500 << 1 << "1.5s";
    QTest::newRow("new end") << 2 << 2500 << 1 << "2.5s";
    QTest::newRow("same camera") << 0 << 0 << 0 << "Camera Track";
    QTest::newRow("other camera") << 0 << 1 << 1 << "Camera Track 1";
    QTest::newRow("track of no animation") << 0 << -1 << 0 << "Camera Track";
  }

  void setDataWritesOnlyChangesAndAlwaysSaysFalse()
  {
    QFETCH(int, column);
    QFETCH(int, value);
    QFETCH(int, writes);
    QFETCH(QString, shown);
    addCut();
    QVariant edit = value;
    if (column == 0)
      edit = QVariant::fromValue(value < 0 ? kovAnimationTrackPtr(new kovAnimationTrack)
                                           : open(m_id)->constTracks().at(static_cast<size_t>(value)));
    WriteCounter counter;
    host()->db->addReactor(&counter);
    QVERIFY(!m_model->setData(m_model->index(0, column), edit));
    host()->db->removeReactor(&counter);
    QCOMPARE(counter.writes, writes);
    QCOMPARE(m_model->index(0, column).data().toString(), shown);
  }

  void rowsPastTheCutsAreEmptyAndIgnoreEdits()
  {
    addCut();
    addCut();
    const QModelIndex second = m_model->index(1, 1);
    // The cut goes behind the table's back.
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
    for (int column = 0; column < 4; ++column)
      QCOMPARE(!m_model->index(0, column).data(Qt::DecorationRole).value<QIcon>().isNull(), column == markedColumn);
  }

  void cellEditorsOfferCameraTracksAndRefuseAnEndBeforeTheStart()
  {
    addCut();
    QTableView view;
    view.setModel(m_model.get());
    kovAnimationProductionModelDelegate delegate;
    const QStyleOptionViewItem option;
    std::unique_ptr<QWidget> editor(delegate.createEditor(view.viewport(), option, m_model->index(0, 0)));
    auto* tracks = qobject_cast<QComboBox*>(editor.get());
    QCOMPARE(itemsOf(tracks), strs({ "Camera Track", "Camera Track 1" }));
    delegate.setEditorData(tracks, m_model->index(0, 0));
    QCOMPARE(tracks->currentIndex(), 0);

    editor.reset(delegate.createEditor(view.viewport(), option, m_model->index(0, 2)));
    auto* ms = qobject_cast<QSpinBox*>(editor.get());
    QCOMPARE(ms->maximum(), 9999999);
    ms->setValue(999);
    QCOMPARE(messageDuring([&] { delegate.setModelData(ms, m_model.get(), m_model->index(0, 2)); }), kEndBeforeStart);
    QCOMPARE(m_model->index(0, 2).data(Qt::EditRole).toInt(), 3000);

    // A settings window committed as the current cell moves is checked too.
    editor.reset(delegate.createEditor(view.viewport(), option, m_model->index(0, 3)));
    delegate.setEditorData(editor.get(), m_model->index(0, 3));
    child<QComboBox>(editor.get(), "FrameRate")->setCurrentText(QStringLiteral("0"));
    QCOMPARE(messageDuring([&] { delegate.setModelData(editor.get(), m_model.get(), m_model->index(0, 3)); }),
             QStringLiteral("The frame rate must be above 0."));
    QCOMPARE(m_model->index(0, 3).data(Qt::EditRole).value<kovCameraCut>().frameRate, 24.0);

    // The settings window opens up and left of the pointer by its height.
    QCursor::setPos(900, 700);
    delegate.updateEditorGeometry(editor.get(), option, m_model->index(0, 3));
    const int height = editor->height();
    QVERIFY(height > 100);
    QCOMPARE(editor->pos(), QPoint(900 - height, 700 - height));
  }

  void outputTypeRefillsTheFormatsAndFormatsTheEncodings()
  {
    kovEncodingSettingsWidget settings;
    settings.setCut(addCut(), host()->db.get());
    auto* type = child<QComboBox>(&settings, "OutputType");
    auto* format = child<QComboBox>(&settings, "OutputFormat");
    auto* encoding = child<QComboBox>(&settings, "Encoding");
    const QStringList video = strs({ "Avi", "Mp4", "Flv", "Mov", "Mkv", "Jpeg Sequence", "Png Sequence" });
    QCOMPARE(itemsOf(format), video);
    QCOMPARE(encoding->currentText(), QStringLiteral("H265"));
    type->setCurrentIndex(kovEncodingSettingsWidget::Image);
    QCOMPARE(itemsOf(format), strs({ "Jpg", "Png", "Hdr" }));
    QVERIFY(!encoding->isEnabled());
    QVERIFY(!child(&settings, "FrameRate")->isEnabled());
    type->setCurrentIndex(kovEncodingSettingsWidget::Videoclip);
    QCOMPARE(itemsOf(format), video);
    QVERIFY(encoding->isEnabled());

    const QList<std::pair<const char*, QStringList>> offered {
      { "Avi", strs({ "H264", "H265", "Mjpeg", "XVid", "Uncompressed" }) },
      { "Flv", strs({ "Flv" }) },
      { "Mov", strs({ "Quicktime" }) },
      { "Jpeg Sequence", {} },
      { "Png Sequence", {} },
      { "Mkv", strs({ "H264", "H265" }) },
    };
    for (const auto& [name, encodings] : offered) {
      format->setCurrentText(QLatin1String(name));
      QCOMPARE(itemsOf(encoding), encodings);
    }
  }

  void appliedSettingsReachTheCut()
  {
    kovEncodingSettingsWidget settings;
    kovCameraCut cut = addCut();
    settings.setCut(cut, host()->db.get());
    QCOMPARE(child<QLineEdit>(&settings, "DestinationFolder")->text(), QStringLiteral("/home/u/Videos"));
    auto* size = child<QComboBox>(&settings, "FrameSize");
    auto* width = child<QSpinBox>(&settings, "CustomWidth");
    QCOMPARE(size->currentText(), QStringLiteral("1920x1080 HD"));
    QVERIFY(!width->isEnabled());
    size->setCurrentText(QStringLiteral("Custom Size"));
    width->setValue(1000);
    child<QComboBox>(&settings, "OutputFormat")->setCurrentText(QStringLiteral("Avi"));
    child<QComboBox>(&settings, "Encoding")->setCurrentText(QStringLiteral("XVid"));
    child<QComboBox>(&settings, "FrameRate")->setCurrentText(QStringLiteral("23.976"));
    settings.applyTo(cut);
    QCOMPARE(std::make_pair(cut.imageWidth, cut.imageHeight), std::make_pair(1000, 1080));
    QCOMPARE(cut.outputFormat, kovOutputFormat::Avi);
    QCOMPARE(cut.encoding, kovEncoding::XVid);
    QCOMPARE(cut.frameRate, 23.976);

    // A still image keeps the cut's encoding and frame rate.
    child<QComboBox>(&settings, "OutputType")->setCurrentIndex(kovEncodingSettingsWidget::Image);
    settings.applyTo(cut);
    QVERIFY(cut.stillImage);
    QCOMPARE(cut.outputFormat, kovOutputFormat::Jpg);
    QCOMPARE(cut.encoding, kovEncoding::XVid);
    QCOMPARE(cut.frameRate, 23.976);
  }

  void okRefusesWhatCannotBeProduced_data()
  {
    QTest::addColumn<QString>("rate");
    QTest::addColumn<int>("width");
    QTest::addColumn<QString>("message");
    const QString badRate = QStringLiteral("The frame rate must be above 0.");
    const QString badSize = QStringLiteral("The frame width and height must be from 1 to 16384 pixels.");
    QTest::newRow("zero rate") << "0" << 1920 << badRate;
    QTest::newRow("negative rate") << "-25" << 1920 << badRate;
    QTest::newRow("rate not a number") << "fast" << 1920 << badRate;
    QTest::newRow("zero width") << "25" << 0 << badSize;
    QTest::newRow("too wide") << "25" << 16385 << badSize;
    QTest::newRow("widest") << "25" << 16384 << QString();
  }

  void okRefusesWhatCannotBeProduced()
  {
    QFETCH(QString, rate);
    QFETCH(int, width);
    QFETCH(QString, message);
    kovEncodingSettingsWidget settings;
    settings.setCut(addCut(), host()->db.get());
    settings.show();
    child<QComboBox>(&settings, "FrameSize")->setCurrentText(QStringLiteral("Custom Size"));
    child<QSpinBox>(&settings, "CustomWidth")->setValue(width);
    child<QComboBox>(&settings, "FrameRate")->setCurrentText(rate);
    child<QLineEdit>(&settings, "DestinationFolder")->setText(QStringLiteral("/renders"));
    QSignalSpy accepted(&settings, &kovEncodingSettingsWidget::accepted);
    QCOMPARE(messageDuring([&] { button(&settings, QStringLiteral("OK"))->click(); }), message);
    QCOMPARE(accepted.count(), message.isEmpty() ? 1 : 0);
    QCOMPARE(host()->settings.value(QStringLiteral("AnimationProductionPath")).toString(),
             message.isEmpty() ? QStringLiteral("/renders") : QString());
  }

  void confirmationChecksTheRangeAgainstTheCameraKeyframes_data()
  {
    // The camera track is keyed from 500 to 4500 ms.
    QTest::addColumn<int>("startMs");
    QTest::addColumn<int>("endMs");
    QTest::addColumn<QString>("startCheck");
    QTest::addColumn<QString>("endCheck");
    QTest::newRow("inside") << 500 << 4500 << QString() << QString();
    QTest::newRow("starts early") << 400 << 4500 << "<font color='red'>Check Start Time</font>" << QString();
    QTest::newRow("ends late") << 500 << 4501 << QString() << "<font color='red'>Check End Time</font>";
  }

  void confirmationChecksTheRangeAgainstTheCameraKeyframes()
  {
    QFETCH(int, startMs);
    QFETCH(int, endMs);
    QFETCH(QString, startCheck);
    QFETCH(QString, endCheck);
    host()->settings.insert(QStringLiteral("AnimationProductionDeleteImages"), true);
    const kovCameraCut cut = addCut([=](kovCameraCut& c) {
      c.startMs = startMs;
      c.endMs = endMs;
    });
    kovConfirmStartProductionWidget confirmation;
    QVERIFY(!button(&confirmation, QStringLiteral("Produce"))->isEnabled());
    confirmation.setCut(&cut);
    QVERIFY(button(&confirmation, QStringLiteral("Produce"))->isEnabled());
    QCOMPARE(child<QLineEdit>(&confirmation, "OutputFolder")->text(), QStringLiteral("/home/u/Videos"));
    QCOMPARE(child<QLineEdit>(&confirmation, "Summary")->text(),
             QStringLiteral("1920x1080 Mp4 24fps H265 Medium Quality"));
    QVERIFY(child<QCheckBox>(&confirmation, "DeleteImages")->isChecked());
    QCOMPARE(child<QLabel>(&confirmation, "StartCheck")->text(), startCheck);
    QCOMPARE(child<QLabel>(&confirmation, "EndCheck")->text(), endCheck);

    button(&confirmation, QStringLiteral("Reset Start/End"))->click();
    QCOMPARE(std::make_pair(confirmation.recordingStartMs(), confirmation.recordingEndMs()), std::make_pair(500, 4500));
    QVERIFY(child<QLabel>(&confirmation, "StartCheck")->text().isEmpty());
    QVERIFY(child<QLabel>(&confirmation, "EndCheck")->text().isEmpty());
    child<QDoubleSpinBox>(&confirmation, "RecordingEnd")->setValue(0.4);
    confirmation.show();
    QCOMPARE(messageDuring([&] { button(&confirmation, QStringLiteral("Produce"))->click(); }), kEndBeforeStart);
    QCOMPARE(confirmation.result(), int(QDialog::Rejected));
  }

  void inTheEditorACutIsAddedEditedAndItsProductionConfirmed()
  {
    kovEditingState::setEditingAnimation(m_id);
    kovAnimationEditorWidget editor;
    kovProductionPanel::install(&editor);
    editor.show();
    QTableView* table = editor.cutTable();
    QAbstractItemModel* cuts = table->model();
    // The bar's add button is the first without a tool tip.
    QPushButton* add = nullptr;
    QWidget* bar = button(&editor, QStringLiteral("Next Camera Cut"))->parentWidget();
    for (QPushButton* b : bar->findChildren<QPushButton*>())
      add = add || !b->toolTip().isEmpty() ? add : b;
    editor.treeView()->setCurrentIndex(editor.model()->trackIndex(2));
    add->click();
    QCOMPARE(cuts->rowCount(), 0);
    editor.treeView()->setCurrentIndex(editor.model()->trackIndex(1));
    add->click();
    QCOMPARE(cuts->index(0, 0).data().toString(), QStringLiteral("Camera Track 1"));

    table->setCurrentIndex(cuts->index(0, 1));
    auto* start = qobject_cast<QSpinBox*>(table->indexWidget(cuts->index(0, 1)));
    start->setValue(800);
    QTest::keyClick(start, Qt::Key_Return);
    QTRY_COMPARE(cuts->index(0, 1).data().toString(), QStringLiteral("0.8s"));

    table->setCurrentIndex(cuts->index(0, 3));
    auto* settings = table->findChild<kovEncodingSettingsWidget*>();
    QVERIFY(settings && settings->isWindow());
    child<QComboBox>(settings, "OutputFormat")->setCurrentText(QStringLiteral("Mkv"));
    button(settings, QStringLiteral("OK"))->click();
    const QString summary = QStringLiteral("1920x1080 Mkv 24fps H264 Medium Quality");
    QCOMPARE(cuts->index(0, 3).data().toString(), summary);
    QTRY_VERIFY(!table->findChild<kovEncodingSettingsWidget*>());

    QSignalSpy confirmed(&editor, &kovAnimationEditorWidget::productionConfirmed);
    QString shown;
    QTimer::singleShot(50, [&shown] {
      auto* confirmation = qobject_cast<kovConfirmStartProductionWidget*>(QApplication::activeModalWidget());
      shown = child<QLineEdit>(confirmation, "Summary")->text();
      child<QDoubleSpinBox>(confirmation, "RecordingEnd")->setValue(4.0);
      button(confirmation, QStringLiteral("Produce"))->click();
    });
    button(&editor, QStringLiteral("Execute Camera Cuts Production"))->click();
    QCOMPARE(shown, summary);
    QCOMPARE(confirmed.count(), 1);
    QCOMPARE(confirmed.first().first().toInt(), 0);
    // Production runs from the editor's timer, which now ticks every 10 ms.
    QCOMPARE(editor.playbackTimer()->interval(), 10);
    QVERIFY(editor.playbackTimer()->isActive() && kovEditingState::isProducing());
    editor.onProductionCanceled();
    QVERIFY(!editor.playbackTimer()->isActive() && !kovEditingState::isProducing());
    QCOMPARE(cuts->index(0, 2).data().toString(), QStringLiteral("4s"));

    // The table follows the animation the editor shows.
    editor.selectAnimation(OdDbObjectId());
    QCOMPARE(cuts->rowCount(), 0);
    editor.selectAnimation(m_id);
    QCOMPARE(cuts->rowCount(), 1);
  }
};

int main(int argc, char** argv)
{
  TestHost app(argc, argv);
  tst_Production test;
  return QTest::qExec(&test, argc, argv);
}

#include "tst_production.moc"
