#include "host/app/kovHostAppProps.h"

#include "host/api/IkovApplication.h"

QVariant kovHostAppProps::property(const QString& path, const QVariant& defaultValue) const
{
  IkovApplication* app = kovApp();
  return app ? app->setting(QStringLiteral("AppProps/") + path, defaultValue) : defaultValue;
}

void kovHostAppProps::setProperty(const QString& path, const QVariant& value)
{
  if (IkovApplication* app = kovApp())
    app->setSetting(QStringLiteral("AppProps/") + path, value);
}
