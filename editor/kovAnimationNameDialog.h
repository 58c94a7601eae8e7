#ifndef KOV_ANIMATION_NAME_DIALOG_H
#define KOV_ANIMATION_NAME_DIALOG_H

#include <QDialog>

class QLineEdit;

// "Edit": an animation's name and description.
class kovAnimationNameDialog : public QDialog {
  Q_OBJECT
public:
  kovAnimationNameDialog(const QString& name, const QString& description, QWidget* parent = nullptr);

  QString name() const;
  QString description() const;

private:
  QLineEdit* m_name;
  QLineEdit* m_description;
};

#endif
