#ifndef KOV_FRAME_SOURCE_H
#define KOV_FRAME_SOURCE_H

#include <QSize>
#include <QString>

class OdDbDatabase;
class IkovPhysicsRender;
class IkovViewSystem;
class kovFrameWriter;

// The pictures of production, from the render engine that draws the
// drawing's active viewport, named by the host's view system. The path
// tracer ("TessaRender") draws a picture over passes and writes it itself;
// any other engine draws at once, and its raster of the view goes to the
// frame writer.
class kovFrameSource {
public:
  // size: the frames' size; passes: what finishes a path-traced frame.
  kovFrameSource(OdDbDatabase* db, const QSize& size, int passes);

  QString engine() const { return m_engine; }
  bool isPathTracer() const;
  // Whether the picture of the present time is ready to be saved. The path
  // tracer waits extraWaitMs after the time last moved, then for its passes
  // (a production) or for a first few (a preview); others are always ready.
  bool isReady(qint64 msSinceTimeMoved, int extraWaitMs, bool producing) const;
  // Saves the picture under path; false, with the reason in error, when the
  // engine has none.
  bool save(const QString& path, kovFrameWriter& writer, QString& error) const;

private:
  OdDbDatabase* m_db;
  QSize m_size;
  IkovViewSystem* m_views;
  IkovPhysicsRender* m_pathTracer;
  QString m_engine;
};

#endif
