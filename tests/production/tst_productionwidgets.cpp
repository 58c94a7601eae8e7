// The production widgets as a user drives them: the output settings window,
// the confirmation before a production, and both in the editor's
// production panel, from adding a cut for the selected camera track to
// confirming its production.
#include "kovProductionTestHost.h"

#include "db/kovEditingState.h"
#include "editor/kovAnimationEditorWidget.h"
#include "editor/kovAnimationModel.h"
#include "editor/kovAnimationTreeView.h"
#include "production/kovConfirmStartProductionWidget.h"
#include "production/kovEncodingSettingsWidget.h"
#include "production/kovProductionPanel.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QDoubleSpinBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QTableView>
#include <QtTest>

namespace {

TestHost* host()
{
  return static_cast<TestHost*>(QCoreApplication::instance());
}

QStringList itemsOf(const QComboBox* combo)
{
  QStringList items;
  for (int row = 0; row < combo->count(); ++row)
    items << combo->itemText(row);
  return items;
}

template <class T>
T* child(QWidget* parent, const char* name)
{
  T* found = parent->findChild<T*>(QLatin1String(name));
  if (!found)
    qFatal("no child %s", name);
  return found;
}

QPushButton* button(QWidget* parent, const QString& text)
{
  for (QPushButton* b : parent->findChildren<QPushButton*>()) {
    if (b->text() == text || b->toolTip() == text)
      return b;
  }
  qFatal("no button %s", qPrintable(text));
}

QPushButton* okOf(QWidget* window)
{
  return window->findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok);
}

kovCameraCut sampleCut(const OdDbObjectId& id)
{
  kovCameraCut cut;
  cut.name = QStringLiteral("Scene 1");
  cut.track = kovDbAnimation::cast(id.openObject().get())->constTracks().front();
  cut.startMs = 1000;
  cut.endMs = 3000;
  return cut;
}

} // namespace

class tst_ProductionWidgets : public QObject {
  Q_OBJECT

private:
  OdDbObjectId m_id;

private slots:
  void init() { m_id = host()->startDrawing(); }
  void cleanup() { host()->endDrawing(); }

  void outputTypeRefillsTheFormatsAndFormatsTheEncodings()
  {
    kovEncodingSettingsWidget settings;
    settings.setCut(sampleCut(m_id), host()->db.get());
    auto* type = child<QComboBox>(&settings, "OutputType");
    auto* format = child<QComboBox>(&settings, "OutputFormat");
    auto* encoding = child<QComboBox>(&settings, "Encoding");
    const QStringList video = strs({ "Avi", "Mp4", "Flv", "Mov", "Mkv", "Jpeg Sequence", "Png Sequence" });
    QCOMPARE(itemsOf(format), video);
    QCOMPARE(format->currentText(), QStringLiteral("Mp4"));
    QCOMPARE(encoding->currentText(), QStringLiteral("H265"));

    type->setCurrentIndex(kovEncodingSettingsWidget::Image);
    QCOMPARE(itemsOf(format), strs({ "Jpg", "Png", "Hdr" }));
    QVERIFY(!encoding->isEnabled());
    QVERIFY(!child<QComboBox>(&settings, "FrameRate")->isEnabled());
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
    kovCameraCut cut = sampleCut(m_id);
    settings.setCut(cut, host()->db.get());
    QCOMPARE(child<QLineEdit>(&settings, "DestinationFolder")->text(), QStringLiteral("/home/u/Videos"));
    auto* size = child<QComboBox>(&settings, "FrameSize");
    auto* width = child<QSpinBox>(&settings, "CustomWidth");
    QCOMPARE(size->currentText(), QStringLiteral("1920x1080 HD"));
    QVERIFY(!width->isEnabled());
    size->setCurrentText(QStringLiteral("Custom Size"));
    QVERIFY(width->isEnabled());
    width->setValue(1000);
    child<QSpinBox>(&settings, "CustomHeight")->setValue(500);
    child<QComboBox>(&settings, "OutputFormat")->setCurrentText(QStringLiteral("Avi"));
    child<QComboBox>(&settings, "Encoding")->setCurrentText(QStringLiteral("XVid"));
    child<QComboBox>(&settings, "Quality")->setCurrentText(QStringLiteral("Extreme"));
    child<QComboBox>(&settings, "FrameRate")->setCurrentText(QStringLiteral("23.976"));
    child<QSpinBox>(&settings, "MaxSamples")->setValue(200);
    child<QLineEdit>(&settings, "ClipName")->setText(QStringLiteral("Dusk"));
    settings.applyTo(cut);
    QCOMPARE(cut.imageWidth, 1000);
    QCOMPARE(cut.imageHeight, 500);
    QCOMPARE(cut.outputFormat, kovOutputFormat::Avi);
    QCOMPARE(cut.encoding, kovEncoding::XVid);
    QCOMPARE(cut.quality, kovQuality::Extreme);
    QCOMPARE(cut.frameRate, 23.976);
    QCOMPARE(cut.maxIterations, 200);
    QCOMPARE(cut.name, QStringLiteral("Dusk"));
    QVERIFY(!cut.stillImage);

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
    settings.setCut(sampleCut(m_id), host()->db.get());
    settings.show();
    child<QComboBox>(&settings, "FrameSize")->setCurrentText(QStringLiteral("Custom Size"));
    child<QSpinBox>(&settings, "CustomWidth")->setValue(width);
    child<QComboBox>(&settings, "FrameRate")->setCurrentText(rate);
    child<QLineEdit>(&settings, "DestinationFolder")->setText(QStringLiteral("/renders"));
    QSignalSpy accepted(&settings, &kovEncodingSettingsWidget::accepted);
    const QString told = messageDuring([&] { okOf(&settings)->click(); });
    QCOMPARE(told, message);
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
    const QString late = QStringLiteral("<font color='red'>Check End Time</font>");
    const QString early = QStringLiteral("<font color='red'>Check Start Time</font>");
    QTest::newRow("inside") << 500 << 4500 << QString() << QString();
    QTest::newRow("starts early") << 400 << 4500 << early << QString();
    QTest::newRow("ends late") << 500 << 4501 << QString() << late;
  }

