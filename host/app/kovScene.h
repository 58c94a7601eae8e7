#ifndef KOV_SCENE_H
#define KOV_SCENE_H

#include "Db/OdDbObjectId.h"
#include "Ge/OdGeExtents3d.h"
#include "Gi/OdGiPrimitiveRecord.h"

#include <vector>

class OdDbDatabase;

// What the entities of model space draw, entity by entity, as the viewport
// replays it. Regenerated when the drawing changes, not on every repaint:
// camera moves only project it anew.
class kovScene {
public:
  struct Item {
    OdDbObjectId id;
    std::vector<OdGiPrimitiveRecord> records;
  };

  // Records every visible entity of db's model space; a null db empties the scene.
  void regenerate(OdDbDatabase* db);
  void clear();

  const std::vector<Item>& items() const { return m_items; }
  // The box around everything recorded; invalid when nothing was.
  const OdGeExtents3d& extents() const { return m_extents; }

  // The corners a record reaches, for extents: its vertices, a circle's box,
  // an image's parallelogram.
  static void addToExtents(const OdGiPrimitiveRecord& record, OdGeExtents3d& extents);

private:
  std::vector<Item> m_items;
  OdGeExtents3d m_extents;
};

#endif
