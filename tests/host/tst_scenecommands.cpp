// The scene commands as a user types them: what each adds to the drawing, and
// how a wrong size or colour is asked for again; blocks made and inserted by
// hand; model import: the options as typed, and a file it refuses adding
// nothing; the entity library's answers about a block's animations.

#include "kovHostTestEnvironment.h"
#include "kovScriptedCommands.h"


#include "animation/kovOdDbEx.h"
#include "polymesh/kovDbPolygonMesh.h"
#include "scene/kovDbBlockAnimation.h"

#include "Rx/OdRxDictionary.h"
#include "kovSampleDrawing.h"

#include <QTemporaryDir>

using namespace kovHostTest;

class tst_SceneCommands : public QObject {
  Q_OBJECT

private:
  ScriptedCommands m_commands;
  QString& m_transcript = m_commands.transcript;

private slots:
  void init() { m_commands.restart(); }

  void addsAMeshOfTheShapeAndColourAsked_data()
  {
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("report");
    QTest::addColumn<int>("colorIndex");
    QTest::addColumn<QString>("surfaceColor");
    QTest::newRow("box in true colour") << "box 1,2,3 4,3,2 200,30,20"
                                        << "Added a box of 12 triangles from 1,2,3 to 5,5,5." << 256 << "200,30,20";
    QTest::newRow("sphere by index") << "sphere 0,0,1 2 3" << "Added a sphere of 960 triangles from -2,-2,-1 to 2,2,3."
                                     << 3 << "";
    QTest::newRow("cylinder by layer on Enter")
      << "cylinder 0,0,0 1 3 \"\"" << "Added a cylinder of 124 triangles from -1,-1,0 to 1,1,3." << 256 << "";
    QTest::newRow("plane") << "plane -5,-5,0 10 20 ByLayer" << "Added a plane of 2 triangles from -5,-5,0 to 5,15,0."
                           << 256 << "";
  }

  void addsAMeshOfTheShapeAndColourAsked()
  {
    QFETCH(QString, line);
    QFETCH(QString, report);
    QFETCH(int, colorIndex);
    QFETCH(QString, surfaceColor);
    QVERIFY2(m_commands.run(line), qPrintable(m_transcript));
    QVERIFY2(m_transcript.contains(report), qPrintable(m_transcript));
    const OdDbObjectIdArray meshes = entitiesOfClass(QStringLiteral("kovDbPolygonMesh"));
    QCOMPARE(int(meshes.size()), 1);
    kovDbPolygonMeshPtr mesh = meshes[0].safeOpenObject();
    QCOMPARE(int(mesh->colorIndex()), colorIndex);
    QString surfaces;
    for (const kov::polymesh::Surface& surface : mesh->mesh().surfaces)
      surfaces += QStringLiteral("%1,%2,%3").arg(surface.color.red()).arg(surface.color.green()).arg(surface.color.blue());
    QCOMPARE(surfaces, surfaceColor);
  }

  void blockGathersEntitiesAndInsertPlacesCopies()
  {
    QVERIFY(m_commands.run(QStringLiteral("plane 100,100,0 1 1 2")));
    QVERIFY(m_commands.run(QStringLiteral("box 0,0,0 4,3,2 1")));
    QVERIFY(m_commands.run(QStringLiteral("sphere 10,0,2 1.5 3")));
    // "Last" takes the newest entity not taken yet: the sphere, then the box.
    QVERIFY2(m_commands.run(QStringLiteral("block House 2,0,0 Last L \"\"")), qPrintable(m_transcript));
    QCOMPARE(int(entitiesOfClass(QStringLiteral("kovDbPolygonMesh")).size()), 1);
    QVERIFY2(m_commands.run(QStringLiteral("insert House 20,0,0 2 90")), qPrintable(m_transcript));
    const OdDbObjectIdArray references = entitiesOfClass(QStringLiteral("OdDbBlockReference"));
    QCOMPARE(int(references.size()), 2);
    OdGeExtents3d where;
    QCOMPARE(OdDbEntityPtr(references[0].safeOpenObject())->getGeomExtents(where), eOk);
    QVERIFY(where.minPoint().isEqualTo(OdGePoint3d(0, -1.5, 0)));
    QCOMPARE(OdDbEntityPtr(references[1].safeOpenObject())->getGeomExtents(where), eOk);
    // The block's base (2,0,0) lands on the insertion point; the box then turns
    // a quarter about it and doubles.
    QVERIFY(where.minPoint().isEqualTo(OdGePoint3d(14, -4, 0)));
    QVERIFY(where.maxPoint().isEqualTo(OdGePoint3d(23, 19, 7)));
  }

  void wrongAnswersAreRefusedOrAskedAgainAndAddNothing_data()
  {
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("message");
    QTest::newRow("negative size") << "box 0,0,0 4,-3,2 ^C" << "The size must be positive in x, y and z.";
    QTest::newRow("zero radius") << "sphere 0,0,0 0 ^C" << "The value must be positive.";
    QTest::newRow("colour by name") << "box 0,0,0 1,1,1 red ^C"
                                    << "A colour is ByLayer, an index from 1 to 255, or red,green,blue from 0 to 255.";
    QTest::newRow("colour out of range") << "plane 0,0,0 1 1 256,0,0 ^C" << "A colour is ByLayer";
    QTest::newRow("block name taken") << "block House 0,0,0" << "A block named \"House\" exists already";
    QTest::newRow("reserved name") << "block *Model_Space 0,0,0" << "the name is reserved";
    QTest::newRow("nothing selected") << "block Shed 0,0,0 \"\"" << "No entities were selected";
    QTest::newRow("unknown block") << "insert Garage 0,0,0" << "No block is named \"Garage\"; the drawing's blocks are: House";
  }