  void confirmationChecksTheRangeAgainstTheCameraKeyframes()
  {
    QFETCH(int, startMs);
    QFETCH(int, endMs);
    QFETCH(QString, startCheck);
    QFETCH(QString, endCheck);
    host()->settings.insert(QStringLiteral("AnimationProductionDeleteImages"), true);
    kovCameraCut cut = sampleCut(m_id);
    cut.startMs = startMs;
    cut.endMs = endMs;
    kovConfirmStartProductionWidget confirmation;
    confirmation.setCut(&cut);
    QCOMPARE(child<QLineEdit>(&confirmation, "OutputFolder")->text(), QStringLiteral("/home/u/Videos"));
    QCOMPARE(child<QLineEdit>(&confirmation, "Summary")->text(),
             QStringLiteral("1920x1080 Mp4 24fps H265 Medium Quality"));
    QVERIFY(child<QCheckBox>(&confirmation, "DeleteImages")->isChecked());
    QCOMPARE(child<QDoubleSpinBox>(&confirmation, "FirstKeyframe")->value(), 0.5);
    QCOMPARE(child<QLabel>(&confirmation, "StartCheck")->text(), startCheck);
    QCOMPARE(child<QLabel>(&confirmation, "EndCheck")->text(), endCheck);

    button(&confirmation, QStringLiteral("Reset Start/End"))->click();
    QCOMPARE(confirmation.recordingStartMs(), 500);
    QCOMPARE(confirmation.recordingEndMs(), 4500);
    QVERIFY(child<QLabel>(&confirmation, "StartCheck")->text().isEmpty());
    QVERIFY(child<QLabel>(&confirmation, "EndCheck")->text().isEmpty());
  }

