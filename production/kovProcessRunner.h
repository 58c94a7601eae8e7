#ifndef KOV_PROCESS_RUNNER_H
#define KOV_PROCESS_RUNNER_H

#include <QObject>
#include <QProcessEnvironment>
#include <QString>
#include <QStringList>

class QEventLoop;

// Runs a child program to its end, at most for a time limit, while the
// application's events go on (a progress dialog can cancel it). Says how it
// ended, how long it took and what it last wrote on its error output.
class kovProcessRunner : public QObject {
  Q_OBJECT
public:
  enum class Status { Finished, FailedToStart, Crashed, TimedOut, Cancelled };
  struct Result {
    Status status = Status::FailedToStart;
    // The program's exit code when it finished.
    int exitCode = -1;
    qint64 elapsedMs = 0;
    // The end of its error output, at most kTailBytes.
    QString stderrTail;
    // Why it could not start, as the system says.
    QString startError;
    bool succeeded() const { return status == Status::Finished && exitCode == 0; }
  };
  static constexpr int kTailBytes = 4096;

  explicit kovProcessRunner(QObject* parent = nullptr);

  void setWorkingDirectory(const QString& folder) { m_folder = folder; }
  void setEnvironment(const QProcessEnvironment& environment) { m_environment = environment; }
  Result run(const QString& program, const QStringList& arguments, int timeoutMs);
  bool isRunning() const { return m_loop != nullptr; }

public slots:
  // Stops the running program; run() then says Cancelled.
  void cancel();

private:
  QString m_folder;
  QProcessEnvironment m_environment = QProcessEnvironment::systemEnvironment();
  QEventLoop* m_loop = nullptr;
  bool m_cancelled = false;
};

#endif
