#include "kovRecordingDraw.h"

void kovRecordingDraw::polyline(OdInt32 numVertices, const OdGePoint3d* vertexList, const OdGeVector3d*, OdInt32)
{
  const OdGeMatrix3d toWorld = getModelToWorldTransform();
  Polyline recorded { OdGePoint3dArray(), m_color };
  for (OdInt32 i = 0; i < numVertices; ++i)
    recorded.points.append(toWorld * vertexList[i]);
  polylines.push_back(recorded);
}

void kovRecordingDraw::pushModelTransform(const OdGeMatrix3d& xfm)
{
  m_transforms.push_back(getModelToWorldTransform() * xfm);
}

void kovRecordingDraw::popModelTransform()
{
  if (!m_transforms.empty())
    m_transforms.pop_back();
}

OdGeMatrix3d kovRecordingDraw::getModelToWorldTransform() const
{
  return m_transforms.empty() ? OdGeMatrix3d() : m_transforms.back();
}
