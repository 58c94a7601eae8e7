// Animations built by script lines with the module loaded, as the main job
// builds its own: tracks of every kind, sub-tracks and keyframes of every
// kind of value, camera cuts and their settings, with each refusal's
// sentence; what animationlist shows of them; and one undo step per line.
#include "kovHostTestEnvironment.h"
#include "kovScriptedCommands.h"

using namespace kovHostTest;

namespace {

// The handle of the newest model space entity of the class.
QString handleOf(const char* className)
{
  const OdDbObjectIdArray ids = entitiesOfClass(QLatin1String(className));
  return ids.isEmpty() ? QString() : odToQString(ids[ids.size() - 1].getHandle().ascii());
}

} // namespace

class tst_AnimationScript : public QObject {
  Q_OBJECT

private:
  ScriptedCommands m_commands;

  // Runs the lines, separated by "|"; false at the first that fails.
  bool run(const QString& lines)
  {
    for (const QString& line : lines.split(QLatin1Char('|'))) {
      if (!m_commands.run(line.trimmed()))
        return false;
    }
    return true;
  }
  QString listing()
  {
    m_commands.transcript.clear();
    m_commands.run(QStringLiteral("animationlist"));
    return m_commands.transcript;
  }

private slots:
  void initTestCase()
  {
    QString message;
    QVERIFY2(app().loadAnimationModule(message), qPrintable(message));
  }

  // A library block placed, a sphere, and a camera animation over them.
  void init()
  {
    m_commands.restart();
    QVERIFY2(run(QStringLiteral("box 0,0,0 1,1,1 1|block \"Crate xblock\" 0,0,0 Last \"\"|"
                                "insert \"Crate xblock\" 5,5,0 1 0|sphere 9,9,1 1 2|"
                                "createcameraanimation 0,0,2 10,0,2 20,5,2 Finish")),
             qPrintable(m_commands.transcript));
  }

  void linesBuildWhatTheListingShows_data()
  {
    QTest::addColumn<QString>("lines");
    QTest::addColumn<QString>("shown");
    QTest::newRow("camera track") << "animationtrack Camera \"\""
                                  << "Track 2 \"Camera Track 1\" (Camera), from 0 ms\n"
                                     "  1 Location By Spline: ";
    QTest::newRow("environment track, named")
        << "animationtrack Environment Sky" << "Track 2 \"Sky\" (Environment), from 0 ms\n  1 Longitude (Number)";
    QTest::newRow("entity track") << "animationtrack Entity {sphere} \"\""
                                  << "Track 2 \"Entity Track\" (Entity), from 0 ms\n  1 Location By Points: 1 keyframes\n"
                                     "    0 ms: X:9 Y:9 Z:1";
    QTest::newRow("spawned object track") << "animationtrack SpawnedObject \"crate XBLOCK\" \"\""
                                          << "Track 2 \"Crate xblock\" (SpawnedObject)";
    QTest::newRow("placed object track") << "animationtrack Object {ref} \"\""
                                         << "Track 2 \"Crate xblock\" (Object), from 0 ms\n  1 Location By Points: 1 keyframes\n"
                                            "    0 ms: X:5 Y:5 Z:0";
    QTest::newRow("special parameter") << "animationsubtrack \"Camera Track\" Parameter Fov|animationkey 1 Fov 500 35"
                                       << "  3 Fov (Number): 1 keyframes\n    500 ms: Value:35";
    QTest::newRow("parameter of a type") << "animationsubtrack 1 Parameter Lamp OnOff|animationkey 1 Lamp 0 off"
                                         << "  3 Lamp (On/Off): 1 keyframes\n    0 ms: Value: False";
    QTest::newRow("text parameter") << "animationsubtrack 1 Parameter Caption Text|animationkey 1 caption 0 \"Hi there\""
                                    << "    0 ms: Value:Hi there";
    QTest::newRow("location") << "animationkey 1 1 1000 1,2,3" << "    1000 ms: X:1 Y:2 Z:3\n";
    QTest::newRow("location with a tangent") << "animationkey 1 LocationBySpline 1000 1,2,3,0,1,0"
                                             << "    1000 ms: X:1 Y:2 Z:3 - Tangent: X:0 Y:1";
    QTest::newRow("angles") << "animationkey 1 2 1000 5,10,15"
                            << "    1000 ms: Pivot (X:0 Y:0 Z:0 Pitch:5 Yaw:15 Roll:10";
    QTest::newRow("target") << "animationsubtrack 1 RotationToTarget|animationkey 1 3 0 7,8,9"
                            << "    0 ms: Pivot (X:0 Y:0 Z:0 Target (X:7 Y:8 Z:9";
    QTest::newRow("re-timed by speed") << "animationspeed 1 10"
                                       << "    1007 ms: X:10 Y:0 Z:2\n    2135 ms: X:20 Y:5 Z:2\n"
                                          "  2 Rotation By Angles: 2 keyframes\n"
                                          "    0 ms: Pivot (X:0 Y:0 Z:0 Pitch:0 Yaw:0 Roll:0\n    2135 ms:";
    QTest::newRow("cut") << "animationcut 1 0 2000 \"\""
                         << "Camera cut 1 \"Scene 1\": Camera Track, 0 to 2000 ms, 1920x1080 Mp4 24fps H265 Medium Quality";
    QTest::newRow("cut settings")
        << "animationcut 1 100 2000 Fly|animationcutset 1 Size 640x360|animationcutset 1 FrameRate 23.976|"
           "animationcutset 1 Format Avi|animationcutset 1 Encoding XVid|animationcutset 1 Quality High|"
           "animationcutset 1 Name \"Fly by\""
        << "Camera cut 1 \"Fly by\": Camera Track, 100 to 2000 ms, 640x360 Avi 23.976fps XVid High Quality";
    QTest::newRow("a format takes its first encoding") << "animationcut 1 0 2000 \"\"|animationcutset 1 Format Mov"
                                                       << "1920x1080 Mov 24fps Quicktime Medium Quality";
    QTest::newRow("a still") << "animationcut 1 0 2000 \"\"|animationcutset 1 Format Png" << "1920x1080 Png Medium Quality";
    QTest::newRow("a named view") << "view 0,-20,5 0,0,0 45|namedview Save Street|animationcut 1 0 2000 \"\"|"
                                     "animationcutset 1 View Street"
                                  << "Camera cut 1 \"Scene 1\"";
  }
  void linesBuildWhatTheListingShows()
  {
    QFETCH(QString, lines);
    QFETCH(QString, shown);
    lines.replace(QLatin1String("{ref}"), handleOf("OdDbBlockReference"));
    lines.replace(QLatin1String("{sphere}"), handleOf("kovDbPolygonMesh"));
    QVERIFY2(run(lines), qPrintable(m_commands.transcript));
    const QString listed = listing();
    QVERIFY2(listed.contains(shown), qPrintable(listed));
  }

