#ifndef OD_DB_XML_PROP_ANIMATION_H
#define OD_DB_XML_PROP_ANIMATION_H

#include "db/kovDbAnimation.h"

#include "Prop/OdPropBase.h"

#include <QStringList>

// The animation entity's properties for the host's property palette: the
// name and the description, and each sub-track of the entity's selected
// track with its type, its custom parameter, its options, the tangents of a
// spline path and its keyframe values (kovAnimationPropDefinition writes
// them, kovAnimationPropAccess reads and writes one of them by its path).
//
// Registered with the entity's global objects under "kovDbEntityAnimation"
// for the class kovDbAnimation; the module registers this class, so that the
// provider exists while the module is loaded.
class OdDbXmlPropAnimation : public OdPropBase {
  ODRX_DECLARE_MEMBERS(OdDbXmlPropAnimation);

public:
  bool getPropertyValue(const OdString& path, OdString& value) override;
  bool setPropertyValue(const OdString& path, const OdString& value, Action& action) override;
  // The labels of the combos AnimationType and ParameterType, no icons.
  bool getPropertyPossibleValues(const OdString& path, OdStringArray& values, OdStringArray& iconPaths) override;
  bool getPropertyValues(OdPropContext& ctx) override;

  // What the combos offer (translated), in the order the palette lists them.
  static QStringList animationTypeLabels();
  static QStringList parameterTypeLabels();
  // The parameter kinds in the order the ParameterType node names them.
  static QStringList parameterTypeItems();

protected:
  OdDbXmlPropAnimation() = default;

private:
  // The described animation open for read; null, the error kept, when it is gone.
  kovDbAnimationPtr openAnimation();
};

typedef OdSmartPtr<OdDbXmlPropAnimation> OdDbXmlPropAnimationPtr;

#endif
