#ifndef KOV_PRODUCTION_SETTINGS_H
#define KOV_PRODUCTION_SETTINGS_H

#include <QString>

// The host's settings that production reads: where the files go and whether
// the frames of a video are deleted once it is encoded. Without a host every
// value is its default.
class kovProductionSettings {
public:
  static QString destinationKey() { return QStringLiteral("AnimationProductionPath"); }
  static QString deleteImagesKey() { return QStringLiteral("AnimationProductionDeleteImages"); }

  // The destination with the host's path variables ("{Pictures}",
  // "{Video}") expanded; unset, the user's pictures for a still image and
  // videos otherwise.
  static QString destinationFolder(bool stillImage);
  static void setDestination(const QString& folder);

  static bool deleteImages();
  static void setDeleteImages(bool on);
};

#endif
