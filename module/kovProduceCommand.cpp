#include "module/kovProduceCommand.h"

#include "module/kovInterruptWatch.h"
#include "module/kovScriptInput.h"

#include "production/kovAnimationProduction.h"
#include "production/kovEditorProduction.h"
#include "production/kovProductionProgressDialog.h"
#include "production/kovVideoEncoder.h"

#include "host/api/IkovApplication.h"
#include "host/api/IkovConsole.h"
#include "host/api/kovHostService.h"

#include <QDir>
#include <QEventLoop>
#include <QMainWindow>
#include <QMessageBox>

#include <memory>

namespace {

QString tr(const char* text)
{
  return QCoreApplication::translate("kovProduceCommand", text);
}

// Returns once the object is gone (or was never there).
void waitFor(QObject* object)
{
  if (!object)
    return;
  QEventLoop loop;
  QObject::connect(object, &QObject::destroyed, &loop, &QEventLoop::quit);
  loop.exec();
}

} // namespace

void kovProduceCommand::produce(OdEdCommandContext* pCmdCtx)
{
  kovScriptInput in(pCmdCtx);
  const OdDbObjectId animationId = in.animation()->objectId();
  int row = 0;
  if (!in.lineEnded())
    row = in.io()->getInt(OdString(L"Camera cut number <1>:"), OdEd::kInpDefault, 1) - 1;
  QString folder;
  if (!in.lineEnded())
    folder = in.text(tr("Destination folder <the production folder>:"), QStringLiteral(""));

  IkovApplication* app = kovApp();
  QWidget* window = app ? app->mainWindow() : nullptr;
  IkovConsole* console = kovHostService<IkovConsole>();
  kovAnimationProduction run(animationId, row);
  run.setDestination(folder);
  run.setOpenClip(window != nullptr);
  if (window) {
    run.setRecoveryQuestion([window] {
      return QMessageBox::question(window, kovEditorProduction::recoveryTitle(), kovEditorProduction::recoveryQuestion(),
                                   QMessageBox::Yes | QMessageBox::No)
             == QMessageBox::Yes;
    });
  }
  QString message;
  if (!run.start(message))
    kovScriptInput::fail(message);
  if (!run.frames().isEmpty())
    in.io()->putString(odFromQString(tr("Keeping the %1 frames an earlier run left in %2.")
                                         .arg(run.frames().size())
                                         .arg(QDir::toNativeSeparators(run.files().framesFolder()))));

  std::unique_ptr<kovProductionProgressDialog> dialog;
  std::unique_ptr<kovInterruptWatch> interrupts;
  if (window) {
    dialog = std::make_unique<kovProductionProgressDialog>(&run, window);
    dialog->show();
  } else {
    interrupts = std::make_unique<kovInterruptWatch>();
    QObject::connect(interrupts.get(), &kovInterruptWatch::interrupted, &run, &kovAnimationProduction::cancel);
    if (console) {
      QObject::connect(&run, &kovAnimationProduction::progressed, [&run, console] { console->putProgress(run.status()); });
      QObject::connect(&run, &kovAnimationProduction::encodingStarted,
                       [console] { console->putProgress(tr("Encoding the clip with ffmpeg...")); });
    }
  }
  QEventLoop loop;
  QObject::connect(&run, &kovAnimationProduction::finished, &loop, &QEventLoop::quit);
  loop.exec();
  if (console)
    console->putProgress(QString());
  dialog.reset();

  const kovAnimationProduction::Outcome& outcome = run.outcome();
  if (!outcome.complete)
    kovScriptInput::fail(outcome.message);
  // Without windows the host may end right after: the frames asked to go
  // are gone first.
  if (!window && run.encoder())
    waitFor(run.encoder()->cleanup());
  in.io()->putString(odFromQString(tr("Produced %1").arg(QDir::toNativeSeparators(outcome.outputPath))));
}
