#include "host/render/kovGsPosedDraw.h"

#include "Db/OdDbBlockReference.h"
#include "Db/OdDbBlockTableRecord.h"
#include "Db/OdDbObjectIterator.h"
#include "Gi/OdGiSubEntityTraits.h"
#include "Gi/OdGiWorldDraw.h"
#include "Gi/OdGiWorldGeometry.h"

namespace {

// As deep as block references nest in the platform's own drawing.
constexpr int kMaxNesting = 64;

void draw(const OdDbEntity& entity, OdGiWorldDraw& wd, const QMap<QString, OdGeMatrix3d>& nodes, int depth)
{
  const OdDbBlockReference* reference = OdDbBlockReference::cast(&entity).get();
  if (!reference) {
    entity.worldDraw(&wd);
    return;
  }
  if (entity.visibility() == OdDb::kInvisible || depth > kMaxNesting)
    return;
  OdDbObjectPtr object = reference->blockTableRecord().openObject(OdDb::kForRead);
  OdDbBlockTableRecordPtr block = OdDbBlockTableRecord::cast(object.get());
  if (block.isNull())
    return;
  OdGeMatrix3d placement = reference->blockTransform();
  if (depth > 0) {
    const auto node = nodes.constFind(odToQString(block->getName()));
    if (node != nodes.cend())
      placement = *node;
  }
  wd.subEntityTraits().setColor(entity.colorIndex());
  wd.geometry().pushModelTransform(placement);
  for (OdDbObjectIteratorPtr it = block->newIterator(); !it->done(); it->step()) {
    OdDbEntityPtr nested = it->entity();
    if (!nested.isNull())
      draw(*nested, wd, nodes, depth + 1);
  }
  wd.geometry().popModelTransform();
}

} // namespace

void kovGsDrawPosed(const OdDbEntity& entity, OdGiWorldDraw& worldDraw, const QMap<QString, OdGeMatrix3d>& nodes)
{
  draw(entity, worldDraw, nodes, 0);
}
