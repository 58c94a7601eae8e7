#ifndef KOV_ANIMATION_PRODUCTION_MODEL_DELEGATE_H
#define KOV_ANIMATION_PRODUCTION_MODEL_DELEGATE_H

#include <QStyledItemDelegate>

// The editors of the camera-cut table (kovAnimationProductionModel): the
// animation's camera tracks by name, whole milliseconds from 0 to 9999999
// for the times, and a kovEncodingSettingsWidget window for the settings.
// Times whose end would come before their start are refused with a message.
class kovAnimationProductionModelDelegate : public QStyledItemDelegate {
  Q_OBJECT
public:
  static constexpr int kMaxMs = 9999999;

  explicit kovAnimationProductionModelDelegate(QObject* parent = nullptr);

  QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
  void setEditorData(QWidget* editor, const QModelIndex& index) const override;
  void setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const override;
  // The settings window opens with its top-left corner at the pointer less
  // the window's height in both directions (x too, so that it opens up and
  // to the left of the pointer, over the table rather than off the screen's
  // right edge); the other editors fill their cell.
  void updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                            const QModelIndex& index) const override;

protected:
  // The settings window commits through its own OK and Cancel: the
  // delegate's focus and hide handling, meant for editors inside a cell,
  // would commit it whenever it loses focus or closes.
  bool eventFilter(QObject* object, QEvent* event) override;
};

#endif
