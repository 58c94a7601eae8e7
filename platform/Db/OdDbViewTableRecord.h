#ifndef OD_DB_VIEW_TABLE_RECORD_H
#define OD_DB_VIEW_TABLE_RECORD_H

#include "Db/OdDbSymbolTableRecord.h"
#include "Ge/OdGePoint3d.h"
#include "Ge/OdGeVector3d.h"

// A named view: a camera looking at target from the eye point
// eye = target + viewDirection, with the up vector giving the top of the view.
// The lens length (mm, 35 mm film) sets the field of view of a perspective
// view; height and width give the size of the view at the target.
class OdDbViewTableRecord : public OdDbSymbolTableRecord {
  ODDB_DECLARE_MEMBERS(OdDbViewTableRecord);

public:
  OdDbViewTableRecord() = default;

  OdGePoint3d target() const;
  // eInvalidInput for non-finite coordinates, as for every setter here.
  OdResult setTarget(const OdGePoint3d& target);
  // From the target to the eye; never zero (a zero vector is refused).
  OdGeVector3d viewDirection() const;
  OdResult setViewDirection(const OdGeVector3d& direction);
  // The up direction as given; eInvalidInput for a zero vector.
  OdGeVector3d upVector() const;
  OdResult setUpVector(const OdGeVector3d& up);
  // target + viewDirection.
  OdGePoint3d eyePoint() const;
  // Sets eye, target and up at once; eInvalidInput when eye equals target or
  // up is zero or along the line of sight.
  OdResult setCamera(const OdGePoint3d& eye, const OdGePoint3d& target, const OdGeVector3d& up);

  // The lens length in mm; eInvalidInput unless positive and finite.
  double lensLength() const;
  OdResult setLensLength(double lensLength);
  // The horizontal field of view, radians, of a 36 mm wide frame behind the
  // lens: 2 atan(18 / lensLength).
  double fieldOfView() const;
  // eInvalidInput unless within (0, pi).
  OdResult setFieldOfView(double radians);

  double height() const;
  OdResult setHeight(double height);
  double width() const;
  OdResult setWidth(double width);
  bool perspectiveEnabled() const;
  void setPerspectiveEnabled(bool enabled);

  OdResult dwgInFields(OdDbDwgFiler* pFiler) override;
  void dwgOutFields(OdDbDwgFiler* pFiler) const override;

private:
  OdGePoint3d m_target;
  OdGeVector3d m_viewDirection { 0.0, 0.0, 1.0 };
  OdGeVector3d m_upVector { 0.0, 1.0, 0.0 };
  double m_lensLength = 50.0;
  double m_height = 1.0;
  double m_width = 1.0;
  bool m_perspective = false;
};

typedef OdSmartPtr<OdDbViewTableRecord> OdDbViewTableRecordPtr;

#endif
