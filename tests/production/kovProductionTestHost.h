#ifndef KOV_PRODUCTION_TEST_HOST_H
#define KOV_PRODUCTION_TEST_HOST_H

// The host and the drawing the production tests work in: settings kept in
// memory, path variables expanded to fixed folders, and an animation with two
// camera tracks and an environment track, each keyed from 500 to 4500 ms.
#include "db/kovDbAnimation.h"
#include "db/kovDbTempBlockReference.h"

#include "Db/OdDbBlockTableRecord.h"
#include "Db/OdDbDatabase.h"
#include "Db/OdDbModule.h"
#include "kovAnimationTestValues.h"
#include "kovTestHostDefaults.h"

#include <QApplication>
#include <QMessageBox>
#include <QTimer>
#include <QtTest>
#include <QVariantMap>

class TestHost : public QApplication, public kovTestHostDefaults {
  Q_OBJECT
  Q_INTERFACES(IkovApplication)
public:
  TestHost(int& argc, char** argv) : QApplication(argc, argv) {}

  QVariant setting(const QString& key, const QVariant& def) const override { return settings.value(key, def); }
  void setSetting(const QString& key, const QVariant& value) override { settings.insert(key, value); }
  QString expandPath(const QString& path) const override
  {
    QString expanded = path;
    return expanded.replace(QStringLiteral("{Video}"), QStringLiteral("/home/u/Videos"))
        .replace(QStringLiteral("{Pictures}"), QStringLiteral("/home/u/Pictures"));
  }
  OdDbDatabase* currentDatabase() const override { return db.get(); }

  // A new drawing holding the sample animation; its id.
  OdDbObjectId startDrawing()
  {
    odInitialize();
    kovDbTempBlockReference::rxInit();
    kovDbAnimation::rxInit();
    settings.clear();
    db = OdDbDatabase::createObject();
    kovDbAnimationPtr animation = kovDbAnimation::createObject();
    animation->setDatabaseDefaults(db.get());
    animation->setName(QStringLiteral("Flight"));
    for (const char* subject : { "Camera", "Camera", "Environment" }) {
      kovAnimationTrackPtr track(new kovAnimationTrack);
      track->setName(QLatin1String(subject) + QStringLiteral(" Track"));
      track->setEntityUniqueName(db.get(), QLatin1String(subject));
      track->setStartMillisecond(500);
      addItem(*track, kovAnimationItem::LocationByPoints, { { 0, pointValue(0, 0, 2) }, { 4000, pointValue(8, 0, 2) } });
      animation->editTracks().push_back(track);
      animation->makeTrackNameUnique(track.get());
    }
    OdDbBlockTableRecordPtr space = db->getModelSpaceId().safeOpenObject(OdDb::kForWrite);
    return space->appendOdDbEntity(animation.get());
  }

  void endDrawing()
  {
    db = nullptr;
    kovDbAnimation::rxUninit();
    kovDbTempBlockReference::rxUninit();
    odUninitialize();
  }

  OdDbDatabasePtr db;
  QVariantMap settings;
};

// The text of the message box that comes up while action runs (closed at
// once), or empty when none does.
inline QString messageDuring(const std::function<void()>& action)
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

#endif
