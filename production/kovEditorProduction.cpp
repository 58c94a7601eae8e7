#include "production/kovEditorProduction.h"

#include "production/kovAnimationProduction.h"
#include "production/kovProductionProgressDialog.h"

#include "editor/kovAnimationEditorWidget.h"

#include <QMessageBox>
#include <QTimer>

kovEditorProduction::kovEditorProduction(kovAnimationEditorWidget* editor)
  : QObject(editor)
  , m_editor(editor)
{
  setObjectName(QStringLiteral("EditorProduction"));
  connect(editor, &kovAnimationEditorWidget::productionConfirmed, this, [this](int row) { m_row = row; });
  editor->setProductionTick([this] { startRun(); });
}

QString kovEditorProduction::recoveryTitle()
{
  return tr("Recover Saved Frames?");
}

QString kovEditorProduction::recoveryQuestion()
{
  return tr("Some frame is already present in the output folder.\n"
            "Do you want to recover the previous frames and only produce the missing ones?");
}

QString kovEditorProduction::failureTitle()
{
  return tr("Animation Production");
}

void kovEditorProduction::startRun()
{
  if (m_run)
    return;
  // The run ticks on its own timer from here on.
  m_editor->playbackTimer()->stop();
  auto* run = new kovAnimationProduction(m_editor->animationId(), m_row, kovAnimationProduction::Mode::Produce, this);
  run->setOpenClip(true);
  run->setRecoveryQuestion([this] {
    return QMessageBox::question(m_editor, recoveryTitle(), recoveryQuestion(), QMessageBox::Yes | QMessageBox::No)
           == QMessageBox::Yes;
  });
  QString message;
  if (!run->start(message)) {
    delete run;
    m_editor->onProductionCanceled();
    QMessageBox::warning(m_editor, failureTitle(), message);
    return;
  }
  m_run = run;
  connect(run, &kovAnimationProduction::finished, this, &kovEditorProduction::runEnded);
  m_dialog = new kovProductionProgressDialog(run, m_editor);
  m_dialog->show();
}

void kovEditorProduction::runEnded()
{
  const QString message = m_run->outcome().message;
  if (m_dialog)
    m_dialog->deleteLater();
  m_run->deleteLater();
  m_editor->onProductionCanceled();
  if (!message.isEmpty())
    QMessageBox::warning(m_editor, failureTitle(), message);
}
