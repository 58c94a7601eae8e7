#ifndef KOV_ANIMATION_PRODUCTION_MODEL_H
#define KOV_ANIMATION_PRODUCTION_MODEL_H

#include "db/kovDbAnimation.h"

#include "Db/OdDbObjectId.h"

#include <QAbstractTableModel>

// The camera cuts of an animation as the production panel's table: one row
// per cut, in the animation's order, with the camera track, the start and
// end times and the output settings. Every value is read from the entity
// opened for read per request; every edit goes straight into the cut with
// the entity opened for write, and only when the value changes.
class kovAnimationProductionModel : public QAbstractTableModel {
  Q_OBJECT
public:
  enum Column { CameraColumn = 0, StartColumn = 1, EndColumn = 2, SettingsColumn = 3, ColumnCount = 4 };

  explicit kovAnimationProductionModel(QObject* parent = nullptr);

  // Shows the cuts of that animation (none for a null id). The table is
  // reset only when the animation or its number of cuts differs from what
  // it shows, so that the current row outlives the editor's refreshes.
  void setAnimation(const OdDbObjectId& animationId);
  OdDbObjectId animationId() const { return m_animation; }
  kovDbAnimationPtr openAnimation(OdDb::OpenMode mode = OdDb::kForRead) const;

  // Milliseconds as seconds with up to 6 significant digits: "1.5s".
  static QString secondsText(int ms);
  // "24", "23.976": up to 6 significant digits.
  static QString frameRateText(double framesPerSecond);
  // "1920x1080 Mp4 24fps H265 Medium Quality"; a still image has no frame
  // rate and an image sequence no encoding.
  static QString settingsSummary(const kovCameraCut& cut);
  static bool isCameraTrack(const kovAnimationTrack* track);
  // "Scene 1", "Scene 2"...: the first name none of the cuts has.
  static QString freeCutName(const QList<kovCameraCut>& cuts);
  // A track's first and last keyframes on the animation's clock (the cuts'
  // times), not the track's own.
  static int firstKeyframeMs(const kovAnimationTrack& track);
  static int lastKeyframeMs(const kovAnimationTrack& track);

  int rowCount(const QModelIndex& parent = QModelIndex()) const override;
  int columnCount(const QModelIndex& parent = QModelIndex()) const override;
  QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;
  // Always false, also after a change: the changed row is announced by
  // dataChanged instead. Column 0 takes a kovAnimationTrackPtr of the
  // animation, columns 1 and 2 milliseconds, column 3 the
  // kovEncodingSettingsWidget* whose values the cut takes.
  bool setData(const QModelIndex& index, const QVariant& value, int role = Qt::EditRole) override;
  // New cuts film the animation's selected track, which must be a camera
  // track, over its keyframes.
  bool insertRows(int row, int count, const QModelIndex& parent = QModelIndex()) override;
  bool removeRows(int row, int count, const QModelIndex& parent = QModelIndex()) override;

private:
  OdDbObjectId m_animation;
  // The rows the views were last told of.
  int m_shownRows = 0;
};

#endif
