#ifndef KOV_COMMAND_RUNNER_H
#define KOV_COMMAND_RUNNER_H

#include "host/app/kovInteractiveUserIO.h"

#include <QObject>

class kovHostApplication;

// Runs the command lines of the desktop: the first word names the command,
// the words after it answer its prompts, and the command asks the user for
// whatever they do not answer. One command runs at a time; a line typed while
// it waits answers its prompt instead. Reports go to the transcript:
// "*Cancel*" for a cancelled command, the error's description for a failed
// one. Every command is followed by "<event-refresh:database_changed>".
class kovCommandRunner : public QObject {
  Q_OBJECT
public:
  kovCommandRunner(kovHostApplication& app, const kovInteractiveUserIOPtr& io, QObject* parent = nullptr);

  // Runs a line typed at the "Command:" prompt. False when it did not run to
  // its end: unknown, cancelled, failed, or another command is running.
  bool run(const QString& line);
  // A line typed while a command runs: the answers to its prompts.
  void type(const QString& line);
  void cancel();

  bool isRunning() const { return m_running; }

signals:
  void runningChanged(bool running);

private:
  bool execute(const OdEdScriptWord& name);
  void print(const QString& text);

  kovHostApplication& m_app;
  kovInteractiveUserIOPtr m_io;
  bool m_running = false;
};

#endif
