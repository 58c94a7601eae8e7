#include "production/kovAnimationProductionModelDelegate.h"

#include "production/kovAnimationProductionModel.h"
#include "production/kovCameraCutChecks.h"
#include "production/kovEncodingSettingsWidget.h"

#include <QComboBox>
#include <QCursor>
#include <QSpinBox>
#include <QTimer>

namespace {

const kovAnimationProductionModel* productionModel(const QModelIndex& index)
{
  return qobject_cast<const kovAnimationProductionModel*>(index.model());
}

// Told once the editor has closed: a message box now would take the focus
// from the editor, which commits it again.
void refuseLater(QWidget* editor, const QString& problem)
{
  QWidget* owner = editor->parentWidget();
  QTimer::singleShot(0, owner, [owner, problem] { kovCameraCutChecks::refuse(owner, problem); });
}

} // namespace

kovAnimationProductionModelDelegate::kovAnimationProductionModelDelegate(QObject* parent)
  : QStyledItemDelegate(parent)
{
}

QWidget* kovAnimationProductionModelDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem&,
                                                           const QModelIndex& index) const
{
  const kovAnimationProductionModel* model = productionModel(index);
  const kovDbAnimationPtr animation = model ? model->openAnimation() : kovDbAnimationPtr();
  if (animation.isNull())
    return nullptr;
  switch (index.column()) {
  case kovAnimationProductionModel::CameraColumn: {
    auto* tracks = new QComboBox(parent);
    for (const kovAnimationTrackPtr& track : animation->constTracks()) {
      if (kovAnimationProductionModel::isCameraTrack(track.get()))
        tracks->addItem(track->trackName(), QVariant::fromValue(track));
    }
    return tracks;
  }
  case kovAnimationProductionModel::StartColumn:
  case kovAnimationProductionModel::EndColumn: {
    auto* ms = new QSpinBox(parent);
    ms->setRange(0, kMaxMs);
    ms->setSuffix(tr(" ms"));
    return ms;
  }
  case kovAnimationProductionModel::SettingsColumn: {
    auto* settings = new kovEncodingSettingsWidget(parent);
    // The signals of an item delegate are not const: createEditor is.
    auto* self = const_cast<kovAnimationProductionModelDelegate*>(this);
    connect(settings, &kovEncodingSettingsWidget::accepted, self, [self, settings] {
      emit self->commitData(settings);
      emit self->closeEditor(settings);
    });
    connect(settings, &kovEncodingSettingsWidget::cancelled, self,
            [self, settings] { emit self->closeEditor(settings); });
    return settings;
  }
  default:
    return nullptr;
  }
}

void kovAnimationProductionModelDelegate::setEditorData(QWidget* editor, const QModelIndex& index) const
{
  const QVariant value = index.data(Qt::EditRole);
  if (auto* tracks = qobject_cast<QComboBox*>(editor)) {
    const kovAnimationTrack* current = value.value<kovAnimationTrackPtr>().get();
    for (int row = 0; row < tracks->count(); ++row) {
      if (tracks->itemData(row).value<kovAnimationTrackPtr>().get() == current)
        tracks->setCurrentIndex(row);
    }
  } else if (auto* ms = qobject_cast<QSpinBox*>(editor)) {
    ms->setValue(value.toInt());
  } else if (auto* settings = qobject_cast<kovEncodingSettingsWidget*>(editor)) {
    const kovAnimationProductionModel* model = productionModel(index);
    const kovDbAnimationPtr animation = model ? model->openAnimation() : kovDbAnimationPtr();
    settings->setCut(value.value<kovCameraCut>(), animation.isNull() ? nullptr : animation->database());
  }
}

void kovAnimationProductionModelDelegate::setModelData(QWidget* editor, QAbstractItemModel* model,
                                                       const QModelIndex& index) const
{
  if (auto* tracks = qobject_cast<QComboBox*>(editor)) {
    if (tracks->currentIndex() >= 0)
      model->setData(index, tracks->currentData(), Qt::EditRole);
  } else if (auto* ms = qobject_cast<QSpinBox*>(editor)) {
    const bool start = index.column() == kovAnimationProductionModel::StartColumn;
    const int other = index.siblingAtColumn(start ? kovAnimationProductionModel::EndColumn
                                                  : kovAnimationProductionModel::StartColumn)
                          .data(Qt::EditRole)
                          .toInt();
    const QString problem = start ? kovCameraCutChecks::timesProblem(ms->value(), other)
                                  : kovCameraCutChecks::timesProblem(other, ms->value());
    if (problem.isEmpty())
      model->setData(index, ms->value(), Qt::EditRole);
    else
      refuseLater(editor, problem);
  } else if (auto* settings = qobject_cast<kovEncodingSettingsWidget*>(editor)) {
    // The table commits an open settings window when its current cell
    // moves, past the window's own check on OK.
    const QString problem = settings->problem();
    if (problem.isEmpty())
      model->setData(index, QVariant::fromValue(settings), Qt::EditRole);
    else
      refuseLater(editor, problem);
  }
}

void kovAnimationProductionModelDelegate::updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                                                               const QModelIndex& index) const
{
  if (!qobject_cast<kovEncodingSettingsWidget*>(editor)) {
    QStyledItemDelegate::updateEditorGeometry(editor, option, index);
    return;
  }
  editor->adjustSize();
  const int height = editor->height();
  editor->move(QCursor::pos() - QPoint(height, height));
}

bool kovAnimationProductionModelDelegate::eventFilter(QObject* object, QEvent* event)
{
  if (qobject_cast<kovEncodingSettingsWidget*>(object))
    return false;
  return QStyledItemDelegate::eventFilter(object, event);
}
