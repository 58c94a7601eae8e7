#include "editor/kovAnimationtreeViewHeader.h"

#include "editor/kovAnimationEditorWidget.h"
#include "editor/kovAnimationTracksHeaderWidget.h"

#include <QAbstractScrollArea>

namespace {

const int kStripHeight = 6;

} // namespace

kovAnimationtreeViewHeader::kovAnimationtreeViewHeader(kovAnimationEditorWidget* editor, QWidget* parent)
  : QHeaderView(Qt::Horizontal, parent)
  , m_editor(editor)
{
  setStretchLastSection(true);
  setSectionsMovable(false);
  // The sections have no titles (the headers above the tree say what the
  // columns hold): a thin strip is enough to take column 0's edge.
  setFixedHeight(kStripHeight);
  // Column 0 starts as wide as the tracks header needs to show its fields.
  setDefaultSectionSize(editor->tracksHeader() ? editor->tracksHeader()->sizeHint().width() : 300);
  connect(this, &QHeaderView::sectionResized, this,
          [this](int logicalIndex, int, int newSize) { followSection(logicalIndex, newSize); });
  // Column 0 takes its default size without a resize to say so.
  followSection(0, defaultSectionSize());
}

void kovAnimationtreeViewHeader::followSection(int logicalIndex, int newSize)
{
  if (logicalIndex == 1) {
    m_editor->updateScale();
    return;
  }
  kovAnimationTracksHeaderWidget* tracks = m_editor->tracksHeader();
  auto* tree = qobject_cast<QAbstractScrollArea*>(parentWidget());
  if (logicalIndex == 0 && tracks && tree)
    tracks->setFixedWidth(tree->frameWidth() + newSize);
}
