#ifndef KOV_FRAME_CLEANUP_H
#define KOV_FRAME_CLEANUP_H

#include <QObject>
#include <QStringList>

// Deletes a clip's frames a little after it is encoded (the player the clip
// opens in, and the encoder's last writes, are given time): the frame list,
// each frame, and then the frames' folder when nothing else is left in it.
// Lives on its own and goes once done.
class kovFrameCleanup : public QObject {
  Q_OBJECT
public:
  static constexpr int kDelayMs = 2000;

  // Starts the wait; the object belongs to the application meanwhile.
  static kovFrameCleanup* schedule(const QString& listPath, const QStringList& frames);

signals:
  void done();

private:
  kovFrameCleanup(const QString& listPath, const QStringList& frames);
  void run();

  QString m_listPath;
  QStringList m_frames;
};

#endif
