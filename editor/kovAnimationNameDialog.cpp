#include "editor/kovAnimationNameDialog.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLineEdit>

kovAnimationNameDialog::kovAnimationNameDialog(const QString& name, const QString& description, QWidget* parent)
  : QDialog(parent)
  , m_name(new QLineEdit(name, this))
  , m_description(new QLineEdit(description, this))
{
  setObjectName(QStringLiteral("AnimationNameDialog"));
  setWindowTitle(tr("Edit"));
  setModal(true);
  m_name->setObjectName(QStringLiteral("Name"));
  m_description->setObjectName(QStringLiteral("Description"));
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  auto* form = new QFormLayout(this);
  form->addRow(tr("Name:"), m_name);
  form->addRow(tr("Description:"), m_description);
  form->addRow(buttons);
}

QString kovAnimationNameDialog::name() const
{
  return m_name->text();
}

QString kovAnimationNameDialog::description() const
{
  return m_description->text();
}
