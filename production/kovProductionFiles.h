#ifndef KOV_PRODUCTION_FILES_H
#define KOV_PRODUCTION_FILES_H

#include "db/kovCameraCut.h"

#include <QString>

// Where the files of a camera cut's production go. The base name is the
// track's name and the cut's name with the characters that file systems or
// the encoder's frame list refuse made underscores; a video's frames lie in
// a sub-folder named as the clip, each named by its frame number:
//
//   <folder>/<base>/<base>_<n>.<jpg|png>   the frames
//   <folder>/<base>.<format's extension>   the clip, or the still image
class kovProductionFiles {
public:
  // folder: the destination; empty for the host's setting.
  kovProductionFiles(const kovCameraCut& cut, const QString& folder = QString());

  static QString safeName(const QString& name);
  // The output format's file extension ("mp4", "jpg"...); empty outside the list.
  static QString extension(kovOutputFormat format);
  // A video's frames are PNG for an uncompressed AVI and for a PNG sequence,
  // JPEG otherwise.
  static QString frameExtension(const kovCameraCut& cut);

  QString folder() const { return m_folder; }
  QString baseName() const { return m_base; }
  QString framesFolder() const;
  QString framePath(int frameNumber) const;
  QString outputPath() const;

private:
  QString m_folder;
  QString m_base;
  QString m_frameExtension;
  QString m_outputExtension;
};

#endif
