#include "db/kovDbAnimation.h"

#include "Prop/OdPropServices.h"
#include "Rx/OdRxDictionary.h"

namespace {

const OdChar* const kProviderName = L"kovDbEntityAnimation";
const OdChar* const kProviderClass = L"OdDbXmlPropAnimation";

// By the class's name: the data model does not link the layer that defines it.
OdPropBasePtr createProvider()
{
  const OdString className(kProviderClass);
  if (!odrxClassDictionary()->has(className))
    return OdPropBasePtr();
  return OdPropBase::cast(odrxCreateObject(className).get());
}

} // namespace

void kovDbAnimation::registerAnimationPropertiesProvider()
{
  odpropServices()->registerXmlProp(OdString(kProviderName), &createProvider, desc());
}

void kovDbAnimation::unregisterAnimationPropertiesProvider()
{
  odpropServices()->unregisterXmlProp(OdString(kProviderName));
}
