// The render engine's costs, offscreen on whatever OpenGL the machine has:
// rasterizer frames (drawn and read back, as a render is) at 720p and 1080p
// for drawings of about 100k and 1M triangles, with and without the sun's
// shadows, against the floor of an empty scene drawn and read back the same
// way; path-tracer passes per second; and the first display of a
// 1M-triangle drawing against the update after one of its entities moves.
// Without a DISPLAY the device starts its own Xvfb.

#include "kovBenchMeasure.h"

#include "host/render/OdGsDevice.h"
#include "host/render/kovRenderView.h"
#include "polymesh/kovDbPolygonMesh.h"

#include "Db/OdDbBlockTableRecord.h"
#include "Db/OdDbDatabase.h"
#include "Db/OdDbModule.h"

#include <QCoreApplication>

#include <cstdio>
#include <string>
#include <vector>

namespace {

const int kGridSide = 25; // quads a side: 2 x 25 x 20 = 1000 triangles
const int kGridDepth = 20;

// A rumpled sheet of 1000 triangles at cell (i, j) of the site.
kov::polymesh::Mesh sheet(int i, int j)
{
  kov::polymesh::Mesh mesh;
  const double x0 = i * 12.0, y0 = j * 12.0;
  for (int v = 0; v <= kGridDepth; ++v) {
    for (int u = 0; u <= kGridSide; ++u) {
      const double z = 2.0 + std::sin(u * 0.5 + i) * std::cos(v * 0.4 + j);
      mesh.vertices.emplace_back(OdGePoint3d(x0 + u * 0.4, y0 + v * 0.5, z));
    }
  }
  for (int v = 0; v < kGridDepth; ++v) {
    for (int u = 0; u < kGridSide; ++u) {
      const OdInt32 a = v * (kGridSide + 1) + u;
      const OdInt32 b = a + kGridSide + 1;
      mesh.faces.emplace_back(std::vector<OdInt32> { a, a + 1, b + 1 });
      mesh.faces.emplace_back(std::vector<OdInt32> { a, b + 1, b });
    }
  }
  return mesh;
}

// A drawing of entities x 1000 triangles on a square site.
OdDbDatabasePtr makeDrawing(int entities, std::vector<OdDbObjectId>& ids)
{
  OdDbDatabasePtr db = OdDbDatabase::createObject();
  OdDbBlockTableRecordPtr space = db->getModelSpaceId().safeOpenObject(OdDb::kForWrite);
  int side = 1;
  while (side * side < entities)
    ++side;
  for (int n = 0; n < entities; ++n) {
    kovDbPolygonMeshPtr entity = kovDbPolygonMesh::createObject();
    entity->setMesh(sheet(n % side, n / side));
    entity->setColorIndex(static_cast<OdUInt16>(1 + n % 7));
    ids.push_back(space->appendOdDbEntity(entity));
  }
  return db;
}

// A camera that sees the whole site of entities from above a corner.
kovViewCamera siteCamera(int entities)
{
  int side = 1;
  while (side * side < entities)
    ++side;
  const double extent = side * 12.0;
  kovViewCamera camera;
  camera.eye = OdGePoint3d(-0.3 * extent, -0.6 * extent, 0.7 * extent);
  camera.target = OdGePoint3d(0.5 * extent, 0.5 * extent, 0.0);
  camera.fieldOfView = 50.0;
  return camera;
}

// Mean seconds of one drawn and read-back frame, after one unmeasured frame.
double frameSeconds(kovRenderView& view, int frames)
{
  view.render();
  const double start = benchNow();
  for (int i = 0; i < frames; ++i)
    view.render();
  return (benchNow() - start) / frames;
}

std::string sizeName(const QSize& size)
{
  return std::to_string(size.height()) + "p";
}

} // namespace

