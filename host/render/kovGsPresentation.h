#ifndef KOV_GS_PRESENTATION_H
#define KOV_GS_PRESENTATION_H

#include "Db/OdDbObjectId.h"
#include "Gi/OdGiPrimitiveRecord.h"

#include <AIS_InteractiveObject.hxx>

#include <vector>

// What one entity draws, as the render engine shows it: built from the
// primitives its worldDraw recorded (in world coordinates), with the entity's
// colours. Display modes: shaded (faces, lines, images), wireframe (the faces'
// edges instead of the faces) and shaded with edges. Picking finds the
// presentation by its faces, lines and images, and it names its entity.
//
// Faces are lit flat, each with its own normal; a face with holes is filled
// without them. What cannot be drawn is left out and the rest drawn: faces of
// no area, faces with a point that is not finite or too far out for the
// engine's float coordinates, the segments of a line next to such a point,
// circles of no radius or with such a centre.

class kovGsPresentation : public AIS_InteractiveObject {
  DEFINE_STANDARD_RTTI_INLINE(kovGsPresentation, AIS_InteractiveObject)
public:
  enum DisplayMode { Shaded = 0, Wireframe = 1, ShadedWithEdges = 2 };

  kovGsPresentation(const OdDbObjectId& id, std::vector<OdGiPrimitiveRecord> records);

  const OdDbObjectId& entityId() const { return m_id; }
  size_t triangleCount() const { return m_triangleCount; }
  // The box around what it draws, before any local transformation.
  const Bnd_Box& worldBox() const { return m_box; }

  Standard_Boolean AcceptDisplayMode(const Standard_Integer theMode) const override;

protected:
  void Compute(const Handle(PrsMgr_PresentationManager)& thePrsMgr, const Handle(Prs3d_Presentation)& thePrs,
               const Standard_Integer theMode) override;
  void ComputeSelection(const Handle(SelectMgr_Selection)& theSel, const Standard_Integer theMode) override;

private:
  struct Triangles;
  void addFaces(const Handle(Prs3d_Presentation)& prs) const;
  void addEdges(const Handle(Prs3d_Presentation)& prs, bool dark) const;
  void addLines(const Handle(Prs3d_Presentation)& prs) const;
  void addImages(const Handle(Prs3d_Presentation)& prs) const;
  void addTexts(const Handle(Prs3d_Presentation)& prs) const;

  OdDbObjectId m_id;
  std::vector<OdGiPrimitiveRecord> m_records;
  size_t m_triangleCount = 0;
  Bnd_Box m_box;
};

#endif
