#ifndef OD_GI_WORLD_DRAW_RECORDER_H
#define OD_GI_WORLD_DRAW_RECORDER_H

#include "Ge/OdGeExtents3d.h"
#include "Gi/OdGiPrimitiveRecord.h"
#include "Gi/OdGiSubEntityTraits.h"
#include "Gi/OdGiWorldDraw.h"
#include "Gi/OdGiWorldGeometry.h"

#include <vector>

// A world draw that keeps what drawables draw as a list of primitive records,
// for a renderer to replay and for tests to inspect. It is its own geometry
// and traits.
//
// Points are stored transformed by the model transform in force; direction
// vectors by its linear part; normals by the cofactor of that part, so that
// they stay perpendicular to the transformed plane and keep the right-hand
// rule with the transformed directions.
//
// Primitives with unusable input (a null or too short vertex list, a face
// list that runs past its end or names a missing vertex, a negative radius,
// coordinates that are not finite, text whose direction is zero or along its
// normal, a null image) are not recorded but counted in rejectedCount().
class OdGiWorldDrawRecorder : public OdGiWorldDraw, public OdGiWorldGeometry, public OdGiSubEntityTraits {
public:
  explicit OdGiWorldDrawRecorder(OdGiRegenType regenType = kOdGiStandardDisplay);

  const std::vector<OdGiPrimitiveRecord>& records() const { return m_records; }
  int rejectedCount() const { return m_rejected; }
  // The extents the drawables set, in world coordinates; invalid when none did.
  const OdGeExtents3d& extents() const { return m_extents; }
  void setRegenAbort(bool abort) { m_abort = abort; }
  // Forgets the records, extents and rejections and resets traits and
  // transforms, ready for another drawing.
  void clear();

  // OdGiWorldDraw
  OdGiWorldGeometry& geometry() const override;
  OdGiSubEntityTraits& subEntityTraits() const override;
  OdGiRegenType regenType() const override { return m_regenType; }
  bool regenAbort() const override { return m_abort; }

  // OdGiWorldGeometry
  void circle(const OdGePoint3d& center, double radius, const OdGeVector3d& normal) override;
  void polyline(OdInt32 numVertices, const OdGePoint3d* vertexList, const OdGeVector3d* pNormal = nullptr,
                OdInt32 baseSubEntMarker = -1) override;
  void polygon(OdInt32 numVertices, const OdGePoint3d* vertexList, const OdGeVector3d* pNormal = nullptr) override;
  void shell(OdInt32 numVertices, const OdGePoint3d* vertexList, OdInt32 faceListSize,
             const OdInt32* faceList) override;
  void text(const OdGePoint3d& position, const OdGeVector3d& normal, const OdGeVector3d& direction,
            double height, double widthFactor, double oblique, const OdString& msg) override;
  void rasterImageDc(const OdGePoint3d& origin, const OdGeVector3d& u, const OdGeVector3d& v,
                     const OdGiRasterImage* pImage, bool transparency = false) override;
  void pushModelTransform(const OdGeMatrix3d& xfm) override;
  void popModelTransform() override;
  OdGeMatrix3d getModelToWorldTransform() const override { return m_transform; }
  void setExtents(const OdGePoint3d* newExtents) override;

  // OdGiSubEntityTraits
  void setColor(OdUInt16 colorIndex) override;
  void setTrueColor(const OdCmEntityColor& color) override { m_color = color; }
  OdUInt16 color() const override;
  OdCmEntityColor trueColor() const override { return m_color; }
  void setLineWeight(OdInt16 lineWeight) override { m_lineWeight = lineWeight; }
  OdInt16 lineWeight() const override { return m_lineWeight; }
  void setSelectionMarker(OdGsMarker marker) override { m_marker = marker; }
  OdGsMarker selectionMarker() const override { return m_marker; }

private:
  OdGiPrimitiveRecord& newRecord(OdGiPrimitiveRecord::Kind kind);
  bool addVertices(OdGiPrimitiveRecord::Kind kind, OdInt32 numVertices, const OdGePoint3d* vertexList,
                   const OdGeVector3d* pNormal);
  OdGeVector3d worldNormal(const OdGeVector3d& normal) const;
  double scaleAcross(const OdGeVector3d& inPlane) const;

  OdGiRegenType m_regenType;
  bool m_abort = false;
  std::vector<OdGiPrimitiveRecord> m_records;
  int m_rejected = 0;
  OdGeExtents3d m_extents;

  OdGeMatrix3d m_transform;
  std::vector<OdGeMatrix3d> m_transformStack;

  OdCmEntityColor m_color;
  OdInt16 m_lineWeight = kOdGiLnWtByLwDefault;
  OdGsMarker m_marker = 0;
};

#endif
