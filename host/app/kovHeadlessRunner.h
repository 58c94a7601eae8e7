#ifndef KOV_HEADLESS_RUNNER_H
#define KOV_HEADLESS_RUNNER_H

#include <QString>
#include <QStringList>
#include <QTextStream>

class kovHostApplication;
class kovHostServices;

// Runs command lines against the open drawing without windows: every line as
// if typed, its transcript on standard output. Stops at the first line that
// fails (an error, a cancel, words left over) and says which on standard error.
class kovHeadlessRunner {
public:
  kovHeadlessRunner(kovHostApplication& app, kovHostServices& services);

  // The lines of a script file: blank lines and lines starting with '#' or ';'
  // are skipped. False, with the reason in error, when the file can't be read.
  static bool readScript(const QString& path, QStringList& lines, QString& error);

  // 0 when every line ran, 1 otherwise.
  int run(const QStringList& lines);
  // What the host and the module offer, for a run without commands.
  void describe();

private:
  kovHostApplication& m_app;
  kovHostServices& m_services;
  QTextStream m_out;
  QTextStream m_err;
  // The longest progress line on the current line, 0 without one.
  int m_progressWidth = 0;
};

#endif
