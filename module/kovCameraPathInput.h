#ifndef KOV_CAMERA_PATH_INPUT_H
#define KOV_CAMERA_PATH_INPUT_H

#include "Db/OdDbSpline.h"
#include "Ed/OdDbUserIO.h"

// Asks the user for the points of a camera path and gives them as a
// fit-point spline. Cancelling at any prompt raises OdEdCancel.
//
// "Undo" removes the last point; undoing the only point asks for the first
// point again. "Reverse" turns the path around, so that input continues from
// the other end. "Close" (offered from the third point on) adds the first
// point again as the last one and finishes: the path returns to its start.
// Picking a point equal to the previous one (within 0.001 in x, y and z)
// finishes the path without adding it.
class kovCameraPathInput {
public:
  static OdDbSplinePtr run(OdDbUserIO* io);
  // The prompt and keyword list for a path of pointCount points.
  static OdString nextPointPrompt(int pointCount);
  static OdString nextPointKeywords(int pointCount);
};

#endif
