#ifndef KOV_EDITOR_PRODUCTION_H
#define KOV_EDITOR_PRODUCTION_H

#include "production/kovAnimationProduction.h"
#include "production/kovProductionProgressDialog.h"

#include <QObject>
#include <QPointer>

class kovAnimationEditorWidget;

// Production as the editor starts it: once the user confirmed a cut, the
// editor's first production tick starts a run of that cut under the
// progress dialog (the run ticks on its own timer from then on); its end
// gives the editor back its play and stop buttons and tells the user what
// went wrong, if anything. Play previews a cut the same way, without saving,
// when the path tracer draws the view: it needs its passes for each picture.
class kovEditorProduction : public QObject {
  Q_OBJECT
public:
  explicit kovEditorProduction(kovAnimationEditorWidget* editor);

  kovAnimationProduction* run() const { return m_run; }

  static QString recoveryTitle();
  static QString recoveryQuestion();
  static QString failureTitle();

private:
  void startRun();
  bool startPreview(int row);
  bool begin(kovAnimationProduction::Mode mode, int row);
  void runEnded();

  kovAnimationEditorWidget* m_editor;
  int m_row = -1;
  QPointer<kovAnimationProduction> m_run;
  QPointer<kovProductionProgressDialog> m_dialog;
};

#endif
