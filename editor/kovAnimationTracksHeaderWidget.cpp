#include "editor/kovAnimationTracksHeaderWidget.h"

#include "editor/kovAnimationEditorWidget.h"

#include <QDoubleSpinBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

#include <cmath>

namespace {

QDoubleSpinBox* secondsField(QWidget* parent)
{
  auto* field = new QDoubleSpinBox(parent);
  field->setDecimals(3);
  field->setRange(0.0, 999000.0);
  return field;
}

} // namespace

kovAnimationTracksHeaderWidget::kovAnimationTracksHeaderWidget(kovAnimationEditorWidget* editor, QWidget* parent)
  : QWidget(parent)
  , m_editor(editor)
  , m_addTrack(new QPushButton(this))
  , m_position(secondsField(this))
  , m_duration(secondsField(this))
{
  setObjectName(QStringLiteral("TracksHeader"));
  m_addTrack->setIcon(QIcon(QStringLiteral(":/animation/icons/_0051_add-mark")));
  m_addTrack->setToolTip(tr("Add a new animation track"));
  m_duration->setReadOnly(true);
  auto* layout = new QHBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(m_addTrack);
  layout->addWidget(new QLabel(tr(" Second "), this));
  layout->addWidget(m_position);
  layout->addWidget(new QLabel(tr(" of "), this));
  layout->addWidget(m_duration);
  layout->addStretch();

  connect(editor, &kovAnimationEditorWidget::currentPositionChanged, this, [this](int ms) {
    const QSignalBlocker blocker(m_position);
    m_position->setValue(ms * 0.001);
  });
  connect(m_position, qOverload<double>(&QDoubleSpinBox::valueChanged), this,
          [this](double seconds) {
            m_editor->setCurrentPosition(static_cast<int>(std::lround(seconds * 1000.0)));
            m_editor->ensurePositionVisible();
          });
  connect(editor, &kovAnimationEditorWidget::animationSizeChanged, this,
          [this](int ms) { m_duration->setValue(ms * 0.001); });
}
