#include "production/kovProductionSettings.h"

#include "host/api/IkovApplication.h"

QString kovProductionSettings::destinationFolder(bool stillImage)
{
  const QString fallback = stillImage ? QStringLiteral("{Pictures}") : QStringLiteral("{Video}");
  IkovApplication* app = kovApp();
  return app ? app->expandPath(app->setting(destinationKey(), fallback).toString()) : fallback;
}

void kovProductionSettings::setDestination(const QString& folder)
{
  if (IkovApplication* app = kovApp())
    app->setSetting(destinationKey(), folder);
}

bool kovProductionSettings::deleteImages()
{
  IkovApplication* app = kovApp();
  return app && app->setting(deleteImagesKey(), false).toBool();
}

void kovProductionSettings::setDeleteImages(bool on)
{
  if (IkovApplication* app = kovApp())
    app->setSetting(deleteImagesKey(), on);
}
