#include "production/kovProductionPanel.h"

#include "editor/kovAnimationEditorWidget.h"
#include "editor/kovAnimationModel.h"
#include "production/kovAnimationProductionModel.h"
#include "production/kovAnimationProductionModelDelegate.h"
#include "production/kovConfirmStartProductionWidget.h"
#include "production/kovEditorProduction.h"

#include <QTableView>

#include <optional>
#include <utility>

void kovProductionPanel::install(kovAnimationEditorWidget* editor)
{
  auto* cuts = new kovAnimationProductionModel(editor);
  cuts->setAnimation(editor->animationId());
  editor->setCutModel(cuts);
  editor->cutTable()->setItemDelegate(new kovAnimationProductionModelDelegate(editor->cutTable()));
  // The editor builds its track tree anew whenever it shows another
  // animation or its drawing changed: the cuts follow.
  QObject::connect(editor->model(), &QAbstractItemModel::modelReset, cuts,
                   [editor, cuts] { cuts->setAnimation(editor->animationId()); });
  editor->setProductionConfirmation([editor](int row) { return confirm(editor, row); });
  new kovEditorProduction(editor);
}

bool kovProductionPanel::confirm(kovAnimationEditorWidget* editor, int row)
{
  auto* cuts = qobject_cast<kovAnimationProductionModel*>(editor->cutTable()->model());
  std::optional<kovCameraCut> cut;
  if (const kovDbAnimationPtr animation = cuts ? cuts->openAnimation() : kovDbAnimationPtr(); !animation.isNull()) {
    const QList<kovCameraCut>& all = std::as_const(*animation).sceneCuts();
    if (row >= 0 && row < all.size())
      cut = all.at(row);
  }
  kovConfirmStartProductionWidget confirmation(editor);
  confirmation.setCut(cut ? &*cut : nullptr);
  if (confirmation.exec() != QDialog::Accepted || !cut)
    return false;
  cuts->setData(cuts->index(row, kovAnimationProductionModel::StartColumn), confirmation.recordingStartMs());
  cuts->setData(cuts->index(row, kovAnimationProductionModel::EndColumn), confirmation.recordingEndMs());
  return true;
}