int main(int argc, char** argv)
{
  QCoreApplication app(argc, argv);
  odInitialize();
  kovDbPolygonMesh::rxInit();
  {
    QString error;
    std::unique_ptr<OdGsDevice> device = OdGsDevice::create(error);
    if (!device) {
      std::fprintf(stderr, "bench_render: %s\n", qPrintable(error));
      return 1;
    }
    const QSize sizes[] = { QSize(1280, 720), QSize(1920, 1080) };

    // The floor: nothing to draw, the same view and read-back.
    std::vector<OdDbObjectId> none;
    OdDbDatabasePtr empty = makeDrawing(0, none);
    device->setDatabase(empty.get());
    double floor[2] = {};
    for (int s = 0; s < 2; ++s) {
      kovRenderView view(*device, sizes[s]);
      view.setCamera(siteCamera(100));
      floor[s] = frameSeconds(view, 10);
      benchFigure(("raster_empty_" + sizeName(sizes[s]) + "_fps").c_str(), 1.0 / floor[s], "fps");
    }

    for (const int entities : { 100, 1000 }) {
      std::vector<OdDbObjectId> ids;
      OdDbDatabasePtr db = makeDrawing(entities, ids);
      const std::string scene = entities == 100 ? "100k" : "1m";
      kovRenderView view(*device, sizes[0]);
      view.setCamera(siteCamera(entities));
      device->setDatabase(db.get());

      // First display: every entity vectorized and handed to the engine.
      const double firstStart = benchNow();
      view.redraw();
      const double first = benchNow() - firstStart;
      benchFigure(("vectorize_" + scene + "_first_display_ms").c_str(), first * 1e3, "ms");

      // One entity moved: the reactor marks it, the next update redraws it.
      const int moves = 20;
      double update = 0.0, frame = 0.0;
      for (int m = 0; m < moves; ++m) {
        {
          OdDbEntityPtr entity = ids[ids.size() / 2].safeOpenObject(OdDb::kForWrite);
          entity->transformBy(OdGeMatrix3d::translation(OdGeVector3d(0.0, 0.0, m % 2 ? -1.0 : 1.0)));
        }
        const double start = benchNow();
        device->update();
        update += benchNow() - start;
        const double drawn = benchNow();
        view.redraw();
        frame += benchNow() - drawn;
      }
      benchFigure(("update_one_moved_" + scene + "_ms").c_str(), update / moves * 1e3, "ms");
      benchFigure(("update_one_moved_" + scene + "_vs_first_display_percent").c_str(), 100.0 * update / moves / first,
                  "%");
      benchFigure(("redraw_after_move_" + scene + "_ms").c_str(), frame / moves * 1e3, "ms");

      for (int s = 0; s < 2; ++s) {
        view.setSize(sizes[s]);
        for (const bool shadows : { true, false }) {
          device->setShadows(shadows);
          const double seconds = frameSeconds(view, entities == 100 ? 5 : 2);
          const std::string name = "raster_" + scene + "_" + sizeName(sizes[s]) + (shadows ? "_shadows" : "_plain");
          benchFigure((name + "_fps").c_str(), 1.0 / seconds, "fps");
          benchFigure((name + "_vs_empty_ratio").c_str(), seconds / floor[s], "x");
        }
      }
      device->setShadows(true);
      device->setDatabase(nullptr);
    }

    // The path tracer on a small scene: passes after the first few, which
    // build the engine's acceleration structures and shaders.
    std::vector<OdDbObjectId> ids;
    OdDbDatabasePtr small = makeDrawing(10, ids);
    device->setDatabase(small.get());
    kovRenderView traced(*device, sizes[0]);
    traced.setCamera(siteCamera(10));
    traced.setVisualStyle(kovRenderView::VisualStyle::Rendered);
    traced.render(3);
    const int passes = 8;
    const double start = benchNow();
    for (int i = 0; i < passes; ++i)
      traced.redraw();
    traced.grab();
    benchFigure("pathtrace_10k_720p_passes_per_s", passes / (benchNow() - start), "passes/s");
    device->setDatabase(nullptr);
  }
  kovDbPolygonMesh::rxUninit();
  odUninitialize();
  return 0;
}
