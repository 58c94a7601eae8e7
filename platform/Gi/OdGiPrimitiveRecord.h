#ifndef OD_GI_PRIMITIVE_RECORD_H
#define OD_GI_PRIMITIVE_RECORD_H

#include "Cm/OdCmEntityColor.h"
#include "Ge/OdGeMatrix3d.h"
#include "Ge/OdGePoint3dArray.h"
#include "Ge/OdGeVector3d.h"
#include "Gi/OdGi.h"
#include "Gi/OdGiRasterImage.h"
#include "Rx/OdArray.h"
#include "Rx/OdSharedPtr.h"
#include "Rx/OdString.h"

// One primitive as OdGiWorldDrawRecorder kept it: its geometry already in
// world coordinates (the model transform in force applied), the traits in
// force when it was drawn, and that transform. Fields a kind does not use keep
// their default values.
struct OdGiPrimitiveRecord {
  enum Kind { kCircle, kPolyline, kPolygon, kShell, kText, kRasterImage };

  Kind kind = kPolyline;

  // Polyline, polygon and shell: the vertices. Circle: the centre. Text: the
  // position. Raster image: the origin.
  OdGePoint3dArray points;
  // Shell: the face list as given (counts, then vertex indices).
  OdIntArray faceList;
  // Circle and text always, polyline and polygon when a normal was given; unit
  // length.
  OdGeVector3d normal;
  bool hasNormal = false;
  // Text: the writing direction. Raster image: u.
  OdGeVector3d direction;
  // Raster image: v.
  OdGeVector3d secondDirection;
  // Circle: the radius; text: the height; both scaled by the transform in the
  // primitive's plane (exact for transforms that scale uniformly).
  double radius = 0.0;
  double height = 0.0;
  double widthFactor = 1.0;
  double oblique = 0.0;
  OdString text;
  // Raster image: a copy of the image, shared by copies of the record.
  OdSharedPtr<OdGiRasterImage> image;
  bool transparency = false;
  // Polyline: the marker of the first segment, -1 for none.
  OdInt32 baseSubEntMarker = -1;

  OdCmEntityColor color;
  OdInt16 lineWeight = kOdGiLnWtByLwDefault;
  OdGsMarker selectionMarker = 0;
  OdGeMatrix3d modelTransform;
};

#endif