  void confirmationProducesOnlyACutWithARange()
  {
    kovConfirmStartProductionWidget confirmation;
    QVERIFY(!button(&confirmation, QStringLiteral("Produce"))->isEnabled());
    const kovCameraCut cut = sampleCut(m_id);
    confirmation.setCut(&cut);
    confirmation.show();
    QVERIFY(button(&confirmation, QStringLiteral("Produce"))->isEnabled());
    child<QDoubleSpinBox>(&confirmation, "RecordingEnd")->setValue(0.9);
    const QString told = messageDuring([&] { button(&confirmation, QStringLiteral("Produce"))->click(); });
    QCOMPARE(told, QStringLiteral("The end time of a camera cut must not be before its start time."));
    QCOMPARE(confirmation.result(), int(QDialog::Rejected));
    confirmation.setCut(nullptr);
    QVERIFY(child<QLineEdit>(&confirmation, "Summary")->text().isEmpty());
  }

  void inTheEditorACutIsAddedEditedAndItsProductionConfirmed()
  {
    kovEditingState::setEditingAnimation(m_id);
    kovAnimationEditorWidget editor;
    kovProductionPanel::install(&editor);
    editor.show();
    QTableView* table = editor.cutTable();
    QAbstractItemModel* cuts = table->model();
    // The bar's add and remove buttons are the ones without a tool tip.
    QList<QPushButton*> addAndRemove;
    for (QPushButton* b : button(&editor, QStringLiteral("Next Camera Cut"))->parentWidget()->findChildren<QPushButton*>())
      if (b->toolTip().isEmpty())
        addAndRemove << b;
    QCOMPARE(addAndRemove.size(), 2);

    editor.treeView()->setCurrentIndex(editor.model()->trackIndex(2));
    addAndRemove[0]->click();
    QCOMPARE(cuts->rowCount(), 0);
    editor.treeView()->setCurrentIndex(editor.model()->trackIndex(1));
    addAndRemove[0]->click();
    QCOMPARE(cuts->rowCount(), 1);
    QCOMPARE(cuts->index(0, 0).data().toString(), QStringLiteral("Camera Track 1"));

    table->setCurrentIndex(cuts->index(0, 1));
    auto* start = qobject_cast<QSpinBox*>(table->indexWidget(cuts->index(0, 1)));
    QVERIFY(start);
    start->setValue(800);
    QTest::keyClick(start, Qt::Key_Return);
    QTRY_COMPARE(cuts->index(0, 1).data().toString(), QStringLiteral("0.8s"));

    table->setCurrentIndex(cuts->index(0, 3));
    auto* settings = table->findChild<kovEncodingSettingsWidget*>();
    QVERIFY(settings && settings->isWindow());
    child<QComboBox>(settings, "OutputFormat")->setCurrentText(QStringLiteral("Mkv"));
    okOf(settings)->click();
    QCOMPARE(cuts->index(0, 3).data().toString(), QStringLiteral("1920x1080 Mkv 24fps H264 Medium Quality"));
    QTRY_VERIFY(!table->findChild<kovEncodingSettingsWidget*>());

    QSignalSpy confirmed(&editor, &kovAnimationEditorWidget::productionConfirmed);
    QString summary;
    QTimer::singleShot(50, [&summary] {
      auto* confirmation = qobject_cast<kovConfirmStartProductionWidget*>(QApplication::activeModalWidget());
      if (!confirmation)
        return;
      summary = child<QLineEdit>(confirmation, "Summary")->text();
      child<QDoubleSpinBox>(confirmation, "RecordingEnd")->setValue(4.0);
      button(confirmation, QStringLiteral("Produce"))->click();
    });
    button(&editor, QStringLiteral("Execute Camera Cuts Production"))->click();
    QCOMPARE(summary, QStringLiteral("1920x1080 Mkv 24fps H264 Medium Quality"));
    QCOMPARE(confirmed.count(), 1);
    QCOMPARE(confirmed.first().first().toInt(), 0);
    QCOMPARE(cuts->index(0, 2).data().toString(), QStringLiteral("4s"));

    // Another animation shown: the table follows it.
    editor.selectAnimation(OdDbObjectId());
    QCOMPARE(cuts->rowCount(), 0);
    editor.selectAnimation(m_id);
    QCOMPARE(cuts->rowCount(), 1);
  }
};

int main(int argc, char** argv)
{
  TestHost app(argc, argv);
  tst_ProductionWidgets test;
  return QTest::qExec(&test, argc, argv);
}

#include "moc_kovProductionTestHost.cpp"
#include "tst_productionwidgets.moc"
