#ifndef OD_GI_GEOMETRY_H
#define OD_GI_GEOMETRY_H

#include "Ge/OdGeMatrix3d.h"
#include "Ge/OdGePoint3d.h"
#include "Ge/OdGeVector3d.h"
#include "Gi/OdGi.h"
#include "Rx/OdString.h"

class OdGiRasterImage;

// The primitives a drawable draws itself with. Coordinates are model
// coordinates: the model transforms pushed so far map them to the world.
class OdGiGeometry {
public:
  virtual ~OdGiGeometry() = default;

  virtual void circle(const OdGePoint3d& center, double radius, const OdGeVector3d& normal) = 0;

  // Connected line segments through the vertices. baseSubEntMarker, when not
  // -1, is the selection marker of the first segment; later segments count up.
  virtual void polyline(OdInt32 numVertices, const OdGePoint3d* vertexList,
                        const OdGeVector3d* pNormal = nullptr, OdInt32 baseSubEntMarker = -1) = 0;

  // A filled, closed planar polygon.
  virtual void polygon(OdInt32 numVertices, const OdGePoint3d* vertexList,
                       const OdGeVector3d* pNormal = nullptr) = 0;

  // A mesh of faces over shared vertices. The face list holds, for each face,
  // its vertex count followed by that many indices into vertexList; a negative
  // count marks a hole in the face before it.
  virtual void shell(OdInt32 numVertices, const OdGePoint3d* vertexList, OdInt32 faceListSize,
                     const OdInt32* faceList) = 0;

  // A line of text starting at position, written along direction in the plane
  // with the given normal; height is the capital height, widthFactor scales the
  // characters' width and oblique slants them (radians).
  virtual void text(const OdGePoint3d& position, const OdGeVector3d& normal, const OdGeVector3d& direction,
                    double height, double widthFactor, double oblique, const OdString& msg) = 0;

  // An image stretched over the parallelogram origin, origin + u, origin + v:
  // u spans the image's width, v its height (from the bottom row up).
  virtual void rasterImageDc(const OdGePoint3d& origin, const OdGeVector3d& u, const OdGeVector3d& v,
                             const OdGiRasterImage* pImage, bool transparency = false) = 0;

  // Model transforms nest: a pushed transform applies to the primitives that
  // follow before the ones pushed earlier.
  virtual void pushModelTransform(const OdGeMatrix3d& xfm) = 0;
  // Restores the transform in force before the matching push.
  virtual void popModelTransform() = 0;
  // The product of the transforms pushed so far (model to world).
  virtual OdGeMatrix3d getModelToWorldTransform() const = 0;
};

#endif