  void wrongLinesSayWhyAndChangeNothing_data()
  {
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("message");
    QTest::newRow("unknown block") << "animationtrack SpawnedObject Barrel"
                                   << "No library block is \"Barrel\"; there are: Crate xblock.";
    QTest::newRow("the animation itself") << "animationtrack Entity Last"
                                          << "An animation is no subject of its own tracks.";
    QTest::newRow("no such track") << "animationkey 9 1 0 1,2,3"
                                   << "No track is \"9\"; the tracks are 1 \"Camera Track\".";
    QTest::newRow("no such sub-track") << "animationkey 1 Fov 0 30"
                                       << "The track \"Camera Track\" has no sub-track \"Fov\"; it has 1 \"Location By "
                                          "Spline\", 2 \"Rotation By Angles\".";
    QTest::newRow("a camera has no scale") << "animationsubtrack 1 Scale"
                                           << "A track of kind Camera takes no Scale sub-track.";
    QTest::newRow("two numbers") << "animationkey 1 2 0 1,2"
                                 << "\"1,2\" is not 3 or 6 numbers separated by commas.";
    QTest::newRow("before the track") << "animationkey 1 1 -5 1,2,3"
                                      << "The track \"Camera Track\" starts at 0 ms: a keyframe can't come before.";
    QTest::newRow("a cut of no camera") << "animationcut 2 0 100"
                                        << "No track is \"2\"; the tracks are 1 \"Camera Track\".";
    QTest::newRow("no cut") << "animationcutset 1 Name X" << "The animation has no camera cuts: add one with animationcut.";
    QTest::newRow("end before start") << "animationcut 1 500 400"
                                      << "The end time of a camera cut must not be before its start time.";
    QTest::newRow("unknown animation") << "animationselect Tour"
                                       << "No animation is named \"Tour\"; the drawing's are: 1 \"New Camera Animation\".";
  }
  void wrongLinesSayWhyAndChangeNothing()
  {
    QFETCH(QString, line);
    QFETCH(QString, message);
    const QString before = listing();
    QVERIFY(!m_commands.run(line));
    QVERIFY2(m_commands.transcript.contains(message), qPrintable(m_commands.transcript));
    QCOMPARE(listing(), before);
  }

  void wrongCutSettingsAreRefused_data()
  {
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("message");
    QTest::newRow("frame rate 0") << "animationcutset 1 FrameRate 0" << "The frame rate must be above 0.";
    QTest::newRow("frame rate too high") << "animationcutset 1 FrameRate 2000"
                                         << "The frame rate must be at most 1000 frames per second.";
    QTest::newRow("end before start") << "animationcutset 1 End 50" << "The end time of a camera cut must not be before";
    QTest::newRow("no size") << "animationcutset 1 Size 0x100" << "The frame width and height must be from 1 to 16384";
    QTest::newRow("not a size") << "animationcutset 1 Size big" << "Give the size as WIDTHxHEIGHT, such as 1280x720.";
    QTest::newRow("encoding the format lacks") << "animationcutset 1 Encoding Mjpeg"
                                               << "A Mp4 clip is encoded as H264, H265.";
    QTest::newRow("no samples") << "animationcutset 1 Samples 0" << "The samples must be 1 to 100000.";
    QTest::newRow("unknown view") << "animationcutset 1 View Garden"
                                  << "The drawing has no view named \"Garden\" (namedview Save keeps one).";
  }
  void wrongCutSettingsAreRefused()
  {
    QFETCH(QString, line);
    QFETCH(QString, message);
    QVERIFY(run(QStringLiteral("animationcut 1 100 1000 \"\"")));
    const QString before = listing();
    QVERIFY(!m_commands.run(line));
    QVERIFY2(m_commands.transcript.contains(message), qPrintable(m_commands.transcript));
    QCOMPARE(listing(), before);
  }

  void eachLineIsOneUndoStep()
  {
    const QString before = listing();
    QVERIFY(run(QStringLiteral("animationkey 1 1 1000 1,2,3|animationcut 1 0 1000 \"\"")));
    QVERIFY(run(QStringLiteral("undo")));
    QVERIFY(listing().contains(QStringLiteral("1000 ms: X:1 Y:2 Z:3")));
    QVERIFY(!listing().contains(QStringLiteral("Camera cut 1")));
    QVERIFY(run(QStringLiteral("undo")));
    QCOMPARE(listing(), before);
  }
};

KOV_HOST_TEST_MAIN(tst_AnimationScript)

#include "tst_animationscript.moc"
