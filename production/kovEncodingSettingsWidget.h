#ifndef KOV_ENCODING_SETTINGS_WIDGET_H
#define KOV_ENCODING_SETTINGS_WIDGET_H

#include "db/kovCameraCut.h"

#include <QWidget>

class OdDbDatabase;
class QCheckBox;
class QComboBox;
class QLineEdit;
class QSpinBox;

// The output settings of one camera cut, in a window of its own ("Output
// Format Options"): the named view, the destination folder, the clip's name,
// the output type, format and encoding, the quality, the frame size and
// rate, the samples per frame and the path tracer's production flag.
//
// The choices left open elsewhere are decided here:
// - the frame rates offered are the usual film, PAL, NTSC and double rates;
//   any other rate may be typed;
// - "Max Samples" runs from 1 to kMaxSamples;
// - the quality entries carry kovQuality values; a quality the list does not
//   offer (Low, or a value outside the list) shows as Medium;
// - "Custom Size" is the last frame size: it enables the width and height
//   fields, which the other sizes fill and disable;
// - a still image has neither encoding nor frame rate: both are disabled for
//   it, and applying keeps the cut's own;
// - the destination folder is the host's setting, shared by every cut. It
//   shows with the host's path variables expanded, and OK stores it only
//   when it was changed, so that an unset folder keeps following the cut's
//   type (pictures for a still image, videos otherwise).
class kovEncodingSettingsWidget : public QWidget {
  Q_OBJECT
public:
  static constexpr int kMaxSamples = 100000;
  enum OutputType { Image = 0, Videoclip = 1 };

  explicit kovEncodingSettingsWidget(QWidget* parent = nullptr);

  // The encodings a video format offers, in the order shown; none for the
  // image formats and sequences.
  static QList<kovEncoding> encodingsFor(kovOutputFormat format);

  // Shows the cut's settings; the named views are those of db.
  void setCut(const kovCameraCut& cut, OdDbDatabase* db);
  // Copies the shown settings into the cut.
  void applyTo(kovCameraCut& cut) const;
  // Why the shown settings cannot be applied; empty when they can.
  QString problem() const;

signals:
  // OK with settings that can be applied (the folder is stored by then).
  void accepted();
  // Cancel, or the window closed.
  void cancelled();

protected:
  void closeEvent(QCloseEvent* event) override;

private:
  void buildLayout();
  void outputTypeChanged();
  void outputFormatChanged();
  void frameSizeChanged();
  void accept();
  double frameRate() const;

  QComboBox* m_view = nullptr;
  QLineEdit* m_folder = nullptr;
  QLineEdit* m_name = nullptr;
  QComboBox* m_type = nullptr;
  QComboBox* m_format = nullptr;
  QComboBox* m_encoding = nullptr;
  QComboBox* m_quality = nullptr;
  QComboBox* m_size = nullptr;
  QSpinBox* m_width = nullptr;
  QSpinBox* m_height = nullptr;
  QComboBox* m_rate = nullptr;
  QSpinBox* m_samples = nullptr;
  QCheckBox* m_pathTracing = nullptr;
  // The folder as shown by setCut, to tell whether OK changes the setting.
  QString m_shownFolder;
};

#endif