  void wrongAnswersAreRefusedOrAskedAgainAndAddNothing()
  {
    QFETCH(QString, line);
    QFETCH(QString, message);
    QVERIFY(m_commands.run(QStringLiteral("box 0,0,0 1,1,1 1")));
    QVERIFY(m_commands.run(QStringLiteral("block House 0,0,0 Last \"\"")));
    QVERIFY(m_commands.run(QStringLiteral("box 5,5,5 1,1,1 1")));
    QVERIFY(!m_commands.run(line));
    QVERIFY2(m_transcript.contains(message), qPrintable(m_transcript));
    QCOMPARE(int(entitiesOfClass(QStringLiteral("kovDbPolygonMesh")).size()), 1);
    QCOMPARE(int(entitiesOfClass(QStringLiteral("OdDbBlockReference")).size()), 1);
  }

  void importSceneTakesItsOptionsOrRefusesAndAddsNothing_data()
  {
    QTest::addColumn<QString>("file");
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("options");
    QTest::addColumn<QString>("report");
    QTest::addColumn<bool>("adds");
    const QByteArray triangle = "solid t\nfacet normal 0 0 1\nouter loop\nvertex 0 0 0\nvertex 1000 0 0\n"
                                "vertex 0 2000 0\nendloop\nendfacet\nendsolid t\n";
    QTest::newRow("placed and scaled") << "part.stl" << triangle << "--scale 0.001 --at 5,0,0 \"\""
                                       << "Imported part.stl as block \"part\": 1 meshes, 1 triangles, 1 blocks, "
                                          "0 animations, extents 5,0,0 to 6,2,0." << true;
    QTest::newRow("library name, asked again") << "part.stl" << triangle << "--xblock Door --scale -1 2 --size \"\""
                                               << "as block \"Door xblock\"" << true;
    QTest::newRow("unknown option") << "part.stl" << triangle << "--size \"\""
                                    << "Unknown option --size: the options are" << true;
    QTest::newRow("empty file") << "part.obj" << QByteArray() << "\"\"" << "the file is empty" << false;
  }

  void importSceneTakesItsOptionsOrRefusesAndAddsNothing()
  {
    QFETCH(QString, file);
    QFETCH(QByteArray, content);
    QFETCH(QString, options);
    QFETCH(QString, report);
    QFETCH(bool, adds);
    QTemporaryDir dir;
    QFile out(dir.filePath(file));
    QVERIFY(out.open(QIODevice::WriteOnly));
    out.write(content);
    out.close();
    QCOMPARE(m_commands.run(QStringLiteral("importscene %1 %2").arg(out.fileName(), options)), adds);
    QVERIFY2(m_transcript.contains(report), qPrintable(m_transcript));
    QCOMPARE(int(entitiesOfClass(QStringLiteral("OdDbBlockReference")).size()), adds ? 1 : 0);
  }

  void theLibraryListsABlocksAnimationsAndPosesItsParts()
  {
    OdDbDatabase* db = app().currentDatabase();
    OdDbBlockTableRecordPtr door = kovAddBlock(db, OdString(L"Door xblock")).safeOpenObject(OdDb::kForWrite);
    for (const wchar_t* name : { L"Open", L"Close" }) {
      kovDbBlockAnimation::Key from;
      kovDbBlockAnimation::Key to;
      to.ms = 2000;
      to.translation = OdGeVector3d(name == std::wstring(L"Open") ? 4 : -4, 0, 0);
      kovDbBlockAnimationPtr clip = kovDbBlockAnimation::createObject();
      clip->setName(OdString(name));
      clip->setChannels({ kovDbBlockAnimation::Channel { OdString(L"leaf"), { from, to } } });
      door->appendOdDbEntity(clip.get());
    }
    OdRxObjectPtr service = odrxSysRegistry()->getAt(OdString(kovOdDbEx::serviceId()));
    const kovOdDbEx* library = static_cast<const kovOdDbEx*>(service.get());
    QVERIFY(library);
    QVERIFY(m_commands.run(QStringLiteral("box 0,0,0 1,1,1 1")));
    QVERIFY(m_commands.run(QStringLiteral("block \"Bench XBlock\" 0,0,0 Last \"\"")));
    QCOMPARE(library->libraryBlockNames(db), (QStringList { QStringLiteral("Bench XBlock"), QStringLiteral("Door xblock") }));
    QCOMPARE(library->animationNames(db, QStringLiteral("Door xblock")), (QStringList { QStringLiteral("Open"), QStringLiteral("Close") }));
    QVERIFY(library->animationNames(db, QStringLiteral("Window xblock")).isEmpty());
    const QMap<QString, OdGeMatrix3d> poses = library->nestedTransforms(db, QStringLiteral("Door xblock"),
                                                                        QStringLiteral("Close"), 500);
    QCOMPARE(poses.keys(), QStringList { QStringLiteral("leaf") });
    QVERIFY(poses.value(QStringLiteral("leaf")).getCsOrigin().isEqualTo(OdGePoint3d(-1, 0, 0)));
    QVERIFY(library->nestedTransforms(db, QStringLiteral("Door xblock"), QStringLiteral("Slam"), 500).isEmpty());
  }
};

KOV_HOST_TEST_MAIN(tst_SceneCommands)
#include "tst_scenecommands.moc"
