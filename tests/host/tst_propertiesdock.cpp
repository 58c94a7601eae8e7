// The Properties dock with the animation module loaded: an animation's
// properties come from its provider, an edit changes the drawing as one undo
// step, a refused value is explained and leaves the drawing as it was, and
// the dock follows changes made elsewhere.
#include "kovHostTestEnvironment.h"

#include "host/app/kovMainWindow.h"
#include "host/app/kovPropertiesDock.h"
#include "module/kovAnimationModule.h"

#include "Db/OdDbFileWriter.h"
#include "Prop/OdPropServices.h"

#include <QComboBox>
#include <QMenuBar>
#include <QTreeView>

using namespace kovHostTest;

class tst_PropertiesDock : public QObject {
  Q_OBJECT

private:
  std::unique_ptr<kovMainWindow> m_window;
  OdDbObjectId m_animation;

  kovPropertiesDock* dock() const { return m_window->propertiesDock(); }

  QString editorText(const QString& path) const
  {
    if (auto* line = qobject_cast<QLineEdit*>(dock()->editorAt(path)))
      return line->text();
    if (auto* combo = qobject_cast<QComboBox*>(dock()->editorAt(path)))
      return combo->currentText();
    return QString();
  }

  // What the animation holds, through its provider as any reader would.
  QString stored(const QString& path) const
  {
    OdPropBasePtr provider = odpropServices()->createPropForObject(m_animation.openObject().get());
    if (provider.isNull())
      return QStringLiteral("no provider");
    provider->setObjectId(m_animation);
    OdString value;
    return provider->getPropertyValue(odFromQString(path), value) ? odToQString(value) : QStringLiteral("unreadable");
  }

  void type(const QString& path, const QString& text)
  {
    auto* line = qobject_cast<QLineEdit*>(dock()->editorAt(path));
    QVERIFY2(line, qPrintable(path));
    line->setFocus();
    line->selectAll();
    QTest::keyClicks(line, text);
    QTest::keyClick(line, Qt::Key_Return);
  }

private slots:
  void initTestCase()
  {
    QString message;
    QVERIFY2(app().loadAnimationModule(message), qPrintable(message));
  }

  // A camera animation, shown in the dock with its track chosen in the editor.
  void init()
  {
    QVERIFY(openMainWindow(m_window));
    typeLine(m_window->commandLine(), QStringLiteral("createcameraanimation 10,0,1.8 20,10,1.8 30,0,1.8 Finish"));
    const OdDbObjectIdArray animations = entitiesOfClass(QStringLiteral("kovDbAnimation"));
    QCOMPARE(animations.size(), 1u);
    m_animation = animations.first();
    QCOMPARE(services().propSystem()->shownObject(), m_animation);
    // Until a track is chosen the dock shows the animation's own properties.
    QCOMPARE(editorText(QStringLiteral("Animation/Name")), stored(QStringLiteral("Animation/Name")));
    QVERIFY(!dock()->editorAt(QStringLiteral("Element1/AnimationType")));

    auto* tracks = app().dockWidget(QLatin1String(kovAnimationModule::editorDockName))->findChild<QTreeView*>();
    QVERIFY(tracks);
    tracks->setCurrentIndex(tracks->model()->index(0, 0));
    QTRY_VERIFY(dock()->editorAt(QStringLiteral("Element1/Row1/ValueX")));
  }

  void cleanup()
  {
    app().setMainWindow(nullptr);
    m_window.reset();
  }

  void editingAKeyframesXChangesTheDrawingAndUndoPutsItBack()
  {
    const QString path = QStringLiteral("Element1/Row1/ValueX");
    const QString before = stored(path);
    QCOMPARE(editorText(path), before);
    type(path, QStringLiteral("12.5"));
    QCOMPARE(stored(path), QStringLiteral("12.5"));
    QTRY_COMPARE(editorText(path), QStringLiteral("12.5"));

    QMenu* edit = m_window->menuBar()->findChildren<QMenu*>().value(1);
    QVERIFY(edit);
    edit->actions().value(0)->trigger();
    QCOMPARE(stored(path), before);
    QTRY_COMPARE(editorText(path), before);
  }

  void aRefusedValueIsExplainedAndChangesNothing()
  {
    const QString path = QStringLiteral("Element1/Row2/DeltaTime");
    const std::vector<OdUInt8> before = OdDbFileWriter::fileImage(app().currentDatabase());
    MessageBoxCatcher box;
    box.arm();
    type(path, QStringLiteral("soon"));
    QTRY_COMPARE(box.text, QStringLiteral("\"soon\" is not a number."));
    QCOMPARE(box.title, QStringLiteral("Invalid Property Value"));
    QCOMPARE(editorText(path), stored(path));
    QVERIFY(OdDbFileWriter::fileImage(app().currentDatabase()) == before);
  }

  void theDockFollowsChangesMadeElsewhere()
  {
    OdPropBasePtr provider = odpropServices()->createPropForObject(m_animation.openObject().get());
    provider->setObjectId(m_animation);
    OdPropBase::Action action = OdPropBase::kNone;
    QVERIFY(provider->setPropertyValue(OdString(L"Animation/Name"), OdString(L"Orbit"), action));
    QTRY_COMPARE(editorText(QStringLiteral("Animation/Name")), QStringLiteral("Orbit"));

    // A new kind rebuilds the sub-track's rows: a path by points has no tangents.
    auto* kind = qobject_cast<QComboBox*>(dock()->editorAt(QStringLiteral("Element1/AnimationType")));
    QVERIFY(kind);
    QVERIFY(dock()->editorAt(QStringLiteral("Element1/Start Tangent/ValueX")));
    const int points = kind->findText(QStringLiteral("Location By Points"));
    QVERIFY(points >= 0);
    kind->setCurrentIndex(points);
    emit kind->activated(points);
    QCOMPARE(stored(QStringLiteral("Element1/AnimationType")), QStringLiteral("Location By Points"));
    QTRY_VERIFY(!dock()->editorAt(QStringLiteral("Element1/Start Tangent/ValueX")));
  }
};

KOV_HOST_TEST_MAIN(tst_PropertiesDock)
#include "tst_propertiesdock.moc"
