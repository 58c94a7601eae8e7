#ifndef KOV_SCRIPT_INPUT_H
#define KOV_SCRIPT_INPUT_H

#include "db/kovDbAnimation.h"

#include "Db/OdDbDatabase.h"
#include "Ed/OdDbCommandContext.h"

#include <QCoreApplication>
#include <QString>

// What the animation's script commands ask on the command line, and the
// animation, tracks, sub-tracks and cuts they name. A name that names
// nothing raises OdError with a sentence that says what there is instead.
class kovScriptInput {
  Q_DECLARE_TR_FUNCTIONS(kovScriptInput)
public:
  explicit kovScriptInput(OdEdCommandContext* pCmdCtx);

  OdDbDatabase* database() const { return m_db.get(); }
  OdDbUserIO* io() const { return m_context->dbUserIO(); }
  // Whether a script line has given all its words: the optional values
  // that follow keep their defaults. A person is always asked.
  bool lineEnded() const;

  // The drawing's editing animation, else its first one.
  kovDbAnimationPtr animation(OdDb::OpenMode mode = OdDb::kForRead) const;
  // The animation of that name (exact, else ignoring case).
  OdDbObjectId animationNamed(const QString& name) const;
  // A track by name or by number (1 is the first), as an index.
  int track(const kovDbAnimation& animation);
  // A sub-track of the track by number, custom parameter name or type name.
  int subTrack(const kovAnimationTrack& track);
  // A camera cut by number (1 is the first), as an index.
  int cut(const kovDbAnimation& animation);

  QString text(const QString& prompt, const QString& defaultValue = QString());
  // A whole number of milliseconds.
  int milliseconds(const QString& prompt);

  // Raises the error a script line fails with.
  [[noreturn]] static void fail(const QString& message);

private:
  OdDbCommandContextPtr m_context;
  OdDbDatabasePtr m_db;
};

#endif
