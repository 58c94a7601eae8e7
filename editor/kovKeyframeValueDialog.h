#ifndef KOV_KEYFRAME_VALUE_DIALOG_H
#define KOV_KEYFRAME_VALUE_DIALOG_H

#include "animation/kovAnimationItem.h"
#include "animation/kovKeyframeValues.h"

#include <QDialog>
#include <QVariant>

class OdDbDatabase;
class QCheckBox;
class QComboBox;
class QDoubleSpinBox;
class QFormLayout;
class QLineEdit;
class QSpinBox;

// "Edit Value": one keyframe of a sub-track, its time and the fields its
// animation type stores. The time moves only between the keyframes around
// it, so that the keyframe keeps its place in the order.
class kovKeyframeValueDialog : public QDialog {
  Q_OBJECT
public:
  // db is the drawing whose selection "Copy Selected" takes.
  kovKeyframeValueDialog(const kovAnimationItem& item, int key, OdDbDatabase* db, QWidget* parent = nullptr);

  // The keyframe's time within its track and its value as the item stores it.
  int time() const;
  QVariant value() const;

private:
  struct Triple {
    QDoubleSpinBox* x = nullptr;
    QDoubleSpinBox* y = nullptr;
    QDoubleSpinBox* z = nullptr;
  };

  void addFields(QFormLayout* form, const kovAnimationItem& item, const QVariant& value);
  Triple addTriple(QFormLayout* form, const QString& label, const QString& name, const QVariantList& values,
                   int first);
  QDoubleSpinBox* addNumber(QFormLayout* form, const QString& label, const QString& name, double value, double min,
                            double max, int decimals);
  void copySelected();

  OdDbDatabase* m_db;
  kovAnimationItem::AnimationType m_type;
  kovKeyframeValues::Kind m_kind;
  QSpinBox* m_time = nullptr;
  Triple m_first;
  Triple m_second;
  QDoubleSpinBox* m_number = nullptr;
  QDoubleSpinBox* m_pitch = nullptr;
  QDoubleSpinBox* m_yaw = nullptr;
  QDoubleSpinBox* m_roll = nullptr;
  QLineEdit* m_entity = nullptr;
  QCheckBox* m_onOff = nullptr;
  QComboBox* m_text = nullptr;
};

#endif
