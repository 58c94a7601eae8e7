#ifndef OD_DB_LIGHT_H
#define OD_DB_LIGHT_H

#include "Db/OdDbEntity.h"

// A light of the scene: where it is, where it points, how bright it is and
// whether it is on. Its geometry for extents and grips is its position and
// target; it draws nothing itself.
class OdDbLight : public OdDbEntity {
  ODDB_DECLARE_MEMBERS(OdDbLight);

public:
  enum LightType { kPointLight = 0, kDistantLight = 1, kSpotLight = 2 };

  OdDbLight() = default;

  OdString name() const;
  OdResult setName(const OdString& name);
  LightType lightType() const;
  OdResult setLightType(LightType type);
  OdGePoint3d position() const;
  OdResult setPosition(const OdGePoint3d& position);
  // Where a distant light or a spotlight points at.
  OdGePoint3d targetLocation() const;
  OdResult setTargetLocation(const OdGePoint3d& target);
  // Intensity factor, >= 0 and finite (eInvalidInput otherwise).
  double intensity() const;
  OdResult setIntensity(double intensity);
  bool isOn() const;
  void setOn(bool on);

  OdResult dwgInFields(OdDbDwgFiler* pFiler) override;
  void dwgOutFields(OdDbDwgFiler* pFiler) const override;

protected:
  OdResult subGetGeomExtents(OdGeExtents3d& extents) const override;
  OdResult subGetGripPoints(OdGePoint3dArray& gripPoints) const override;
  // Grip 0 is the position, grip 1 the target.
  OdResult subMoveGripPointsAt(const OdIntArray& indices, const OdGeVector3d& offset) override;
  OdResult subTransformBy(const OdGeMatrix3d& xform) override;

private:
  OdString m_name;
  LightType m_type = kPointLight;
  OdGePoint3d m_position;
  OdGePoint3d m_target { 0.0, 0.0, -1.0 };
  double m_intensity = 1.0;
  bool m_on = true;
};

typedef OdSmartPtr<OdDbLight> OdDbLightPtr;

#endif
