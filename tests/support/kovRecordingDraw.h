#ifndef KOV_RECORDING_DRAW_H
#define KOV_RECORDING_DRAW_H

#include "Ge/OdGePoint3dArray.h"
#include "Gi/OdGiSubEntityTraits.h"
#include "Gi/OdGiWorldDraw.h"
#include "Gi/OdGiWorldGeometry.h"

#include <vector>

// A world draw that records what a drawable sends: every polyline in world
// coordinates (the model transforms pushed at the time applied), with the
// colour index in force. Other primitives are counted, not recorded.
class kovRecordingDraw : public OdGiWorldDraw, public OdGiWorldGeometry, public OdGiSubEntityTraits {
public:
  struct Polyline {
    OdGePoint3dArray points;
    OdUInt16 colorIndex;
  };

  std::vector<Polyline> polylines;
  int otherPrimitives = 0;
  // Pushes minus pops: zero after a well-behaved drawable.
  int transformDepth() const { return static_cast<int>(m_transforms.size()); }

  OdGiWorldGeometry& geometry() const override { return const_cast<kovRecordingDraw&>(*this); }
  OdGiSubEntityTraits& subEntityTraits() const override { return const_cast<kovRecordingDraw&>(*this); }
  OdGiRegenType regenType() const override { return kOdGiStandardDisplay; }
  bool regenAbort() const override { return false; }

  void circle(const OdGePoint3d&, double, const OdGeVector3d&) override { ++otherPrimitives; }
  void polyline(OdInt32 numVertices, const OdGePoint3d* vertexList, const OdGeVector3d* = nullptr,
                OdInt32 = -1) override;
  void polygon(OdInt32, const OdGePoint3d*, const OdGeVector3d* = nullptr) override { ++otherPrimitives; }
  void shell(OdInt32, const OdGePoint3d*, OdInt32, const OdInt32*) override { ++otherPrimitives; }
  void text(const OdGePoint3d&, const OdGeVector3d&, const OdGeVector3d&, double, double, double,
            const OdString&) override
  {
    ++otherPrimitives;
  }
  void rasterImageDc(const OdGePoint3d&, const OdGeVector3d&, const OdGeVector3d&, const OdGiRasterImage*,
                     bool = false) override
  {
    ++otherPrimitives;
  }
  void pushModelTransform(const OdGeMatrix3d& xfm) override;
  void popModelTransform() override;
  OdGeMatrix3d getModelToWorldTransform() const override;
  void setExtents(const OdGePoint3d*) override {}

  void setColor(OdUInt16 colorIndex) override { m_color = colorIndex; }
  void setTrueColor(const OdCmEntityColor&) override {}
  OdUInt16 color() const override { return m_color; }
  OdCmEntityColor trueColor() const override { return OdCmEntityColor(); }
  void setLineWeight(OdInt16) override {}
  OdInt16 lineWeight() const override { return kOdGiLnWtByLayer; }
  void setSelectionMarker(OdGsMarker) override {}
  OdGsMarker selectionMarker() const override { return 0; }

private:
  std::vector<OdGeMatrix3d> m_transforms;
  OdUInt16 m_color = 256;
};

#endif
