#include "production/kovEditorProduction.h"

#include "production/kovAnimationProduction.h"
#include "production/kovProductionProgressDialog.h"

#include "editor/kovAnimationEditorWidget.h"

#include "host/api/IkovPhysicsRender.h"
#include "host/api/IkovViewSystem.h"
#include "host/api/kovHostService.h"

#include <QMessageBox>
#include <QTableView>
#include <QTimer>

kovEditorProduction::kovEditorProduction(kovAnimationEditorWidget* editor)
  : QObject(editor)
  , m_editor(editor)
{
  setObjectName(QStringLiteral("EditorProduction"));
  connect(editor, &kovAnimationEditorWidget::productionConfirmed, this, [this](int row) { m_row = row; });
  editor->setProductionTick([this] { startRun(); });
  editor->setPreviewStart([this](int row) { return startPreview(row); });
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
  if (!begin(kovAnimationProduction::Mode::Produce, m_row))
    m_editor->onProductionCanceled();
}

bool kovEditorProduction::startPreview(int row)
{
  const IkovViewSystem* views = kovHostService<IkovViewSystem>();
  OdDbDatabase* db = m_editor->animationId().database();
  if (!views || views->activeRenderEngine(db) != IkovPhysicsRender::label())
    return false;
  if (!m_run && begin(kovAnimationProduction::Mode::Preview, row))
    m_editor->checkActiveProductionButtons(m_editor->cutTable()->currentIndex());
  return true;
}

// Starts a run under the dialog; false, after telling the user why, when it
// can't start.
bool kovEditorProduction::begin(kovAnimationProduction::Mode mode, int row)
{
  auto* run = new kovAnimationProduction(m_editor->animationId(), row, mode, this);
  run->setOpenClip(true);
  run->setRecoveryQuestion([this] {
    return QMessageBox::question(m_editor, recoveryTitle(), recoveryQuestion(), QMessageBox::Yes | QMessageBox::No)
           == QMessageBox::Yes;
  });
  QString message;
  if (!run->start(message)) {
    delete run;
    QMessageBox::warning(m_editor, failureTitle(), message);
    return false;
  }
  m_run = run;
  connect(run, &kovAnimationProduction::finished, this, &kovEditorProduction::runEnded);
  m_dialog = new kovProductionProgressDialog(run, m_editor);
  m_dialog->show();
  return true;
}

void kovEditorProduction::runEnded()
{
  // A preview the user stopped needs no word.
  const bool stoppedPreview = m_run->mode() == kovAnimationProduction::Mode::Preview && m_run->outcome().cancelled;
  const QString message = stoppedPreview ? QString() : m_run->outcome().message;
  if (m_dialog)
    m_dialog->deleteLater();
  m_run->deleteLater();
  m_editor->onProductionCanceled();
  if (!message.isEmpty())
    QMessageBox::warning(m_editor, failureTitle(), message);
}
